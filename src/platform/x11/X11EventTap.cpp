// SPDX-License-Identifier: MIT
#include "platform/x11/X11EventTap.h"

#include "log/Log.h"
#include "platform/evdev/EvdevKeys.h"
#include "platform/x11/ServerClock.h"
#include "platform/x11/XInput.h"
#include "platform/x11/XServer.h"

#include <xcb/xinput.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::uint32_t firstKeycode = 8; // X keycodes are the kernel's key numbers plus 8.

constexpr EventMask bit(std::uint32_t type)
{
    return EventMask{1} << type;
}

constexpr EventMask keyTypes =
    bit(RawEventType::keyDown) | bit(RawEventType::keyUp) | bit(RawEventType::flagsChanged);
constexpr EventMask pressTypes = bit(RawEventType::leftMouseDown) |
                                 bit(RawEventType::rightMouseDown) | bit(RawEventType::scrollWheel);
constexpr EventMask releaseTypes = bit(RawEventType::leftMouseUp) | bit(RawEventType::rightMouseUp);

/// The raw event type of a button's press or release; nothing if it is not listened to.
///
/// Each detent of a wheel is a press of button 4, 5, 6 or 7, whatever the device: the server adds
/// presses marked as emulated to the fine scroll steps of one device and passes on the plain
/// presses of another. So presses count with or without the mark, and steps never count.
std::optional<std::uint32_t> typeOfButton(std::uint32_t button, bool isPress)
{
    switch (button) {
    case 1:
        return isPress ? RawEventType::leftMouseDown : RawEventType::leftMouseUp;
    case 3:
        return isPress ? RawEventType::rightMouseDown : RawEventType::rightMouseUp;
    case 4:
    case 5:
    case 6:
    case 7:
        return isPress ? std::optional(RawEventType::scrollWheel) : std::nullopt;
    default:
        return std::nullopt;
    }
}

class X11EventTap final : public EventTap, private XServer::Client
{
public:
    explicit X11EventTap(std::string display) : m_server(*this, std::move(display)) {}

    [[nodiscard]] bool create(EventMask mask, Receiver receiver) override
    {
        m_mask = mask;
        m_receiver = std::move(receiver);
        return m_server.connect();
    }

    void enable() override
    {
        if (m_server.isLost() && !m_server.isReconnecting())
            m_server.connectAfter(std::chrono::milliseconds(0)); // The loss may be on the stack.
    }

    [[nodiscard]] std::string name() const override { return "X11"; }

    void notifyNextMotion(std::function<void()> moved) override
    {
        m_moved = std::move(moved);
        if (!m_server.connection())
            return;
        updateSelection();
        m_server.drainSoon();
    }

    void setPositionUsed(bool /*isUsed*/) override {} // The server is asked for it.

private:
    struct Click {
        std::uint32_t type = 0;
        unsigned int query = 0; // The request for the pointer's position.
        std::chrono::nanoseconds time{0};
    };

    [[nodiscard]] bool prepareConnection() override
    {
        const auto extension = announceXInput(m_server.connection());
        if (!extension)
            return false;
        m_extension = *extension;
        const xcb::Owned<xcb_generic_error_t> refusal{
            xcb_request_check(m_server.connection(), selectEvents())};
        return !refusal && xcb_connection_has_error(m_server.connection()) == 0;
    }

    void handleEvent(const xcb_generic_event_t& event) override
    {
        if (xcb::typeOf(event) != XCB_GE_GENERIC)
            return;
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
        if (generic.extension != m_extension)
            return;

        const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
        switch (generic.event_type) {
        case XCB_INPUT_RAW_KEY_PRESS:
            deliverKey(m_keys.press(raw.detail - firstKeycode), raw.time);
            break;
        case XCB_INPUT_RAW_KEY_RELEASE:
            deliverKey(m_keys.release(raw.detail - firstKeycode), raw.time);
            break;
        case XCB_INPUT_RAW_BUTTON_PRESS:
            handleClick(raw, typeOfButton(raw.detail, /*isPress=*/true));
            break;
        case XCB_INPUT_RAW_BUTTON_RELEASE:
            handleClick(raw, typeOfButton(raw.detail, /*isPress=*/false));
            break;
        case XCB_INPUT_RAW_MOTION:
            if (const auto moved = std::exchange(m_moved, nullptr)) {
                updateSelection();
                moved();
            }
            break;
        default:
            break;
        }
    }

    /// Delivers the clicks whose position is known.
    void takeReplies() override
    {
        while (!m_clicks.empty()) {
            const auto click = m_clicks.front();
            const auto position = xcb::pollReply<xcb_input_xi_query_pointer_reply_t>(
                m_server.connection(), click.query);
            if (!position)
                return;
            // In 16.16 fixed point; null if the pointer is gone already.
            if (*position)
                m_pointerX = (*position)->root_x / 65536.0;
            m_clicks.pop_front();
            deliver(RawEvent{.type = click.type, .x = m_pointerX, .time = click.time});
        }
    }

    void handleLoss() override
    {
        m_clicks.clear();
        m_clock = {};
        log::notice("serveur X perdu : écoute interrompue");
        for (const auto& event : m_keys.releaseAll())
            deliver(event);
        m_receiver({.type = RawEventType::tapDisabledByTimeout});
    }

    [[nodiscard]] std::uint32_t wantedEvents() const
    {
        std::uint32_t events = 0;
        if ((m_mask & keyTypes) != 0)
            events |=
                XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
        if ((m_mask & pressTypes) != 0)
            events |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
        if ((m_mask & releaseTypes) != 0)
            events |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
        if (m_moved)
            events |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
        return events;
    }

    /// Replaces the selected events. They are those of the master devices, which represent all
    /// devices present and future; with the slaves every event would come twice. The server
    /// releases the keys of a device that is removed. They are selected on one root window: raw
    /// events go to the root windows of all screens.
    [[nodiscard]] xcb_void_cookie_t selectEvents() const
    {
        struct {
            xcb_input_event_mask_t head;
            std::uint32_t events;
        } const request{.head = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
                        .events = wantedEvents()};
        return xcb_input_xi_select_events_checked(m_server.connection(), m_server.desktop().root, 1,
                                                  &request.head);
    }

    void updateSelection()
    {
        xcb_discard_reply(m_server.connection(), selectEvents().sequence);
        m_server.noteRequests();
    }

    /// Asks for the pointer's position without waiting: while another client grabs the server no
    /// reply comes.
    void handleClick(const xcb_input_raw_key_press_event_t& raw, std::optional<std::uint32_t> type)
    {
        if (!type)
            return;
        const auto query = xcb_input_xi_query_pointer(m_server.connection(),
                                                      m_server.desktop().root, raw.deviceid);
        m_clicks.push_back({.type = *type, .query = query.sequence, .time = steadyTime(raw.time)});
        m_server.noteRequests();
    }

    void deliverKey(std::optional<RawEvent> event, xcb_timestamp_t time)
    {
        if (event)
            event->time = steadyTime(time);
        deliver(event);
    }

    [[nodiscard]] std::chrono::nanoseconds steadyTime(xcb_timestamp_t time)
    {
        return m_clock.steadyTime(time, std::chrono::steady_clock::now().time_since_epoch());
    }

    void deliver(const std::optional<RawEvent>& event)
    {
        if (event && (m_mask & bit(event->type)) != 0)
            m_receiver(*event);
    }

    XServer m_server;
    std::uint8_t m_extension = 0; // The number of XInput on this server.
    ServerClock m_clock;
    EventMask m_mask = 0;
    Receiver m_receiver;
    std::function<void()> m_moved; // Called at the next motion.

    evdev::HeldKeys m_keys;
    std::deque<Click> m_clicks; // In order; each waits for the pointer's position.
    double m_pointerX = 0;
};

} // namespace

std::unique_ptr<EventTap> makeX11EventTap(std::string display)
{
    return std::make_unique<X11EventTap>(std::move(display));
}

} // namespace clavo
