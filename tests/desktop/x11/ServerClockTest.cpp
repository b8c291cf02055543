// SPDX-License-Identifier: MIT
#include "platform/x11/ServerClock.h"

#include <gtest/gtest.h>

#include <limits>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using std::chrono::milliseconds;

/// A server whose clock is ahead of the steady clock, and a program that reads its events.
class ServerClockTest : public testing::Test
{
protected:
    /// How old an event that happened `age` ago is taken to be.
    milliseconds ageOf(milliseconds age)
    {
        const auto time = static_cast<std::uint32_t>((now + ahead - age).count());
        return std::chrono::duration_cast<milliseconds>(now - m_clock.steadyTime(time, now));
    }

    milliseconds now = 1h;
    milliseconds ahead = 77h;

private:
    ServerClock m_clock;
};

TEST_F(ServerClockTest, FirstEventCountsAsNew)
{
    EXPECT_EQ(ageOf(5s), 0s);
}

TEST_F(ServerClockTest, LaterOnesAreAsOldAsTheyAre)
{
    (void)ageOf(0s);
    now += 30s; // A process that was stopped.

    EXPECT_EQ(ageOf(29s), 29s);
    EXPECT_EQ(ageOf(1s), 1s);
    EXPECT_EQ(ageOf(0s), 0s);
}

TEST_F(ServerClockTest, QuickestEventIsTheMeasure)
{
    (void)ageOf(90ms);
    EXPECT_EQ(ageOf(300ms), 210ms);
    (void)ageOf(2ms);

    EXPECT_EQ(ageOf(300ms), 298ms);
}

TEST_F(ServerClockTest, ServersTimeMayWrap)
{
    for (const std::int64_t origin : {0LL, 1LL << 31U, 1LL << 32U}) {
        ahead = milliseconds(origin) - now - 1s;
        (void)ageOf(0s);
        for (int i = 0; i < 4; ++i) {
            now += 500ms;
            EXPECT_EQ(ageOf(300ms), 300ms);
            EXPECT_EQ(ageOf(0s), 0s);
        }
        now += 20 * ServerClock::interval;
        (void)ageOf(0s);
        now += 20 * ServerClock::interval;
        (void)ageOf(0s);
    }
}

TEST_F(ServerClockTest, ServersClockMayDrift)
{
    for (int key = 0; key < 1000; ++key) {
        now += 1s;
        ahead -= 1ms;
        EXPECT_LE(ageOf(0s), milliseconds(2 * ServerClock::interval) / 1000 + 1ms);
    }
}

TEST_F(ServerClockTest, ServersClockMayJump)
{
    (void)ageOf(0s);
    for (const auto jump : {-1h, 2h}) {
        ahead += jump;
        for (auto since = 0s; since <= 2 * ServerClock::interval; since += 1s) {
            now += 1s;
            (void)ageOf(0s);
        }

        EXPECT_EQ(ageOf(0s), 0s);
        EXPECT_EQ(ageOf(1s), 1s);
    }
}

} // namespace
} // namespace clavo
