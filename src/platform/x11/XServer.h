// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>
#include <xcb/xcbext.h> // Declares xcb_poll_for_reply().

#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Owners of the objects that xcb allocates.
namespace clavo::xcb
{

struct Free {
    void operator()(void* memory) const noexcept { std::free(memory); }
};

/// A reply, an event or an error.
template <typename T> using Owned = std::unique_ptr<T, Free>;

struct Disconnect {
    void operator()(xcb_connection_t* connection) const noexcept { xcb_disconnect(connection); }
};

using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

/// A connection to an X server and the root window of its default screen.
struct Desktop {
    Connection connection; // Null: the server cannot be reached.
    xcb_window_t root = XCB_WINDOW_NONE;
    int screen = 0; // The number of the default screen.
};

/// Connects to the display, the session's own one if it is empty.
[[nodiscard]] Desktop connect(const std::string& display);

/// The atoms of these names, XCB_ATOM_NONE for one that the server does not answer for. Waits for
/// the server once.
[[nodiscard]] std::vector<xcb_atom_t> atoms(xcb_connection_t* server,
                                            std::initializer_list<std::string> names);

/// Requests these events of a window instead of those requested before.
void selectEvents(xcb_connection_t* server, xcb_window_t window, xcb_event_mask_t events);

/// The event's type without the mark of events that another client has sent; 0 for an error.
[[nodiscard]] std::uint8_t typeOf(const xcb_generic_event_t& event);

/// The reply to a request without waiting: nothing until it has arrived, null if the request has
/// failed.
template <typename Reply>
[[nodiscard]] std::optional<Owned<Reply>> pollReply(xcb_connection_t* server, unsigned int request)
{
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (xcb_poll_for_reply(server, request, &reply, &error) == 0)
        return std::nullopt;
    std::free(error);
    return Owned<Reply>(static_cast<Reply*>(reply));
}

} // namespace clavo::xcb

namespace clavo
{

/// A connection to an X server, read from the event loop whenever something arrives. Connects again
/// after a loss if its client asks for it.
///
/// After connect() nothing waits for the server, unless the client does. Thread: main, which runs a
/// Qt event loop.
class XServer
{
public:
    /// The user of the connection.
    class Client
    {
    public:
        /// Makes a new connection ready: announces extensions, selects events. May wait for the
        /// server. False if the server lacks something; the connection is then closed.
        [[nodiscard]] virtual bool prepareConnection() { return true; }
        virtual void handleEvent(const xcb_generic_event_t& event) = 0;
        /// Takes the replies that have arrived, by xcb::pollReply().
        virtual void takeReplies() {}
        /// The connection is lost, and with it all requests that have no reply yet.
        virtual void handleLoss() {}

    protected:
        ~Client() = default;
    };

    static constexpr std::chrono::milliseconds firstPause{1000}; // Between two attempts to connect.
    static constexpr std::chrono::milliseconds longestPause{4000};

    /// The client outlives this. For the display, see xcb::connect().
    XServer(Client& client, std::string display);
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /// Opens a connection instead of the present one; false on failure.
    [[nodiscard]] bool connect();
    /// Connects after a delay. A failed attempt is repeated after the first pause or twice the last
    /// delay, whichever is longer, but never later than after the longest pause.
    void connectAfter(std::chrono::milliseconds delay);
    [[nodiscard]] bool isReconnecting() const { return m_retryTimer.isActive(); }

    /// Null without a connection.
    [[nodiscard]] xcb_connection_t* connection() const { return m_desktop.connection.get(); }
    [[nodiscard]] const xcb::Desktop& desktop() const { return m_desktop; }
    /// Whether there was a connection and it is lost.
    [[nodiscard]] bool isLost() const { return m_readable && !connection(); }

    /// Requests have been added to xcb's buffer. They are sent before the present drain ends, or by
    /// the next one.
    void noteRequests() { m_hasRequests = true; }
    /// Drains the connection in the next turn of the event loop: after waiting for a reply, which
    /// may also read events, and after requests that no event has caused.
    void drainSoon() { m_drainTimer.start(0); }

private:
    void drain();

    Client& m_client;
    std::string m_display;
    xcb::Desktop m_desktop;
    std::optional<QSocketNotifier> m_readable; // Disabled once the connection is lost.
    bool m_hasRequests = false;
    QTimer m_drainTimer;
    QTimer m_retryTimer;
};

} // namespace clavo
