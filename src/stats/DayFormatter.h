// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QDateTime>
#include <QTimeZone>

#include <chrono>
#include <string>

namespace clavo
{

/// Converts moments into calendar days of one time zone, and days into their keys.
class DayFormatter
{
public:
    using Moment = std::chrono::system_clock::time_point;

    /// An invalid zone counts as UTC.
    explicit DayFormatter(const QTimeZone& zone);

    /// The key of the moment's day. Allocates nothing while the moments stay on one day.
    [[nodiscard]] const std::string& key(Moment moment);

    /// The local day of the moment.
    [[nodiscard]] QDate day(Moment moment) const;
    /// The day's first moment: midnight, or the end of a clock change that skips midnight.
    [[nodiscard]] QDateTime start(QDate day) const { return day.startOfDay(m_zone); }

    /// Year, month and day of the Gregorian calendar, as in "2026-11-15".
    [[nodiscard]] static std::string key(QDate day);

private:
    [[nodiscard]] QDateTime localTime(Moment moment) const;

    QTimeZone m_zone;
    // Every moment from m_from to before m_until has the key m_key. None at first.
    Moment m_from;
    Moment m_until;
    std::string m_key;
};

} // namespace clavo
