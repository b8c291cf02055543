// SPDX-License-Identifier: MIT
#include "fuzz/FakeXServer.h"

#include "fuzz/Input.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace clavo::fuzz
{
namespace
{

constexpr std::size_t packet = 32; // All that the server sends is at least as long.

/// The bytes of a reply or an error, of which xcb leaves out what nobody reads.
template <typename Answer> std::string bytesOf(const Answer& answer)
{
    std::string bytes(std::max(packet, sizeof answer), '\0');
    std::memcpy(bytes.data(), &answer, sizeof answer);
    return bytes;
}

template <typename Reply> Reply replyTo(std::uint16_t sequence)
{
    Reply reply{};
    reply.response_type = 1;
    reply.sequence = sequence;
    return reply;
}

} // namespace

FakeXServer::FakeXServer(std::string events, std::vector<std::optional<std::int32_t>> positions)
    : m_events(std::move(events)), m_positions(std::move(positions)),
      m_listening(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const place = reinterpret_cast<sockaddr*>(&address);
    require(::bind(m_listening, place, size) == 0 && ::listen(m_listening, 1) == 0 &&
                ::getsockname(m_listening, place, &size) == 0,
            "this computer can talk to itself");
    m_display = "127.0.0.1:" + std::to_string(ntohs(address.sin_port) - 6000);
    m_thread = std::thread([this] { serve(); });
}

FakeXServer::~FakeXServer()
{
    close();
    m_thread.join();
    ::close(m_connection);
    ::close(m_listening);
}

void FakeXServer::close()
{
    ::shutdown(m_listening, SHUT_RDWR); // Ends a wait for a connection.
    ::shutdown(m_connection, SHUT_RDWR);
}

bool FakeXServer::read(void* to, std::size_t size) const
{
    return size == 0 || ::recv(m_connection, to, size, MSG_WAITALL) == static_cast<ssize_t>(size);
}

void FakeXServer::write(std::string_view bytes) const
{
    static_cast<void>(::send(m_connection, bytes.data(), bytes.size(), MSG_NOSIGNAL));
}

void FakeXServer::serve()
{
    m_connection = ::accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC);
    xcb_setup_request_t request{};
    if (!read(&request, sizeof request))
        return;
    struct {
        xcb_setup_t setup;
        xcb_screen_t screen;
    } welcome{};
    welcome.setup.status = 1;
    welcome.setup.protocol_major_version = 11;
    welcome.setup.length = sizeof welcome / 4 - 2;
    welcome.setup.resource_id_mask = 0x1fffff;
    welcome.setup.maximum_request_length = 0xffff;
    welcome.setup.roots_len = 1;
    welcome.setup.min_keycode = 8;
    welcome.setup.max_keycode = 255;
    welcome.screen.root = 1;
    write(bytesOf(welcome));

    struct {
        std::uint8_t opcode;
        std::uint8_t minor;
        std::uint16_t length; // Of the whole request, in units of four bytes.
    } head{};
    std::vector<char> body;
    while (read(&head, sizeof head) && head.length > 0) {
        body.resize(head.length * 4U - sizeof head);
        if (!read(body.data(), body.size()))
            return;
        ++m_sequence;
        answer(head.opcode, head.minor);
    }
}

void FakeXServer::answer(std::uint8_t opcode, std::uint8_t minor)
{
    if (opcode == XCB_QUERY_EXTENSION) {
        auto answer = replyTo<xcb_query_extension_reply_t>(m_sequence);
        answer.present = 1;
        answer.major_opcode = extension;
        write(bytesOf(answer));
    } else if (opcode == XCB_GET_INPUT_FOCUS) { // Asked for behind the selection of events.
        const auto answer = replyTo<xcb_get_input_focus_reply_t>(m_sequence);
        write(bytesOf(answer) + std::exchange(m_events, {}));
    } else if (opcode == extension && minor == XCB_INPUT_XI_QUERY_VERSION) {
        auto answer = replyTo<xcb_input_xi_query_version_reply_t>(m_sequence);
        answer.major_version = 2;
        answer.minor_version = 2;
        write(bytesOf(answer));
    } else if (opcode == extension && minor == XCB_INPUT_XI_QUERY_POINTER) {
        answerPointer();
    }
}

void FakeXServer::answerPointer()
{
    const auto position =
        m_asked < m_positions.size() ? m_positions[m_asked] : std::optional<std::int32_t>(0);
    ++m_asked;
    if (position) {
        auto answer = replyTo<xcb_input_xi_query_pointer_reply_t>(m_sequence);
        answer.length = (sizeof answer - packet) / 4;
        answer.root_x = *position;
        write(bytesOf(answer));
    } else {
        xcb_generic_error_t error{};
        error.error_code = 128;
        error.sequence = m_sequence;
        write(bytesOf(error).substr(0, packet)); // Behind it is xcb's own.
    }
}

} // namespace clavo::fuzz
