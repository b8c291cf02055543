// SPDX-License-Identifier: MIT
#include "app/Relauncher.h"

#include "fakes/FakeRelauncher.h"

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

    FakeRelauncher m_relauncher;

private:
    int m_argumentCount = 1;
    std::array<char, 5> m_name{"test"};
    std::array<char*, 2> m_arguments{m_name.data(), nullptr};
    QCoreApplication m_application{m_argumentCount, m_arguments.data()};
};

TEST_F(Relaunch, OpensOneNewInstance)
{
    relaunch(m_relauncher);

    EXPECT_EQ(m_relauncher.opened, 1);
}

TEST_F(Relaunch, GoesOnUntilTheNewInstanceIsOpened)
{
    relaunch(m_relauncher);

    EXPECT_TRUE(mainLoopGoesOn());
}

TEST_F(Relaunch, EndsThisInstanceFromTheMainLoopOnceTheNewOneIsOpened)
{
    relaunch(m_relauncher);

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
            relaunch(m_relauncher);
            m_relauncher.complete();
            wasRunning = loop.isRunning();
        },
        Qt::QueuedConnection);

    loop.exec();

    EXPECT_TRUE(wasRunning);
}

} // namespace
} // namespace clavo
