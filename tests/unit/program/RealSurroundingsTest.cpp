// SPDX-License-Identifier: MIT
#include "app/AppState.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

#include <gtest/gtest.h>

#include <optional>

namespace clavo
{
namespace
{

/// What a process of the executable answers.
bool answer(const char* executable)
{
    std::optional<bool> answered;
    QEventLoop loop;
    const auto surroundings = AppState::Surroundings::real(executable);
    surroundings.askFreshProcess(qApp, [&](bool granted) {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        answered = granted;
        loop.quit();
    });
    EXPECT_FALSE(answered) << "the answer came before the question returned";
    loop.exec();
    return *answered;
}

TEST(FreshProcess, GrantsWhatAProcessThatExitsWithZeroGrants)
{
    EXPECT_TRUE(answer("/bin/true"));
}

TEST(FreshProcess, RefusesWhatAProcessThatExitsWithOneRefuses)
{
    EXPECT_FALSE(answer("/bin/false"));
}

TEST(FreshProcess, RefusesWhenNoProcessStarts)
{
    EXPECT_FALSE(answer("/nowhere/clavo"));
}

} // namespace
} // namespace clavo
