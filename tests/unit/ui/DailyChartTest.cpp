// SPDX-License-Identifier: MIT
#include "ui/DailyChart.h"

#include "unit/stats/StatsStoreFixture.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace clavo
{
namespace
{

using testing::Each;
using testing::ElementsAre;

/// On 15 November 2026.
class DailyChartOf : public StatsStoreFixture
{
protected:
    DailyChartOf() { QLocale::setDefault(QLocale("en_US")); }
    ~DailyChartOf() override { QLocale::setDefault(QLocale::c()); }

    StatsStore days(const std::vector<std::int64_t>& counts)
    {
        return StatsStore(counts, 0, surroundings());
    }

    TypingFigures figures{time.makeTimer()};

    template <typename Value>
    static std::vector<Value> values(const DailyChart& chart, DailyChart::Role role)
    {
        std::vector<Value> all;
        for (int row = 0; row < chart.rowCount(); ++row)
            all.push_back(chart.data(chart.index(row), role).value<Value>());
        return all;
    }
};

TEST_F(DailyChartOf, NothingHasABarOfNoHeightForEveryDay)
{
    auto stats = store();
    DailyChart chart;

    figures.setStats(&stats);
    chart.setFigures(&figures);

    ASSERT_EQ(chart.rowCount(), 14);
    EXPECT_THAT(values<double>(chart, DailyChart::fractionRole), Each(0.0));
    EXPECT_EQ(chart.lines(), QStringList({"0", "1"}));
}

TEST_F(DailyChartOf, FourteenDaysEndsWithToday)
{
    auto stats = days({10, 20});
    DailyChart chart;

    figures.setStats(&stats);
    chart.setFigures(&figures);

    const auto dates = values<QString>(chart, DailyChart::dateRole);
    EXPECT_EQ(dates.front(), "Nov 2");
    EXPECT_EQ(dates.back(), "Nov 15");
    const auto heights = values<double>(chart, DailyChart::fractionRole);
    EXPECT_EQ(heights[11], 0.0);
    EXPECT_EQ(heights[12], 0.5);
    EXPECT_EQ(heights[13], 1.0);
}

TEST_F(DailyChartOf, EverySecondDayIsMarkedFromTheFirst)
{
    auto stats = store();
    DailyChart chart;

    figures.setStats(&stats);
    chart.setFigures(&figures);

    EXPECT_THAT(values<bool>(chart, DailyChart::markedRole),
                ElementsAre(true, false, true, false, true, false, true, false, true, false, true,
                            false, true, false));
}

TEST_F(DailyChartOf, ManyKeysHasLinesInTheUsersDigitGrouping)
{
    auto stats = days({1'234'567});
    DailyChart chart;

    figures.setStats(&stats);
    chart.setFigures(&figures);

    EXPECT_EQ(chart.lines(), QStringList({"0", "500,000", "1,000,000", "1,500,000"}));
    EXPECT_EQ(chart.data(chart.index(13), DailyChart::keysRole), "1,234,567");
}

TEST_F(DailyChartOf, AKeyWithinTheScaleChangesOneBarAlone)
{
    auto stats = days({5, 16});
    DailyChart chart;
    figures.setStats(&stats);
    chart.setFigures(&figures);
    const QSignalSpy changed(&chart, &DailyChart::dataChanged);
    const QSignalSpy reset(&chart, &DailyChart::modelReset);

    stats.record(false);
    time.advance(TypingFigures::delay);

    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).toModelIndex().row(), 13);
    EXPECT_EQ(changed.at(0).at(1).toModelIndex().row(), 13);
    EXPECT_EQ(reset.count(), 0);
    EXPECT_EQ(chart.data(chart.index(13), DailyChart::keysRole), "17");
}

TEST_F(DailyChartOf, AKeyBeyondTheScaleRaisesTheTop)
{
    auto stats = days({20});
    DailyChart chart;
    figures.setStats(&stats);
    chart.setFigures(&figures);
    const QSignalSpy lines(&chart, &DailyChart::linesChanged);

    stats.record(false);
    time.advance(TypingFigures::delay);

    EXPECT_EQ(lines.count(), 1);
    EXPECT_EQ(chart.lines(), QStringList({"0", "10", "20", "30"}));
    EXPECT_EQ(chart.data(chart.index(13), DailyChart::fractionRole), 0.7);
}

TEST_F(DailyChartOf, ErasedStatisticsIsEmptyAtOnce)
{
    auto stats = days({30, 40});
    DailyChart chart;
    figures.setStats(&stats);
    chart.setFigures(&figures);

    stats.reset();
    time.advance(TypingFigures::delay);

    EXPECT_THAT(values<double>(chart, DailyChart::fractionRole), Each(0.0));
    EXPECT_THAT(values<QString>(chart, DailyChart::keysRole), Each(QString("0")));
}

TEST_F(DailyChartOf, NoStatisticsHasNothing)
{
    auto stats = days({30});
    DailyChart chart;
    figures.setStats(&stats);
    chart.setFigures(&figures);

    figures.setStats(nullptr);

    EXPECT_EQ(chart.rowCount(), 0);
}

} // namespace
} // namespace clavo
