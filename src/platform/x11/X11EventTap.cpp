// SPDX-License-Identifier: MIT
#include "platform/x11/X11EventTap.h"

#include "log/Log.h"
#include "platform/linux/HeldKeys.h"
#include "platform/x11/XInput.h"

#include <QSocketNotifier>
#include <QTimer>
#include <xcb/xcbext.h> // Declares xcb_poll_for_reply().

#include <algorithm>
#include <chrono>
#include <deque>
#include <optional>
#include <utility>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

constexpr auto firstPause = 1s; // Between two attempts to find a lost server.
constexpr auto longestPause = 4s;

constexpr std::uint32_t firstKeycode = 8; // Of X; the kernel's key number is the rest.

constexpr EventMask bit(std::uint32_t type)
{
    return EventMask{1} << type;
}

constexpr EventMask keyTypes =
    bit(RawEventType::keyDown) | bit(RawEventType::keyUp) | bit(RawEventType::flagsChanged);
constexpr EventMask pressTypes = bit(RawEventType::leftMouseDown) |
                                 bit(RawEventType::rightMouseDown) | bit(RawEventType::scrollWheel);
constexpr EventMask releaseTypes = bit(RawEventType::leftMouseUp) | bit(RawEventType::rightMouseUp);

/// The raw event type of a button's press; nothing for a button that is not one of ours.
///
/// Each detent of a wheel is a press of button 4, 5, 6 or 7, whatever the device: the server adds
/// those presses, marked as emulated, to the fine scroll steps of a device that reports such, and
/// passes on the plain ones of a device that does not. So they count with or without the mark, and
/// the steps never do.
std::optional<std::uint32_t> typeOfPress(std::uint32_t button)
{
    switch (button) {
    case 1:
        return RawEventType::leftMouseDown;
    case 3:
        return RawEventType::rightMouseDown;
    case 4:
    case 5:
    case 6:
    case 7:
        return RawEventType::scrollWheel;
    default:
        return std::nullopt;
    }
}

std::optional<std::uint32_t> typeOfRelease(std::uint32_t button)
{
    switch (button) {
    case 1:
        return RawEventType::leftMouseUp;
    case 3:
        return RawEventType::rightMouseUp;
    default:
        return std::nullopt;
    }
}

} // namespace

class X11EventTap::Listener
{
public:
    explicit Listener(std::string display) : m_display(std::move(display))
    {
        m_soon.setSingleShot(true);
        m_retry.setSingleShot(true);
        QObject::connect(&m_soon, &QTimer::timeout, [this] { drain(); });
        QObject::connect(&m_retry, &QTimer::timeout, [this] { retry(); });
    }

    bool create(EventMask mask, Receiver receiver)
    {
        m_mask = mask;
        m_receiver = std::move(receiver);
        return connect();
    }

    void enable()
    {
        if (!isReportedLost() || m_retry.isActive())
            return;
        m_pause = firstPause;
        m_retry.start(0ms); // Not here: the notifier of the lost connection may be on the stack.
    }

    void notifyNextMotion(std::function<void()> moved)
    {
        m_moved = std::move(moved);
        if (!m_input.desktop.connection)
            return;
        select();
        m_soon.start(0ms);
    }

private:
    struct Click {
        std::uint32_t type = 0;
        unsigned int query = 0; // Of the pointer's place.
    };

    [[nodiscard]] xcb_connection_t* server() const { return m_input.desktop.connection.get(); }
    [[nodiscard]] bool isLost() const
    {
        return server() && xcb_connection_has_error(server()) != 0;
    }

    [[nodiscard]] bool isReportedLost() const { return m_readable && !m_readable->isEnabled(); }

    bool connect();
    [[nodiscard]] std::uint32_t wantedEvents() const;
    void select();

    void drain();
    void handle(const xcb_generic_event_t& event);
    void click(xcb_input_device_id_t pointer, std::optional<std::uint32_t> type);
    void deliverLocatedClicks();
    void deliver(const std::optional<RawEvent>& event);

    void lose();
    void retry();

    std::string m_display;
    EventMask m_mask = 0;
    Receiver m_receiver;
    std::function<void()> m_moved; // Waits for the next motion.

    xcb::XInput m_input;
    std::optional<QSocketNotifier> m_readable;
    bool m_isUnsent = false; // Requests stand in xcb's buffer.
    QTimer m_soon;           // Drains in the next turn of the event loop.

    evdev::HeldKeys m_keys;
    std::deque<Click> m_clicks; // Wait for the pointer's place, in order.
    double m_pointerX = 0;

    QTimer m_retry;
    std::chrono::milliseconds m_pause = firstPause;
};

/// Opens a connection in place of the present one and selects the events on it.
bool X11EventTap::Listener::connect()
{
    auto input = xcb::connectXInput(m_display);
    if (!input)
        return false;
    auto* connection = input->desktop.connection.get();
    const auto selection = xcb::select(input->desktop, XCB_INPUT_DEVICE_ALL_MASTER, wantedEvents());
    const xcb::Owned<xcb_generic_error_t> refusal{xcb_request_check(connection, selection)};
    if (refusal || xcb_connection_has_error(connection) != 0)
        return false;

    m_readable.reset(); // Before its descriptor is closed.
    m_input = std::move(*input);
    m_readable.emplace(xcb_get_file_descriptor(connection), QSocketNotifier::Read);
    QObject::connect(&*m_readable, &QSocketNotifier::activated, [this] { drain(); });
    m_soon.start(0ms); // The replies may have brought events along.
    return true;
}

std::uint32_t X11EventTap::Listener::wantedEvents() const
{
    std::uint32_t events = 0;
    if ((m_mask & keyTypes) != 0)
        events |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    if ((m_mask & pressTypes) != 0)
        events |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
    if ((m_mask & releaseTypes) != 0)
        events |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    if (m_moved)
        events |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    return events;
}

/// The master devices stand for all there are and will be, and the server releases the keys of one
/// that goes. With the slaves that feed them every event would come twice.
void X11EventTap::Listener::select()
{
    const auto selection =
        xcb::select(m_input.desktop, XCB_INPUT_DEVICE_ALL_MASTER, wantedEvents());
    xcb_discard_reply(server(), selection.sequence);
    m_isUnsent = true;
}

/// Takes all that has arrived. Sending may make xcb read as well, and then nothing would wake us
/// for what it read: so the last thing done is always to look once more.
void X11EventTap::Listener::drain()
{
    if (isReportedLost())
        return;
    while (true) {
        while (const xcb::Owned<xcb_generic_event_t> event{xcb_poll_for_event(server())})
            handle(*event);
        deliverLocatedClicks();
        if (!m_isUnsent)
            break;
        m_isUnsent = false;
        xcb_flush(server());
    }
    if (isLost())
        lose();
}

void X11EventTap::Listener::handle(const xcb_generic_event_t& event)
{
    if ((event.response_type & 0x7F) != XCB_GE_GENERIC)
        return;
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != m_input.extension)
        return;

    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    switch (generic.event_type) {
    case XCB_INPUT_RAW_KEY_PRESS:
        deliver(m_keys.press(raw.detail - firstKeycode));
        break;
    case XCB_INPUT_RAW_KEY_RELEASE:
        deliver(m_keys.release(raw.detail - firstKeycode));
        break;
    case XCB_INPUT_RAW_BUTTON_PRESS:
        click(raw.deviceid, typeOfPress(raw.detail));
        break;
    case XCB_INPUT_RAW_BUTTON_RELEASE:
        click(raw.deviceid, typeOfRelease(raw.detail));
        break;
    case XCB_INPUT_RAW_MOTION:
        if (const auto moved = std::exchange(m_moved, nullptr)) {
            select();
            moved();
        }
        break;
    default:
        break;
    }
}

/// Asks where the pointer is, without waiting for the answer: while another client grabs the server
/// none comes.
void X11EventTap::Listener::click(xcb_input_device_id_t pointer, std::optional<std::uint32_t> type)
{
    if (!type)
        return;
    const auto query = xcb_input_xi_query_pointer(server(), m_input.desktop.root, pointer);
    m_clicks.push_back({.type = *type, .query = query.sequence});
    m_isUnsent = true;
}

void X11EventTap::Listener::deliverLocatedClicks()
{
    while (!m_clicks.empty()) {
        const auto click = m_clicks.front();
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(server(), click.query, &reply, &error) == 0)
            return;
        const xcb::Owned<xcb_generic_error_t> refusal{error}; // The pointer is gone already.
        const xcb::Owned<xcb_input_xi_query_pointer_reply_t> place{
            static_cast<xcb_input_xi_query_pointer_reply_t*>(reply)};
        if (place)
            m_pointerX = place->root_x / 65536.0; // 16.16 fixed point.
        m_clicks.pop_front();
        deliver(RawEvent{.type = click.type, .x = m_pointerX});
    }
}

void X11EventTap::Listener::deliver(const std::optional<RawEvent>& event)
{
    if (event && (m_mask & bit(event->type)) != 0)
        m_receiver(*event);
}

void X11EventTap::Listener::lose()
{
    m_readable->setEnabled(false);
    m_clicks.clear();
    log::notice("serveur X perdu : écoute interrompue");
    for (const auto& event : m_keys.releaseAll())
        deliver(event);
    m_receiver({.type = RawEventType::tapDisabledByTimeout});
}

void X11EventTap::Listener::retry()
{
    if (connect())
        return;
    m_retry.start(m_pause);
    m_pause = std::min<std::chrono::milliseconds>(2 * m_pause, longestPause);
}

X11EventTap::X11EventTap(std::string display)
    : m_listener(std::make_unique<Listener>(std::move(display)))
{
}

X11EventTap::~X11EventTap() = default;

bool X11EventTap::create(EventMask mask, Receiver receiver)
{
    return m_listener->create(mask, std::move(receiver));
}

void X11EventTap::enable()
{
    m_listener->enable();
}

void X11EventTap::notifyNextMotion(std::function<void()> moved)
{
    m_listener->notifyNextMotion(std::move(moved));
}

} // namespace clavo
