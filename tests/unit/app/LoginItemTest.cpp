// SPDX-License-Identifier: MIT
#include "app/LoginItem.h"

#include "fakes/CollectedLog.h"
#include "fakes/FakeLoginItem.h"
#include "log/Log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Status = LoginItem::Status;

class LaunchAtLogin : public testing::Test
{
protected:
    CollectedLog m_log;
    FakeLoginItem m_item;
};

TEST_F(LaunchAtLogin, AStateThatIsReachedAlreadyCallsNothing)
{
    m_item.current = Status::enabled;
    setLaunchAtLogin(m_item, true);
    for (const auto status : {Status::notRegistered, Status::requiresApproval, Status::notFound}) {
        m_item.current = status;
        setLaunchAtLogin(m_item, false);
    }

    EXPECT_EQ(m_item.registrations, 0);
    EXPECT_EQ(m_item.unregistrations, 0);
}

TEST_F(LaunchAtLogin, TurningItOnRegistersInEveryOtherState)
{
    int calls = 0;
    for (const auto status : {Status::notRegistered, Status::requiresApproval, Status::notFound}) {
        m_item.current = status;

        setLaunchAtLogin(m_item, true);

        EXPECT_EQ(m_item.current, Status::enabled);
        EXPECT_EQ(m_item.registrations, ++calls);
    }
    EXPECT_EQ(m_item.unregistrations, 0);
}

TEST_F(LaunchAtLogin, TurningItOffUnregisters)
{
    m_item.current = Status::enabled;

    setLaunchAtLogin(m_item, false);

    EXPECT_EQ(m_item.current, Status::notRegistered);
    EXPECT_EQ(m_item.registrations, 0);
    EXPECT_THAT(m_log.entries(), IsEmpty());
}

TEST_F(LaunchAtLogin, FailureIsOneLogLine)
{
    m_item.error = "Operation not permitted";
    setLaunchAtLogin(m_item, true);
    m_item.current = Status::enabled;
    setLaunchAtLogin(m_item, false);

    const auto line = Pair(log::Level::error, "Clavo: lancement au démarrage impossible: "
                                              "Operation not permitted");
    EXPECT_THAT(m_log.entries(), ElementsAre(line, line));
}

} // namespace
} // namespace clavo
