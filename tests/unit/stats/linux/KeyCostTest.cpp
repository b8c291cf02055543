// SPDX-License-Identifier: MIT
#include "fakes/TemporaryFolder.h"
#include "stats/StatsStore.h"
#include "unit/audio/linux/CountedCalls.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

namespace clavo
{
namespace
{

using testing::IsEmpty;

TEST(KeyCost, IsNoAllocationAndNoLockWhileTheSaveIsPutOff)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const TemporaryFolder folder;
    const DayFormatter::Moment noon{std::chrono::hours(12)};
    StatsStore stats(folder.path(), {.wallClock = [noon] { return noon; }});
    for (int key = 0; key < 300; ++key)
        stats.record(true);

    EXPECT_THAT(callsMadeBy([&] { stats.record(true); }), IsEmpty());
}

} // namespace
} // namespace clavo
