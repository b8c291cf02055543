// SPDX-License-Identifier: MIT
#include "AppStateFixture.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using Status = LoginItem::Status;

class LaunchAtLogin : public AppStateFixture
{
protected:
    LaunchAtLogin()
    {
        state();
        logged.clear();
    }
};

TEST_F(LaunchAtLogin, RequestThatIsFulfilledAlreadyCallsNothing)
{
    loginItem->current = Status::enabled;
    state().setLaunchAtLogin(true);
    for (const auto status : {Status::notRegistered, Status::requiresApproval, Status::notFound}) {
        loginItem->current = status;
        state().setLaunchAtLogin(false);
    }

    EXPECT_EQ(loginItem->registrations, 0);
    EXPECT_EQ(loginItem->unregistrations, 0);
}

TEST_F(LaunchAtLogin, TurnedOnRegistersWhateverTheOtherStatusIs)
{
    int calls = 0;
    for (const auto status : {Status::notRegistered, Status::requiresApproval, Status::notFound}) {
        loginItem->current = status;

        state().setLaunchAtLogin(true);

        EXPECT_EQ(loginItem->current, Status::enabled);
        EXPECT_EQ(loginItem->registrations, ++calls);
    }
    EXPECT_EQ(loginItem->unregistrations, 0);
}

TEST_F(LaunchAtLogin, TurnedOffUnregisters)
{
    loginItem->current = Status::enabled;

    state().setLaunchAtLogin(false);

    EXPECT_EQ(loginItem->current, Status::notRegistered);
    EXPECT_EQ(loginItem->registrations, 0);
    EXPECT_THAT(logged.lines(), IsEmpty());
}

TEST_F(LaunchAtLogin, FailureIsOneLogLine)
{
    loginItem->error = "Operation not permitted";
    state().setLaunchAtLogin(true);
    loginItem->current = Status::enabled;
    state().setLaunchAtLogin(false);

    const auto* const line = "Clavo: lancement au démarrage impossible: Operation not permitted";
    EXPECT_THAT(logged.lines(), ElementsAre(line, line));
}

} // namespace
} // namespace clavo
