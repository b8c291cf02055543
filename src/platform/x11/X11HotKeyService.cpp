// SPDX-License-Identifier: MIT
#include "platform/x11/X11HotKeyService.h"

#include "platform/evdev/EvdevKeys.h"
#include "platform/x11/XServer.h"
#include "platform/x11/Xkb.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

constexpr unsigned firstKeycode = 8;     // X keycodes are the kernel's key numbers plus 8.
constexpr unsigned modifierState = 0xFF; // The modifiers in a key event's state; buttons lie above.

struct Registration {
    HotKeyRef ref = 0;
    HotKey hotKey;
    std::function<void()> pressed;
};

/// One grab of one key, whose press has the same keycode and modifiers.
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

/// The modifier states that a shortcut needs: one for each modifier that is Super.
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

/// Appends every grab of a hot key: each key of its code with each chord in each state of the
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

class X11HotKeyService final : public HotKeyService, private XServer::Client
{
public:
    explicit X11HotKeyService(std::string display) : m_server(*this, std::move(display)) {}

    [[nodiscard]] std::optional<HotKeyRef> registerHotKey(const HotKey& hotKey,
                                                          std::function<void()> pressed) override
    {
        constexpr auto known = HotKeyModifier::cmdKey | HotKeyModifier::shiftKey;
        const auto isTaken = [&](const Registration& other) {
            return isSameShortcut(other.hotKey, hotKey);
        };
        if ((hotKey.modifiers & ~known) != 0 || std::ranges::any_of(m_registrations, isTaken))
            return std::nullopt;

        m_registrations.push_back(
            {.ref = ++m_lastRef, .hotKey = hotKey, .pressed = std::move(pressed)});
        if (m_server.connection())
            grabKeysNow();
        else if (!m_server.isReconnecting() && !m_server.connect())
            m_server.connectAfter(XServer::firstPause);
        return m_lastRef;
    }

    void unregisterHotKey(HotKeyRef ref) override
    {
        std::erase_if(m_registrations, [ref](const Registration& each) { return each.ref == ref; });
        grabKeysNow();
    }

private:
    [[nodiscard]] bool prepareConnection() override
    {
        const auto event = xcb::useXkb(m_server.connection());
        if (!event)
            return false;
        m_mapEvent = *event;
        m_modifiers = xcb::readModifiers(m_server.connection());
        grabKeysNow();
        return true;
    }

    /// Errors are ignored: they are refused grabs.
    void handleEvent(const xcb_generic_event_t& event) override
    {
        if (event.response_type == XCB_KEY_PRESS)
            handlePress(reinterpret_cast<const xcb_key_press_event_t&>(event));
        else if (event.response_type == XCB_KEY_RELEASE &&
                 reinterpret_cast<const xcb_key_release_event_t&>(event).detail == m_held)
            m_held = 0;
        else if (event.response_type == m_mapEvent)
            m_isMapChanged = true;
    }

    /// Asks for a changed map without waiting: while another client grabs the server no reply
    /// comes.
    void takeReplies() override
    {
        if (m_query) {
            if (const auto modifiers = xcb::pollModifiers(m_server.connection(), *m_query)) {
                m_query.reset();
                m_modifiers = modifiers;
                grabKeys();
            }
        }
        if (m_isMapChanged && !m_query) {
            m_isMapChanged = false;
            m_query = xcb::queryModifiers(m_server.connection());
            m_server.noteRequests();
        }
    }

    void handleLoss() override
    {
        m_query.reset();
        m_modifiers.reset();
        m_grabs.clear();
        m_held = 0;
        m_server.connectAfter(XServer::firstPause);
    }

    /// The grab that a press starts lasts until its key is released. Meanwhile other keys are
    /// reported here as well, and the same key again when it repeats.
    void handlePress(const xcb_key_press_event_t& event)
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

    /// Requests all grabs. Repeating an existing grab is harmless, and the key of a refused one may
    /// have become free.
    void grabKeys()
    {
        if (!m_modifiers)
            return;
        const auto& setup = *xcb_get_setup(m_server.connection());
        auto gone = std::exchange(m_grabs, {});
        for (const auto& registration : m_registrations)
            appendGrabs(m_grabs, registration, *m_modifiers, setup);

        std::erase_if(gone,
                      [&](const Grab& each) { return std::ranges::count(m_grabs, each) > 0; });
        for (auto root = xcb_setup_roots_iterator(&setup); root.rem > 0; xcb_screen_next(&root)) {
            for (const auto& each : gone)
                xcb_ungrab_key(m_server.connection(), each.keycode, root.data->root,
                               each.modifiers);
            for (const auto& each : m_grabs)
                xcb_grab_key(m_server.connection(), false, root.data->root, each.modifiers,
                             each.keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        }
        m_server.noteRequests();
        m_server.drainSoon();
    }

    /// As grabKeys(), but returns when the server has made the grabs: they apply to any later key
    /// press. The drain that grabKeys() has scheduled reads events that come with the reply.
    void grabKeysNow()
    {
        grabKeys();
        if (!m_modifiers)
            return;
        const xcb::Owned<xcb_get_input_focus_reply_t> done{xcb_get_input_focus_reply(
            m_server.connection(), xcb_get_input_focus(m_server.connection()), nullptr)};
    }

    XServer m_server;
    std::vector<Registration> m_registrations;
    HotKeyRef m_lastRef = 0;

    std::uint8_t m_mapEvent = 0; // The type of the keyboard extension's events.
    bool m_isMapChanged = false;
    std::optional<xcb::ModifierQuery> m_query;
    std::optional<xcb::Modifiers> m_modifiers; // Once known.
    std::vector<Grab> m_grabs;                 // The grabs that have been requested.
    xcb_keycode_t m_held = 0;                  // The key that started the present grab; 0: none.
};

} // namespace

std::unique_ptr<HotKeyService> makeX11HotKeyService(std::string display)
{
    return std::make_unique<X11HotKeyService>(std::move(display));
}

} // namespace clavo
