// SPDX-License-Identifier: MIT
#include "app/Permission.h"

#include "log/Log.h"

#include <QCoreApplication>

#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace clavo
{
namespace
{

using Seconds = std::chrono::duration<double>;

constexpr std::chrono::seconds pollInterval{2};
constexpr std::chrono::minutes waitLimit{10};
constexpr std::string_view relaunchKey = "permissionRelaunch"; // Seconds since 1970.
constexpr std::chrono::seconds relaunchGuard{60}; // An automatic relaunch needs a longer gap.

} // namespace

Permission::Permission(const Platform& platform, InputMonitor& input, Surroundings surroundings)
    : m_access(*platform.inputAccess), m_defaults(*platform.defaults),
      m_relauncher(*platform.relauncher), m_input(input), m_surroundings(std::move(surroundings)),
      m_state(m_access.state()), m_isListening(m_state == InputAccess::State::granted)
{
}

void Permission::start()
{
    if (startListening())
        return;
    m_access.watch([this] { handleChange(); });
    request(InputAccess::Occasion::start);
}

bool Permission::startListening()
{
    refresh();
    const auto granted = m_state == InputAccess::State::granted;
    const auto listening = granted && m_input.start();
    log::notice("autorisation : {}, écoute : {}", granted, listening);
    if (std::exchange(m_isListening, listening) != listening)
        emit changed();
    return listening;
}

void Permission::request()
{
    request(InputAccess::Occasion::userRequest);
}

void Permission::request(InputAccess::Occasion occasion)
{
    if (!m_access.request(occasion))
        m_access.showSettings();
    refresh();
    m_deadline = m_surroundings.uptime() + waitLimit;
    m_isAsking = false;
    m_asker = std::make_unique<QObject>();
    schedulePoll();
}

// exit() instead of quit(), which a window could refuse: two instances would run.
void Permission::relaunch()
{
    const auto exit = [] { QCoreApplication::exit(); };
    m_relauncher.openNewInstance(
        [exit] { QMetaObject::invokeMethod(qApp, exit, Qt::QueuedConnection); });
}

void Permission::refresh()
{
    const auto state = m_access.state();
    const auto isRefused = state == InputAccess::State::refused;
    const auto commands = QString::fromStdString(isRefused ? m_access.commands() : std::string());
    const auto previous = std::exchange(m_state, state);
    const auto previousCommands = std::exchange(m_commands, commands);
    if (state != previous || commands != previousCommands)
        emit changed();
}

void Permission::handleChange()
{
    refresh();
    if (!isWaiting())
        askIfGranted();
}

bool Permission::lacks(InputAccess::State what) const
{
    return !m_isListening && m_state == what;
}

void Permission::schedulePoll()
{
    m_surroundings.timer->start(pollInterval, [this] { poll(); });
}

void Permission::poll()
{
    if (m_isListening || m_surroundings.uptime() >= m_deadline) {
        m_asker.reset();
        m_isAsking = false;
        refresh();
        askIfGranted(); // A change during the last question would otherwise be missed.
        return;
    }
    schedulePoll();
    if (m_isAsking)
        return;
    refresh();
    ask();
}

void Permission::ask()
{
    m_isAsking = true;
    m_surroundings.askFreshProcess(m_asker.get(), [this](bool granted) { handleAnswer(granted); });
}

void Permission::askIfGranted()
{
    if (m_state != InputAccess::State::granted || m_isListening || m_needsRelaunch || m_isAsking)
        return;
    m_asker = std::make_unique<QObject>();
    ask();
}

void Permission::handleAnswer(bool granted)
{
    m_isAsking = false;
    if (!granted)
        return;
    m_surroundings.timer->stop();
    relaunchUnlessJustRelaunched();
}

void Permission::relaunchUnlessJustRelaunched()
{
    const Seconds now = m_surroundings.wallClock().time_since_epoch();
    const auto stored = m_defaults.value(relaunchKey).value_or(0.0);
    const auto* const last = std::get_if<double>(&stored);
    if (now - Seconds(last ? *last : 0) > relaunchGuard) {
        m_defaults.setValue(relaunchKey, now.count());
        log::notice("autorisation accordée : relance de Clavo");
        relaunch();
        return;
    }
    if (!std::exchange(m_needsRelaunch, true))
        emit changed();
}

} // namespace clavo
