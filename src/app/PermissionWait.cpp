// SPDX-License-Identifier: MIT
#include "app/PermissionWait.h"

#include <utility>

namespace clavo
{
namespace
{

constexpr std::chrono::seconds pollInterval{2};
constexpr double waitLimit = 600; // Seconds.

} // namespace

PermissionWait::PermissionWait(Environment environment) : m_environment(std::move(environment)) {}

void PermissionWait::start()
{
    m_wait = std::make_shared<Wait>(Wait{.deadline = m_environment.uptime() + waitLimit});
    scheduleTick();
}

void PermissionWait::scheduleTick()
{
    m_environment.runLater(pollInterval, [this, wait = std::weak_ptr(m_wait)] {
        if (!wait.expired())
            tick();
    });
}

void PermissionWait::tick()
{
    if (m_environment.isListening() || m_environment.uptime() >= m_wait->deadline) {
        m_wait.reset();
        return;
    }
    scheduleTick();
    if (std::exchange(m_wait->isAsking, true))
        return;
    m_environment.ask([this, wait = std::weak_ptr(m_wait)](bool granted) {
        if (!wait.expired())
            receive(granted);
    });
}

void PermissionWait::receive(bool granted)
{
    m_wait->isAsking = false;
    if (!granted)
        return;
    m_wait.reset();
    m_environment.onGranted();
}

} // namespace clavo
