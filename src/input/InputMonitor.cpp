// SPDX-License-Identifier: MIT
#include "input/InputMonitor.h"

#include "log/Log.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <string>
#include <utility>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // POSIX leaves the declaration to the program.

namespace clavo
{
namespace
{

constexpr EventMask bit(std::uint32_t type)
{
    return EventMask{1} << type;
}

// Neither other buttons nor motion and drags: they make no sound and would wake the program.
constexpr EventMask wantedEvents =
    bit(RawEventType::keyDown) | bit(RawEventType::keyUp) | bit(RawEventType::flagsChanged) |
    bit(RawEventType::leftMouseDown) | bit(RawEventType::leftMouseUp) |
    bit(RawEventType::rightMouseDown) | bit(RawEventType::rightMouseUp) |
    bit(RawEventType::scrollWheel);

} // namespace

InputMonitor::InputMonitor(EventTap& tap, SecureInput& secureInput, Screens& screens,
                           std::function<std::chrono::nanoseconds()> uptime)
    : m_installable(tap), m_secureInput(secureInput), m_screens(screens),
      m_uptime(std::move(uptime))
{
    m_heldModifiers.reserve(64);
}

bool InputMonitor::start()
{
    if (m_isRunning)
        return true;
    if (!m_installable.create(wantedEvents, [this](const RawEvent& event) { handle(event); }))
        return false;
    m_tap = &m_installable;
    m_tap->enable();
    m_isRunning = true;
    return true;
}

void InputMonitor::handle(const RawEvent& event)
{
    if (event.type >= RawEventType::tapDisabledByTimeout) {
        if (m_tap)
            m_tap->enable();
        return;
    }
    m_lastEvent = m_uptime();
    if (isSilenced())
        return;

    switch (event.type) {
    case RawEventType::leftMouseDown:
    case RawEventType::rightMouseDown:
        deliver(Mouse{.down = true, .pan = pan(event)});
        break;
    case RawEventType::leftMouseUp:
    case RawEventType::rightMouseUp:
        deliver(Mouse{.down = false, .pan = pan(event)});
        break;
    case RawEventType::keyDown:
        if (!event.isAutoRepeat)
            deliver(Key{.code = event.keyCode, .down = true});
        break;
    case RawEventType::keyUp:
        deliver(Key{.code = event.keyCode, .down = false});
        break;
    case RawEventType::flagsChanged:
        deliver(Key{.code = event.keyCode, .down = toggleModifier(event.keyCode)});
        break;
    case RawEventType::scrollWheel:
        deliver(Scroll{.pan = pan(event)});
        break;
    default:
        break;
    }
}

/// Whether secure input is on. Logs once each time it is switched on.
bool InputMonitor::isSilenced()
{
    if (!m_secureInput.isEnabled()) {
        m_secureLogged = false;
        return false;
    }
    if (!m_secureLogged) {
        log::notice("saisie sécurisée active : sons coupés");
        m_secureLogged = true;
    }
    return true;
}

/// A modifier's event has no direction: every other one of a key is a press. True for a press.
bool InputMonitor::toggleModifier(std::int64_t code)
{
    const auto held = std::find(m_heldModifiers.begin(), m_heldModifiers.end(), code);
    if (held == m_heldModifiers.end()) {
        m_heldModifiers.push_back(code);
        return true;
    }
    m_heldModifiers.erase(held);
    return false;
}

float InputMonitor::pan(const RawEvent& event)
{
    double left = std::numeric_limits<double>::infinity();
    double right = -left;
    for (const auto& screen : m_screens.extents()) {
        left = std::min(left, screen.x);
        right = std::max(right, screen.x + screen.width);
    }
    const double width = right - left;
    if (!(width > 0)) // Also when it is not a number.
        return 0;
    const auto fraction = static_cast<float>((event.x - left) / width);
    return (fraction + fraction) - 1;
}

void InputMonitor::deliver(const Event& event)
{
    if (onEvent)
        onEvent(event);
}

bool InputMonitor::permissionGrantedInFreshProcess(const std::filesystem::path& executable)
{
    if (executable.empty())
        return false;

    std::string program = executable.string();
    std::string argument = "--check-input-access";
    const std::array arguments{program.data(), argument.data(), static_cast<char*>(nullptr)};
    pid_t child = -1;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0)
        return false;

    int status = 0;
    pid_t ended = -1;
    do
        ended = waitpid(child, &status, 0);
    while (ended < 0 && errno == EINTR);
    return ended == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace clavo
