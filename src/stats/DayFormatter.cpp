// SPDX-License-Identifier: MIT
#include "stats/DayFormatter.h"

#include <fmt/compile.h>

#include <algorithm>

namespace clavo
{
namespace
{

using std::chrono::milliseconds;
using std::chrono::seconds;

DayFormatter::Moment momentOf(const QDateTime& time)
{
    return DayFormatter::Moment(milliseconds(time.toMSecsSinceEpoch()));
}

} // namespace

DayFormatter::DayFormatter(const QTimeZone& zone) : m_zone(zone.isValid() ? zone : QTimeZone::utc())
{
}

const std::string& DayFormatter::key(Moment moment)
{
    if (moment < m_from || moment >= m_until) {
        const auto local = localTime(moment);
        m_key = key(local.date());
        // Clock changes alter the offset within a day.
        m_from =
            momentOf(local.date().startOfDay(QTimeZone::utc())) - seconds(local.offsetFromUtc());
        m_until = m_from + std::chrono::days(1);
        if (const auto last = m_zone.previousTransition(local.addMSecs(1)).atUtc; last.isValid())
            m_from = std::max(m_from, momentOf(last));
        if (const auto next = m_zone.nextTransition(local).atUtc; next.isValid())
            m_until = std::min(m_until, momentOf(next));
    }
    return m_key;
}

QDate DayFormatter::day(Moment moment) const
{
    return localTime(moment).date();
}

QDateTime DayFormatter::localTime(Moment moment) const
{
    const auto sinceEpoch = std::chrono::floor<milliseconds>(moment.time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count(), m_zone);
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
