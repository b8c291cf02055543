// SPDX-License-Identifier: MIT
#include "loop/QtTimer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>

#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class QtTimerTest : public testing::Test
{
protected:
    auto call(int number)
    {
        return [this, number] {
            calls.push_back(number);
            m_loop.quit();
        };
    }

    void awaitCall() { m_loop.exec(); }

    std::vector<int> calls;

private:
    int m_count = 1;
    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    QCoreApplication m_application{m_count, m_arguments};
    QEventLoop m_loop;

protected:
    std::unique_ptr<Timer> timer = makeQtTimer();
};

TEST_F(QtTimerTest, CallsBackOnceFromTheMainLoop)
{
    timer->start(0ms, call(1));
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_TRUE(timer->isRunning());

    awaitCall();
    QCoreApplication::processEvents();

    EXPECT_THAT(calls, ElementsAre(1));
    EXPECT_FALSE(timer->isRunning());
}

TEST_F(QtTimerTest, CallsNothingOnceItIsStopped)
{
    timer->start(0ms, call(1));

    timer->stop();
    EXPECT_FALSE(timer->isRunning());
    QCoreApplication::processEvents();

    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(QtTimerTest, CallsNothingOnceItIsDestroyed)
{
    timer->start(0ms, call(1));

    timer.reset();
    QCoreApplication::processEvents();

    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(QtTimerTest, ALaterStartPutsTheCallOff)
{
    timer->start(0ms, call(1));
    timer->start(1h, call(2));

    QCoreApplication::processEvents();

    EXPECT_THAT(calls, IsEmpty());
    EXPECT_TRUE(timer->isRunning());
}

TEST_F(QtTimerTest, WaitsForTheRestOfTheTimeWhenItWasPutOff)
{
    timer->start(0ms, call(1));
    timer->start(1ms, call(2));

    awaitCall();

    EXPECT_THAT(calls, ElementsAre(2));
}

TEST_F(QtTimerTest, AnEarlierStartBringsTheCallForward)
{
    timer->start(1h, call(1));
    timer->start(0ms, call(2));

    awaitCall();

    EXPECT_THAT(calls, ElementsAre(2));
    EXPECT_FALSE(timer->isRunning());
}

TEST_F(QtTimerTest, MayBeStartedByItsCall)
{
    timer->start(0ms, [this] { timer->start(0ms, call(2)); });

    awaitCall();

    EXPECT_THAT(calls, ElementsAre(2));
    EXPECT_FALSE(timer->isRunning());
}

} // namespace
} // namespace clavo
