// SPDX-License-Identifier: MIT
#include "app/Permission.h"

#include "fakes/FakePlatform.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <gtest/gtest.h>

#include <array>

namespace clavo
{
namespace
{

class Relaunch : public testing::Test
{
protected:
    /// Whether all that waits for the main loop leaves it running.
    [[nodiscard]] static bool mainLoopGoesOn()
    {
        QEventLoop loop;
        bool goesOn = false;
        // Comes after everything that waits already.
        QMetaObject::invokeMethod(
            &loop,
            [&] {
                goesOn = loop.isRunning();
                loop.exit();
            },
            Qt::QueuedConnection);
        loop.exec();
        return goesOn;
    }

    FakePlatform m_platform;
    FakeRelauncher& m_relauncher = *m_platform.relauncher;

private:
    int m_argumentCount = 1;
    std::array<char, 5> m_name{"test"};
    std::array<char*, 2> m_arguments{m_name.data(), nullptr};
    QCoreApplication m_application{m_argumentCount, m_arguments.data()};
    InputMonitor m_input{*m_platform.services.eventTap, *m_platform.services.secureInput,
                         *m_platform.services.screens, m_platform.surroundings().uptime};

protected:
    Permission m_permission{m_platform.services,
                            m_input,
                            {.timer = m_platform.time.makeTimer(),
                             .uptime = m_platform.surroundings().uptime,
                             .wallClock = m_platform.surroundings().stats.wallClock,
                             .askFreshProcess = {}}};
};

TEST_F(Relaunch, OpensOneNewInstance)
{
    m_permission.relaunch();

    EXPECT_EQ(m_relauncher.opened, 1);
}

TEST_F(Relaunch, GoesOnUntilTheNewInstanceIsOpened)
{
    m_permission.relaunch();

    EXPECT_TRUE(mainLoopGoesOn());
}

TEST_F(Relaunch, EndsThisInstanceFromTheMainLoopOnceTheNewOneIsOpened)
{
    m_permission.relaunch();

    m_relauncher.complete();

    EXPECT_FALSE(mainLoopGoesOn());
}

TEST_F(Relaunch, TheCallThatCompletesItReturnsFirst)
{
    QEventLoop loop;
    bool wasRunning = false;
    QMetaObject::invokeMethod(
        &loop,
        [&] {
            m_permission.relaunch();
            m_relauncher.complete();
            wasRunning = loop.isRunning();
        },
        Qt::QueuedConnection);

    loop.exec();

    EXPECT_TRUE(wasRunning);
}

} // namespace
} // namespace clavo
