// SPDX-License-Identifier: MIT
#include "platform/x11/ServerClock.h"

namespace clavo
{
namespace
{

/// Whether a is less than b, for wrapping numbers less than half their range apart.
bool isLess(std::uint32_t a, std::uint32_t b)
{
    return static_cast<std::int32_t>(a - b) < 0;
}

} // namespace

std::chrono::nanoseconds ServerClock::steadyTime(std::uint32_t time, std::chrono::nanoseconds now)
{
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(now).count();
    const std::uint32_t difference = static_cast<std::uint32_t>(milliseconds) - time;
    if (!m_hasSeenEvents || now - m_begin >= interval) {
        m_leastBefore = m_hasSeenEvents ? m_least : difference;
        m_least = difference;
        m_begin = now;
        m_hasSeenEvents = true;
    } else if (isLess(difference, m_least)) {
        m_least = difference;
    }
    const std::uint32_t least = isLess(m_leastBefore, m_least) ? m_leastBefore : m_least;
    return now - std::chrono::milliseconds(difference - least);
}

} // namespace clavo
