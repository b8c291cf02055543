// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/SimulatedTime.h"
#include "fakes/TemporaryFolder.h"
#include "files/WholeFile.h"
#include "stats/SnapshotFile.h"
#include "stats/StatsStore.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QTimeZone>

#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace clavo
{

using DailyCounts = decltype(StatsSnapshot::daily);

/// Surroundings in simulated time. Saves run where the test is when they are due, unless it holds
/// them back. It is noon in UTC on Sunday, 15 November 2026, until the test says otherwise.
class StatsStoreFixture : public testing::Test
{
protected:
    using seconds = std::chrono::seconds;
    using milliseconds = std::chrono::milliseconds;

    StatsStoreFixture() { setLocalTime("2026-11-15T12:00:00"); }

    /// The stores follow it.
    void setTimeZone(const char* name)
    {
        m_zone->set(QTimeZone(name));
        ASSERT_TRUE(m_zone->current().isValid()) << name;
    }

    /// Sets the wall clock, back too, to a time of the zone in the ISO format.
    void setLocalTime(const char* text)
    {
        auto moment = QDateTime::fromString(text, Qt::ISODateWithMs);
        moment.setTimeZone(m_zone->current());
        ASSERT_TRUE(moment.isValid()) << text;
        m_startOfTime = DayFormatter::Moment(milliseconds(moment.toMSecsSinceEpoch())) - time.now();
    }

    [[nodiscard]] DayFormatter::Moment now() const { return m_startOfTime + time.now(); }

    [[nodiscard]] StatsSurroundings surroundings()
    {
        return {
            .wallClock = [this] { return now(); },
            .timeZone = m_zone,
            .makeTimer = [this] { return time.makeTimer(); },
            .runInBackground =
                [this](std::function<void()> task) {
                    begunSaves.push_back(std::move(task));
                    if (!holdsSavesBack)
                        finishSaves();
                },
        };
    }

    void finishSaves()
    {
        for (; !begunSaves.empty(); begunSaves.pop_front())
            begunSaves.front()();
    }

    StatsStore store() { return StatsStore(folder.path(), surroundings()); }

    /// A store whose file holds these days; the total is another number than their sum.
    StatsStore storeWithDays(const DailyCounts& counts)
    {
        writeStats({.daily = counts, .bestWPM = 40, .total = 1'000'000});
        return store();
    }

    void writeStats(const StatsStore::Snapshot& snapshot) const { writeText(toJson(snapshot)); }
    void writeText(const std::string& text) const
    {
        std::filesystem::create_directories(file.parent_path());
        EXPECT_FALSE(replaceFile(file, text));
    }

    [[nodiscard]] StatsStore::Snapshot saved() const { return loadSnapshot(file); }

    static void type(StatsStore& store, int keys)
    {
        for (int i = 0; i < keys; ++i)
            store.record(false);
    }

    /// Types characters at an even pace, the first one now.
    void typeEvenly(StatsStore& store, int characters, milliseconds interval)
    {
        for (int i = 0; i < characters; ++i) {
            if (i > 0)
                time.advance(interval);
            store.record(true);
        }
    }

    SimulatedTime time;
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "Clavo" / "stats.json";
    bool holdsSavesBack = false;
    std::deque<std::function<void()>> begunSaves;

private:
    std::shared_ptr<TimeZone> m_zone = std::make_shared<TimeZone>(QTimeZone::utc());
    DayFormatter::Moment m_startOfTime;
};

} // namespace clavo
