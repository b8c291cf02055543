// SPDX-License-Identifier: MIT
#include "stats/StatsStore.h"

#include "files/WholeFile.h"

#include <QDir>
#include <QThreadPool>

#include <cstddef>
#include <iterator>
#include <numeric>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

constexpr int chartDays = 14;

constexpr std::chrono::seconds speedInterval{60};
constexpr std::chrono::seconds recordInterval{55}; // Typing time before a speed can be the best.
constexpr std::size_t charactersPerWord = 5;

// Makes the total that of a long-time user, not only of the few days shown.
constexpr std::int64_t demoEarlierKeys = 412380;

std::filesystem::path statsFile(const std::filesystem::path& applicationSupport)
{
    const auto folder = applicationSupport / "Clavo";
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    removeAbandoned(folder);
    return folder / "stats.json";
}

std::filesystem::path demoFile()
{
    return std::filesystem::path(QDir::tempPath().toStdString()) / "clavo-demo-stats.json";
}

} // namespace

StatsSurroundings::RunInBackground StatsSurroundings::oneThread()
{
    auto pool = std::make_shared<QThreadPool>();
    pool->setMaxThreadCount(1);
    // The only priority below the normal one that Linux has for a thread.
    pool->setThreadPriority(QThread::IdlePriority);
    return [pool = std::move(pool)](std::function<void()> task) {
        // Wrapped, so that the thread's stack names this function: tests/races.supp looks for it.
        pool->start([task = std::move(task)] { task(); });
    };
}

StatsStore::StatsStore(const std::filesystem::path& applicationSupport,
                       StatsSurroundings surroundings)
    : m_surroundings(std::move(surroundings)), m_dayFormatter(m_surroundings.timeZone->current()),
      m_file(statsFile(applicationSupport)), m_data(loadSnapshot(m_file))
{
    followTimeZone();
}

StatsStore::StatsStore(const std::vector<std::int64_t>& demoDays, std::int64_t bestWPM,
                       StatsSurroundings surroundings)
    : m_surroundings(std::move(surroundings)), m_dayFormatter(m_surroundings.timeZone->current()),
      m_file(demoFile())
{
    m_data.bestWPM = bestWPM;
    m_data.total = std::accumulate(demoDays.begin(), demoDays.end(), demoEarlierKeys);
    auto day = currentDay().addDays(1 - std::ssize(demoDays));
    for (const auto count : demoDays) {
        m_data.daily[DayFormatter::key(day)] = count;
        day = day.addDays(1);
    }
    followTimeZone();
}

StatsStore::~StatsStore() = default;

void StatsStore::record(bool isCharacter)
{
    const auto now = m_surroundings.wallClock();
    const auto previousWPM = m_currentWPM;
    ++m_data.daily[m_dayFormatter.key(now)];
    ++m_data.total;
    if (isCharacter)
        trackSpeed(now);
    scheduleSave();
    emit dataChanged();
    if (m_currentWPM != previousWPM)
        emit currentWPMChanged();
}

void StatsStore::reset()
{
    const auto previousWPM = std::exchange(m_currentWPM, 0);
    m_data = {};
    m_recentChars.clear();
    scheduleSave();
    emit dataChanged();
    if (previousWPM != 0)
        emit currentWPMChanged();
}

// Keys counted before the change stay on their days.
void StatsStore::followTimeZone()
{
    connect(m_surroundings.timeZone.get(), &TimeZone::changed, this, [this] {
        m_dayFormatter = DayFormatter(m_surroundings.timeZone->current());
        emit dataChanged();
    });
}

// After the clock was set back, later times stay until the clock has passed them.
void StatsStore::trackSpeed(DayFormatter::Moment now)
{
    m_recentChars.push_back(now);
    std::erase_if(m_recentChars, [now](auto time) { return now - time > speedInterval; });
    m_currentWPM = static_cast<std::int64_t>(m_recentChars.size() / charactersPerWord);
    if (now - m_recentChars.front() >= recordInterval && m_data.bestWPM < m_currentWPM)
        m_data.bestWPM = m_currentWPM;
}

// Every change postpones the save, so it copies the data of the last change.
void StatsStore::scheduleSave()
{
    m_saveTimer->start(saveDelay, [this] {
        m_surroundings.runInBackground(
            [snapshot = m_data, file = m_file] { saveSnapshot(snapshot, file); });
    });
}

std::int64_t StatsStore::today() const
{
    return count(currentDay());
}

std::int64_t StatsStore::streak() const
{
    auto day = currentDay();
    if (count(day) < qualifyingCount)
        day = day.addDays(-1);
    std::int64_t days = 0;
    for (; count(day) >= qualifyingCount; day = day.addDays(-1))
        ++days;
    return days;
}

QList<StatsStore::Day> StatsStore::lastDays() const
{
    const auto last = currentDay();
    QList<Day> days;
    for (int back = chartDays - 1; back >= 0; --back) {
        const auto day = last.addDays(-back);
        days.append({m_dayFormatter.start(day), count(day)});
    }
    return days;
}

std::int64_t StatsStore::count(DayFormatter::Moment on) const
{
    return count(m_dayFormatter.day(on));
}

std::int64_t StatsStore::count(QDate day) const
{
    const auto found = m_data.daily.find(DayFormatter::key(day));
    return found == m_data.daily.end() ? 0 : found->second;
}

QDate StatsStore::currentDay() const
{
    return m_dayFormatter.day(m_surroundings.wallClock());
}

} // namespace clavo
