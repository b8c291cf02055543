// SPDX-License-Identifier: MIT
#pragma once

#include "stats/DayFormatter.h"
#include "stats/SnapshotFile.h"
#include "stats/StatsSurroundings.h"

#include <QDateTime>
#include <QList>
#include <QMetaType>
#include <QObject>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace clavo
{

/// One bar of the chart of the last days, identified by its date.
struct StatsDay {
    Q_GADGET
    Q_PROPERTY(QDateTime date MEMBER date CONSTANT)
    Q_PROPERTY(qint64 count MEMBER count CONSTANT)

public:
    QDateTime date;   // The local day's start.
    qint64 count = 0; // Keys.

    bool operator==(const StatsDay&) const = default;
};

/// The user's typing statistics: keys on each day, speed, streak. Kept in one file on this machine
/// and nowhere else; what was typed is not in it.
///
/// Thread: main. A save works on a copy in the background. A failure is not reported: the
/// statistics in memory are as they were, and the next save tries again.
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

    /// The number of keys with which a day counts for the streak.
    static constexpr std::int64_t qualifyingCount = 50;
    /// From the last change to its save.
    static constexpr std::chrono::milliseconds saveDelay{2000};

    /// The user's statistics: loads "Clavo/stats.json" below the user's application support folder,
    /// and makes the folder. A file that cannot be read counts as empty and is replaced by the next
    /// save.
    explicit StatsStore(const std::filesystem::path& applicationSupport,
                        StatsSurroundings surroundings = {});

    /// A demonstration: the days' counts, oldest first, the last one today's. Reads nothing, and
    /// saves to the system's temporary folder.
    StatsStore(const std::vector<std::int64_t>& demoDays, std::int64_t bestWPM,
               StatsSurroundings surroundings = {});

    /// Drops a save that is still to come and waits for one that has begun.
    ~StatsStore() override;

    /// Counts one key press; that of a key that produces a character also counts for the speed.
    /// Allocates nothing but at the first key of a day and of a faster minute than any before.
    void record(bool isCharacter);

    /// Forgets everything, on the disk too once it has been saved.
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
    void trackSpeed(DayFormatter::Moment now);
    void scheduleSave();
    [[nodiscard]] std::int64_t count(QDate day) const;
    [[nodiscard]] QDate currentDay() const;

    StatsSurroundings m_surroundings;
    DayFormatter m_dayFormatter;
    std::filesystem::path m_file;
    Snapshot m_data;
    std::int64_t m_currentWPM = 0;
    std::vector<DayFormatter::Moment> m_recentChars; // Of the last minute, oldest first.
    std::unique_ptr<Timer> m_saveTimer = m_surroundings.makeTimer();
};

} // namespace clavo
