// SPDX-License-Identifier: MIT
#include "platform/x11/X11HotKeyService.h"

#include "platform/linux/EvdevKeyCodes.h"
#include "platform/x11/Xkb.h"

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

constexpr auto firstPause = 1s; // Between two attempts to find a lost server.
constexpr auto longestPause = 4s;

constexpr unsigned firstKeycode = 8;     // Of X; the kernel's key number is the rest.
constexpr unsigned modifierState = 0xFF; // Of the state that comes with a key; buttons lie above.

struct Registration {
    HotKeyRef ref = 0;
    HotKey hotKey;
    std::function<void()> pressed;
};

/// One grab of one key: what is asked of the server, and how its press is recognised.
struct Grab {
    xcb_keycode_t keycode = 0;
    std::uint16_t modifiers = 0;
    HotKeyRef ref = 0;

    bool operator==(const Grab&) const = default;
};

bool isSameShortcut(const HotKey& a, const HotKey& b)
{
    return a.keyCode == b.keyCode && a.modifiers == b.modifiers;
}

/// The modifier states that a shortcut asks for. Several, if Super is on several modifiers; none,
/// if it is on none.
std::vector<std::uint16_t> chords(std::uint32_t wanted, const xcb::Modifiers& modifiers)
{
    const unsigned shift = (wanted & HotKeyModifier::shiftKey) != 0 ? XCB_MOD_MASK_SHIFT : 0;
    if ((wanted & HotKeyModifier::cmdKey) == 0)
        return {static_cast<std::uint16_t>(shift)};
    std::vector<std::uint16_t> states;
    for (unsigned bit = 1; bit < modifierState; bit <<= 1) {
        if ((modifiers.super & bit) != 0)
            states.push_back(static_cast<std::uint16_t>(shift | bit));
    }
    return states;
}

/// Every grab that a hot key takes: each key of its code with each chord in each state of the
/// locks.
void appendGrabs(std::vector<Grab>& grabs, const Registration& registration,
                 const xcb::Modifiers& modifiers, const xcb_setup_t& setup)
{
    for (unsigned keycode = setup.min_keycode; keycode <= setup.max_keycode; ++keycode) {
        if (evdev::virtualKeyCode(keycode - firstKeycode) != registration.hotKey.keyCode)
            continue;
        for (const unsigned chord : chords(registration.hotKey.modifiers, modifiers)) {
            const unsigned locks = modifiers.locks & ~chord;
            unsigned on = locks; // Runs through all subsets.
            do {
                on = (on - 1) & locks;
                grabs.push_back({.keycode = static_cast<xcb_keycode_t>(keycode),
                                 .modifiers = static_cast<std::uint16_t>(chord | on),
                                 .ref = registration.ref});
            } while (on != locks);
        }
    }
}

} // namespace

class X11HotKeyService::Grabber
{
public:
    explicit Grabber(std::string display) : m_display(std::move(display))
    {
        m_soon.setSingleShot(true);
        m_retry.setSingleShot(true);
        QObject::connect(&m_soon, &QTimer::timeout, [this] { drain(); });
        QObject::connect(&m_retry, &QTimer::timeout, [this] { connect(); });
    }

    std::optional<HotKeyRef> add(const HotKey& hotKey, std::function<void()> pressed);
    void remove(HotKeyRef ref);

private:
    [[nodiscard]] xcb_connection_t* server() const { return m_xkb.desktop.connection.get(); }
    [[nodiscard]] bool isLost() const { return m_readable && !m_readable->isEnabled(); }

    void connect();
    void connectLater();
    void lose();

    void drain();
    void handle(const xcb_generic_event_t& event);
    void press(const xcb_key_press_event_t& event);
    void followMap();
    void grab();
    void grabNow();

    std::string m_display;
    std::vector<Registration> m_registrations;
    HotKeyRef m_lastRef = 0;

    xcb::Xkb m_xkb;
    std::optional<QSocketNotifier> m_readable;
    bool m_isUnsent = false; // Requests stand in xcb's buffer.
    QTimer m_soon;           // Drains in the next turn of the event loop.

    bool m_isMapChanged = false;
    std::optional<xcb::ModifierQuery> m_query;
    std::optional<xcb::Modifiers> m_modifiers; // Once known.
    std::vector<Grab> m_grabs;                 // Those asked of the server.
    xcb_keycode_t m_held = 0;                  // Of the press that lasts; 0: none.

    QTimer m_retry;
    std::chrono::milliseconds m_pause = firstPause;
};

std::optional<HotKeyRef> X11HotKeyService::Grabber::add(const HotKey& hotKey,
                                                        std::function<void()> pressed)
{
    constexpr auto known = HotKeyModifier::cmdKey | HotKeyModifier::shiftKey;
    const auto isTaken = [&](const Registration& other) {
        return isSameShortcut(other.hotKey, hotKey);
    };
    if ((hotKey.modifiers & ~known) != 0 || std::ranges::any_of(m_registrations, isTaken))
        return std::nullopt;

    m_registrations.push_back(
        {.ref = ++m_lastRef, .hotKey = hotKey, .pressed = std::move(pressed)});
    if (server())
        grabNow();
    else if (!m_retry.isActive())
        connect();
    return m_lastRef;
}

void X11HotKeyService::Grabber::remove(HotKeyRef ref)
{
    std::erase_if(m_registrations, [ref](const Registration& each) { return each.ref == ref; });
    grabNow();
}

/// Opens a connection in place of the present one and grabs.
void X11HotKeyService::Grabber::connect()
{
    auto xkb = xcb::connectXkb(m_display);
    if (!xkb) {
        connectLater();
        return;
    }
    m_readable.reset(); // Before its descriptor is closed.
    m_xkb = std::move(*xkb);
    m_readable.emplace(xcb_get_file_descriptor(server()), QSocketNotifier::Read);
    QObject::connect(&*m_readable, &QSocketNotifier::activated, [this] { drain(); });
    m_pause = firstPause;
    m_modifiers = xcb::readModifiers(server());
    grabNow();
}

void X11HotKeyService::Grabber::connectLater()
{
    m_retry.start(m_pause);
    m_pause = std::min<std::chrono::milliseconds>(2 * m_pause, longestPause);
}

void X11HotKeyService::Grabber::lose()
{
    m_readable->setEnabled(false);
    m_query.reset();
    m_modifiers.reset();
    m_grabs.clear();
    m_held = 0;
    connectLater();
}

/// Takes all that has arrived. Sending may make xcb read as well, and then nothing would wake us
/// for what it read: so the last thing done is always to look once more.
void X11HotKeyService::Grabber::drain()
{
    if (isLost())
        return;
    while (true) {
        while (const xcb::Owned<xcb_generic_event_t> event{xcb_poll_for_event(server())})
            handle(*event);
        followMap();
        if (!std::exchange(m_isUnsent, false))
            break;
        xcb_flush(server());
    }
    if (xcb_connection_has_error(server()) != 0)
        lose();
}

/// Refused grabs come as errors, which stand for nothing to be done.
void X11HotKeyService::Grabber::handle(const xcb_generic_event_t& event)
{
    if (event.response_type == XCB_KEY_PRESS)
        press(reinterpret_cast<const xcb_key_press_event_t&>(event));
    else if (event.response_type == XCB_KEY_RELEASE &&
             reinterpret_cast<const xcb_key_release_event_t&>(event).detail == m_held)
        m_held = 0;
    else if (event.response_type == m_xkb.event)
        m_isMapChanged = true;
}

/// The grab that a press starts lasts until its key is released. Other keys come here as well
/// meanwhile, and the same one again when it repeats.
void X11HotKeyService::Grabber::press(const xcb_key_press_event_t& event)
{
    if (m_held != 0)
        return;
    m_held = event.detail;
    const auto grab = std::ranges::find_if(m_grabs, [&](const Grab& each) {
        return each.keycode == event.detail && each.modifiers == (event.state & modifierState);
    });
    if (grab == m_grabs.end())
        return;
    const auto registration = std::ranges::find(m_registrations, grab->ref, &Registration::ref);
    const auto pressed = registration->pressed; // It may unregister itself.
    pressed();
}

/// Asks for the map without waiting for the answer: while another client grabs the server none
/// comes.
void X11HotKeyService::Grabber::followMap()
{
    if (m_query) {
        if (const auto modifiers = xcb::pollModifiers(server(), *m_query)) {
            m_query.reset();
            m_modifiers = modifiers;
            grab();
        }
    }
    if (m_isMapChanged && !m_query) {
        m_isMapChanged = false;
        m_query = xcb::queryModifiers(server());
        m_isUnsent = true;
    }
}

/// Asks the server for all grabs. To ask again for one that stands is harmless, and one that was
/// refused may have become free.
void X11HotKeyService::Grabber::grab()
{
    if (!m_modifiers)
        return;
    const auto& setup = *xcb_get_setup(server());
    auto gone = std::exchange(m_grabs, {});
    for (const auto& registration : m_registrations)
        appendGrabs(m_grabs, registration, *m_modifiers, setup);

    std::erase_if(gone, [&](const Grab& each) { return std::ranges::count(m_grabs, each) > 0; });
    for (auto root = xcb_setup_roots_iterator(&setup); root.rem > 0; xcb_screen_next(&root)) {
        for (const auto& each : gone)
            xcb_ungrab_key(server(), each.keycode, root.data->root, each.modifiers);
        for (const auto& each : m_grabs)
            xcb_grab_key(server(), false, root.data->root, each.modifiers, each.keycode,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    }
    m_isUnsent = true;
    m_soon.start(0ms);
}

/// As grab(), and returns once the server has done it: whoever strikes the keys from now on meets
/// the new state. What else the server sends along is looked for soon.
void X11HotKeyService::Grabber::grabNow()
{
    grab();
    if (!m_modifiers)
        return;
    const xcb::Owned<xcb_get_input_focus_reply_t> done{
        xcb_get_input_focus_reply(server(), xcb_get_input_focus(server()), nullptr)};
}

X11HotKeyService::X11HotKeyService(std::string display)
    : m_grabber(std::make_unique<Grabber>(std::move(display)))
{
}

X11HotKeyService::~X11HotKeyService() = default;

std::optional<HotKeyRef> X11HotKeyService::registerHotKey(const HotKey& hotKey,
                                                          std::function<void()> pressed)
{
    return m_grabber->add(hotKey, std::move(pressed));
}

void X11HotKeyService::unregisterHotKey(HotKeyRef ref)
{
    m_grabber->remove(ref);
}

} // namespace clavo
