// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace clavo::fuzz
{

/// As much of an X server as an event tap of one connection takes. It sends its events as soon as
/// the tap has selected what it wants, and answers the questions for the pointer in turn.
class FakeXServer
{
public:
    static constexpr std::uint8_t extension = 131; // The number of XInput.

    /// Each question is answered with a position or an error; those beyond with the position 0.
    FakeXServer(std::string events, std::vector<std::optional<std::int32_t>> positions);
    ~FakeXServer();
    FakeXServer(const FakeXServer&) = delete;
    FakeXServer& operator=(const FakeXServer&) = delete;

    [[nodiscard]] const std::string& display() const { return m_display; }

    /// Ends the connection and accepts no other.
    void close();

private:
    void serve();
    void answer(std::uint8_t opcode, std::uint8_t minor);
    void answerPointer();
    bool read(void* to, std::size_t size) const;
    void write(std::string_view bytes) const;

    std::string m_display;
    std::string m_events;
    std::vector<std::optional<std::int32_t>> m_positions;
    int m_listening = -1;
    std::atomic<int> m_connection = -1;
    std::uint16_t m_sequence = 0;
    std::size_t m_asked = 0; // Questions for the pointer.
    std::thread m_thread;
};

} // namespace clavo::fuzz
