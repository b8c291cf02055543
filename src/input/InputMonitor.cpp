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

extern char** environ; // POSIX requires the program to declare it.

namespace clavo
{
namespace
{

constexpr EventMask bit(std::uint32_t type)
{
    return EventMask{1} << type;
}

// Without other buttons, motion and drags, which make no sound and would wake the program.
constexpr EventMask wantedEvents =
    bit(RawEventType::keyDown) | bit(RawEventType::keyUp) | bit(RawEventType::flagsChanged) |
    bit(RawEventType::leftMouseDown) | bit(RawEventType::leftMouseUp) |
    bit(RawEventType::rightMouseDown) | bit(RawEventType::rightMouseUp) |
    bit(RawEventType::scrollWheel);

} // namespace

InputMonitor::InputMonitor(EventTap& tap, SecureInput& secureInput, Screens& screens,
                           std::function<std::chrono::nanoseconds()> uptime)
    : m_tap(tap), m_secureInput(secureInput), m_screens(screens), m_uptime(std::move(uptime))
{
    m_heldModifiers.reserve(64);
}

bool InputMonitor::start()
{
    if (m_isRunning)
        return true;
    m_isRunning = m_tap.create(wantedEvents, [this](const RawEvent& event) { handle(event); });
    if (m_isRunning)
        m_tap.enable();
    return m_isRunning;
}

void InputMonitor::handle(const RawEvent& event)
{
    if (event.type >= RawEventType::tapDisabledByTimeout) {
        if (m_isRunning)
            m_tap.enable();
        return;
    }
    m_lastEvent = m_uptime();
    if (isSilenced())
        return;

    const bool late = isLate(event);
    switch (event.type) {
    case RawEventType::leftMouseDown:
    case RawEventType::rightMouseDown:
        if (!late)
            deliver(Mouse{.down = true, .pan = pan(event)});
        break;
    case RawEventType::leftMouseUp:
    case RawEventType::rightMouseUp:
        if (!late)
            deliver(Mouse{.down = false, .pan = pan(event)});
        break;
    case RawEventType::keyDown:
        if (!event.isAutoRepeat)
            deliver(Key{.code = event.keyCode, .down = true, .isLate = late});
        break;
    case RawEventType::keyUp:
        deliver(Key{.code = event.keyCode, .down = false, .isLate = late});
        break;
    case RawEventType::flagsChanged:
        deliver(Key{.code = event.keyCode, .down = toggleModifier(event.keyCode), .isLate = late});
        break;
    case RawEventType::scrollWheel:
        if (!late)
            deliver(Scroll{.pan = pan(event)});
        break;
    default:
        break;
    }
}

/// Whether secure input is active. Logs each activation once.
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

bool InputMonitor::isLate(const RawEvent& event) const
{
    return event.time && *m_lastEvent - *event.time > lateness;
}

/// A modifier's event has no direction: a key's events alternate, beginning with a press. True for
/// a press.
bool InputMonitor::toggleModifier(std::int64_t code)
{
    const bool isPress = std::erase(m_heldModifiers, code) == 0;
    if (isPress)
        m_heldModifiers.push_back(code);
    return isPress;
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
    if (!(width > 0)) // True also for NaN.
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
