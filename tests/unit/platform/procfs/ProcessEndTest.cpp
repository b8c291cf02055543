// SPDX-License-Identifier: MIT
#include "platform/procfs/Processes.h"

#include "eventloop/EventLoop.h"

#include <gtest/gtest.h>

#include <csignal>
#include <optional>

#include <sys/wait.h>
#include <unistd.h>

namespace clavo
{
namespace
{

class ProcessEndTest : public testing::Test
{
protected:
    ~ProcessEndTest() override { endProcess(); }

    void endProcess()
    {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }

    static pid_t waitingProcess()
    {
        const auto child = fork();
        if (child == 0) {
            while (true)
                pause();
        }
        return child;
    }

    EventLoop loop;
    pid_t process = waitingProcess();
    std::optional<ProcessEnd> end;
};

TEST_F(ProcessEndTest, IsReportedOnceAndItsReceiverMayDestroyIt)
{
    int told = 0;
    end.emplace(process, [this, &told] {
        end.reset();
        ++told;
    });
    ASSERT_TRUE(end->isWaiting());

    endProcess();

    ASSERT_TRUE(EventLoop::until([&] { return told > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
}

TEST_F(ProcessEndTest, OfAProcessThatIsNoMoreIsNotWaitedFor)
{
    endProcess();

    EXPECT_FALSE(ProcessEnd(process, [] { FAIL(); }).isWaiting());
    EXPECT_FALSE(ProcessEnd(0, [] { FAIL(); }).isWaiting());
}

} // namespace
} // namespace clavo
