// SPDX-License-Identifier: MIT
#include "app/FreshProcess.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

#include <gtest/gtest.h>

#include <optional>

namespace clavo
{
namespace
{

class FreshProcess : public testing::Test
{
protected:
    /// What a process of the executable answers.
    static bool answer(const char* executable)
    {
        std::optional<bool> answered;
        QEventLoop loop;
        askFreshProcess(executable)([&](bool granted) {
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
            answered = granted;
            loop.quit();
        });
        EXPECT_FALSE(answered) << "the answer came before the question returned";
        loop.exec();
        return *answered;
    }

private:
    int m_count = 1;
    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    QCoreApplication m_application{m_count, m_arguments};
};

TEST_F(FreshProcess, GrantsWhatAProcessThatExitsWithZeroGrants)
{
    EXPECT_TRUE(answer("/bin/true"));
}

TEST_F(FreshProcess, RefusesWhatAProcessThatExitsWithOneRefuses)
{
    EXPECT_FALSE(answer("/bin/false"));
}

TEST_F(FreshProcess, RefusesWhereNoProcessStarts)
{
    EXPECT_FALSE(answer("/nowhere/clavo"));
}

} // namespace
} // namespace clavo
