// SPDX-License-Identifier: MIT
#include "app/PermissionWait.h"

#include "fakes/SimulatedTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

class PermissionWaitTest : public testing::Test
{
protected:
    /// Answers the question that has waited longest.
    void answer(bool yes)
    {
        auto receiver = std::move(questions.front());
        questions.erase(questions.begin());
        receiver(yes);
    }

    SimulatedTime time;
    std::vector<std::function<void(bool)>> questions; // Not yet answered.
    int asked = 0;
    int granted = 0;
    bool listening = false;

    std::optional<PermissionWait> wait{PermissionWait::Environment{
        .runLater = [this](auto delay, auto task) { time.runLater(delay, std::move(task)); },
        .uptime = [this] { return std::chrono::duration<double>(time.now()).count(); },
        .isListening = [this] { return listening; },
        .ask =
            [this](std::function<void(bool)> receiver) {
                ++asked;
                questions.push_back(std::move(receiver));
            },
        .onGranted = [this] { ++granted; },
    }};
};

TEST_F(PermissionWaitTest, AsksNobodyBeforeItIsStarted)
{
    time.advance(10s);

    EXPECT_EQ(asked, 0);
    EXPECT_FALSE(wait->isWaiting());
}

TEST_F(PermissionWaitTest, AsksEveryTwoSecondsUntilThePermissionIsGranted)
{
    wait->start();
    time.advance(1999ms);
    EXPECT_EQ(asked, 0);
    time.advance(1ms);
    EXPECT_EQ(asked, 1);
    answer(false);
    time.advance(2s);
    EXPECT_EQ(asked, 2);

    answer(true);
    time.advance(60s);

    EXPECT_EQ(granted, 1);
    EXPECT_EQ(asked, 2);
    EXPECT_FALSE(wait->isWaiting());
}

TEST_F(PermissionWaitTest, AsksOneQuestionAtATime)
{
    wait->start();
    time.advance(7s);
    EXPECT_EQ(asked, 1);

    answer(false);
    time.advance(1s);

    EXPECT_EQ(asked, 2);
}

TEST_F(PermissionWaitTest, GivesUpSilentlyAfterTenMinutes)
{
    wait->start();
    for (int tick = 0; tick < 299; ++tick) {
        time.advance(2s);
        answer(false);
    }
    EXPECT_EQ(asked, 299);

    time.advance(60s);

    EXPECT_EQ(asked, 299);
    EXPECT_EQ(granted, 0);
    EXPECT_FALSE(wait->isWaiting());
}

TEST_F(PermissionWaitTest, AnAnswerAfterTheTenMinutesIsIgnored)
{
    wait->start();
    time.advance(601s);

    answer(true);

    EXPECT_EQ(granted, 0);
}

TEST_F(PermissionWaitTest, EndsOnceTheProgramListens)
{
    wait->start();
    listening = true;
    time.advance(60s);

    EXPECT_EQ(asked, 0);
    EXPECT_FALSE(wait->isWaiting());
}

TEST_F(PermissionWaitTest, AnAnswerToAnEarlierWaitIsIgnored)
{
    wait->start();
    time.advance(2s);
    wait->start();

    answer(true);
    EXPECT_EQ(granted, 0);
    EXPECT_TRUE(wait->isWaiting());
    time.advance(2s);
    answer(true);

    EXPECT_EQ(granted, 1);
}

TEST_F(PermissionWaitTest, ASecondWaitDoesNotMakeTheFirstAskOn)
{
    wait->start();
    time.advance(1s);
    wait->start();
    time.advance(1s);
    EXPECT_EQ(asked, 0);

    time.advance(1s);

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(time.waiting(), 1U);
}

TEST_F(PermissionWaitTest, IsForgottenWithItsOwner)
{
    wait->start();
    time.advance(2s);
    wait.reset();

    time.advance(2s);
    answer(true);

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(granted, 0);
}

} // namespace
} // namespace clavo
