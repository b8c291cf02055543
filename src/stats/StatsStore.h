// SPDX-License-Identifier: MIT
#pragma once

#include "loop/QtTimer.h"
#include "stats/DayFormatter.h"
#include "stats/SnapshotFile.h"
#include "stats/TimeZone.h"
#include "time/Timer.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QMetaType>
#include <QObject>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace clavo
{

/// Time and threads, as the statistics use them; the real ones by default.
struct StatsSurroundings {
    using WallClock = std::function<std::chrono::system_clock::time_point()>;
    /// Runs tasks one after the other, in the order they come, without blocking the caller.
    using RunInBackground = std::function<void(std::function<void()>)>;

    /// One thread of low priority. Destroying the last copy of the result waits for its tasks.
    [[nodiscard]] static RunInBackground oneThread();

    WallClock wallClock = std::chrono::system_clock::now;
    std::shared_ptr<TimeZone> timeZone = makeSystemTimeZone();
    MakeTimer makeTimer = makeQtTimer;
    RunInBackground runInBackground = oneThread();
};

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

/// The user's typing statistics: keys per day, speed, streak. Stored in one local file, without
/// anything that was typed.
///
/// Thread: main. Saves run in the background on a copy. A failure is not reported: the statistics
/// stay in memory, and the next save tries again.
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

    /// The number of keys from which a day counts for the streak.
    static constexpr std::int64_t qualifyingCount = 50;
    /// From the last change to its save.
    static constexpr std::chrono::milliseconds saveDelay{2000};

    /// The user's statistics: creates the folder "Clavo" in the application support folder and
    /// loads its "stats.json". A file that cannot be read counts as empty and is replaced by the
    /// next save.
    explicit StatsStore(const std::filesystem::path& applicationSupport,
                        StatsSurroundings surroundings = {});

    /// A demonstration with these counts per day, oldest first, today last. Reads no file and saves
    /// to the system's temporary folder.
    StatsStore(const std::vector<std::int64_t>& demoDays, std::int64_t bestWPM,
               StatsSurroundings surroundings = {});

    /// Cancels a pending save and waits for a running one.
    ~StatsStore() override;

    /// Counts one key press; that of a character also counts for the speed. Allocates only at the
    /// first key of a day and when the speed exceeds all earlier ones.
    void record(bool isCharacter);

    /// Clears the statistics, and the file with the next save.
    Q_INVOKABLE void reset();

    [[nodiscard]] const Snapshot& data() const { return m_data; }
    [[nodiscard]] std::int64_t total() const { return m_data.total; }
    [[nodiscard]] std::int64_t bestWPM() const { return m_data.bestWPM; }
    /// Words per minute at the last character.
    [[nodiscard]] std::int64_t currentWPM() const { return m_currentWPM; }

    /// Keys pressed today.
    [[nodiscard]] std::int64_t today() const;
    /// Consecutive qualifying days up to today, or up to yesterday while today does not qualify.
    [[nodiscard]] std::int64_t streak() const;
    /// The last 14 days, oldest first, today last.
    [[nodiscard]] QList<Day> lastDays() const;
    /// Keys on the day of the moment.
    [[nodiscard]] std::int64_t count(DayFormatter::Moment on) const;

signals:
    void dataChanged();
    void currentWPMChanged();

private:
    void followTimeZone();
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
