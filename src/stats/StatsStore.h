// SPDX-License-Identifier: MIT
#pragma once

#include "stats/DayFormatter.h"
#include "stats/StatsDay.h"
#include "stats/StatsSnapshot.h"
#include "stats/StatsSurroundings.h"

#include <QDateTime>
#include <QList>
#include <QObject>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace clavo
{

/// The user's typing statistics: keys on each day, speed, streak. Kept in one file on this machine
/// and nowhere else; what was typed is not in it.
///
/// Thread: main. A save works on a copy in the background, and nothing about it is reported: when
/// it fails, the statistics in memory are as they were, and the next one tries again.
class StatsStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(qint64 today READ today NOTIFY dataChanged)
    Q_PROPERTY(qint64 total READ total NOTIFY dataChanged)
    Q_PROPERTY(qint64 streak READ streak NOTIFY dataChanged)
    Q_PROPERTY(qint64 bestWPM READ bestWPM NOTIFY dataChanged)
    Q_PROPERTY(qint64 currentWPM READ currentWPM NOTIFY currentWPMChanged)
    Q_PROPERTY(QList<clavo::StatsDay> lastDays READ lastDays NOTIFY dataChanged)

public:
    using Snapshot = StatsSnapshot;
    using Day = StatsDay;

    /// Keys from which on a day counts for the streak.
    static constexpr std::int64_t qualifyingCount = 50;
    /// From the last change to its save.
    static constexpr std::chrono::milliseconds saveDelay{2000};

    /// The user's own: loads "Clavo/stats.json" below the user's application support folder, and
    /// makes the folder. A file that cannot be read counts as empty and is replaced by the next
    /// save.
    explicit StatsStore(const std::filesystem::path& applicationSupport,
                        StatsSurroundings surroundings = {});

    /// A demonstration: the days' counts, oldest first, the last one today's. Reads nothing, and
    /// saves to the system's temporary folder.
    StatsStore(const std::vector<std::int64_t>& demoDays, std::int64_t bestWPM,
               StatsSurroundings surroundings = {});

    /// Drops the save that is still to come and waits for one that has begun.
    ~StatsStore() override;

    /// Counts one key press; one of a key that produces a character also tells the speed.
    void record(bool isCharacter);

    /// Forgets everything, on the disk too once the save has come.
    Q_INVOKABLE void reset();

    [[nodiscard]] const Snapshot& data() const { return m_data; }
    [[nodiscard]] std::int64_t total() const { return m_data.total; }
    [[nodiscard]] std::int64_t bestWPM() const { return m_data.bestWPM; }
    /// Words per minute, as they were at the last character.
    [[nodiscard]] std::int64_t currentWPM() const { return m_currentWPM; }

    /// Keys pressed today.
    [[nodiscard]] std::int64_t today() const;
    /// Qualifying days in a row up to today, or up to yesterday while today does not qualify.
    [[nodiscard]] std::int64_t streak() const;
    /// The last 14 days, oldest first, today last.
    [[nodiscard]] QList<Day> lastDays() const;
    /// Keys on the day of the moment.
    [[nodiscard]] std::int64_t count(DayFormatter::Moment on) const;

signals:
    void dataChanged();
    void currentWPMChanged();

private:
    void trackSpeed(DayFormatter::Moment moment);
    void scheduleSave();
    [[nodiscard]] std::int64_t count(QDate day) const;
    [[nodiscard]] QDate currentDay() const;

    StatsSurroundings m_surroundings;
    DayFormatter m_dayFormatter;
    std::filesystem::path m_file;
    Snapshot m_data;
    std::int64_t m_currentWPM = 0;
    std::vector<double> m_recentChars;          // Seconds of the wall clock, oldest first.
    std::shared_ptr<const Snapshot> m_saveWork; // What the save to come will write; null: none.
};

} // namespace clavo
