// SPDX-License-Identifier: MIT
#include "stats/DayFormatter.h"

#include <fmt/compile.h>

namespace clavo
{

DayFormatter::DayFormatter(const QTimeZone& zone) : m_zone(zone.isValid() ? zone : QTimeZone::utc())
{
}

const std::string& DayFormatter::key(Moment moment)
{
    if (const auto current = day(moment); current != m_lastDay) {
        m_lastDay = current;
        m_lastKey = key(current);
    }
    return m_lastKey;
}

QDate DayFormatter::day(Moment moment) const
{
    using std::chrono::milliseconds;
    const auto sinceEpoch = std::chrono::floor<milliseconds>(moment.time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count(), m_zone).date();
}

std::string DayFormatter::key(QDate day)
{
    int year = 0;
    int month = 0;
    int dayOfMonth = 0;
    day.getDate(&year, &month, &dayOfMonth);
    return fmt::format(FMT_COMPILE("{:04}-{:02}-{:02}"), year, month, dayOfMonth);
}

} // namespace clavo
