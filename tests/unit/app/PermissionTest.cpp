// SPDX-License-Identifier: MIT
#include "app/Permission.h"

#include "fakes/CollectedLog.h"
#include "fakes/FakePlatform.h"

#include <QPointer>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr double secondsAtStart = 1'750'075'200; // Of the wall clock, since 1970.

class PermissionTest : public testing::Test
{
protected:
    struct Question {
        QPointer<QObject> asker;
        std::function<void(bool)> receiver;
    };

    PermissionTest() { access.granted = false; }

    /// The permission of a program that has just started.
    Permission& permission()
    {
        if (!m_permission) {
            auto surroundings = platform.surroundings();
            m_permission.emplace(platform.services, m_input,
                                 Permission::Surroundings{
                                     .timer = surroundings.makeTimer(),
                                     .uptime = surroundings.uptime,
                                     .wallClock = surroundings.stats.wallClock,
                                     .askFreshProcess =
                                         [this](QObject* asker, auto receiver) {
                                             ++asked;
                                             questions.push_back({asker, std::move(receiver)});
                                         },
                                 });
            m_permission->start();
        }
        return *m_permission;
    }
    void end() { m_permission.reset(); }

    /// Answers the question that has waited longest.
    void answer(bool yes)
    {
        const auto question = std::move(questions.front());
        questions.erase(questions.begin());
        if (question.asker)
            question.receiver(yes);
    }

    /// Ten minutes of the program's life, after which nothing polls.
    void letTheWaitEnd()
    {
        permission();
        time.advance(601s);
        asked = 0;
        questions.clear();
    }

    CollectedLog logged;
    FakePlatform platform;
    FakeInputAccess& access = *platform.access;
    SimulatedTime& time = platform.time;
    std::vector<Question> questions; // Not yet answered.
    int asked = 0;

private:
    InputMonitor m_input{*platform.services.eventTap, *platform.services.secureInput,
                         *platform.services.screens, platform.surroundings().uptime};
    std::optional<Permission> m_permission;
};

TEST_F(PermissionTest, ListensWithIt)
{
    access.granted = true;

    EXPECT_TRUE(permission().isListening());
    EXPECT_FALSE(access.changed) << "nothing is watched";
    EXPECT_THAT(logged.lines(), ElementsAre("autorisation : true, écoute : true"));
}

TEST_F(PermissionTest, DoesNotListenWithoutIt)
{
    EXPECT_FALSE(permission().isListening());
    EXPECT_EQ(platform.tap->created, 0);
    EXPECT_THAT(logged.lines(), ElementsAre("autorisation : false, écoute : false"));
}

TEST_F(PermissionTest, ReportsATapThatRefuses)
{
    access.granted = true;
    platform.tap->refuses = true;

    EXPECT_FALSE(permission().isListening());
    EXPECT_THAT(logged.lines(), ElementsAre("autorisation : true, écoute : false"));
}

TEST_F(PermissionTest, IsNotRequestedWhenItIsThere)
{
    access.granted = true;
    permission();
    time.advance(60s);

    EXPECT_THAT(access.requests, IsEmpty());
    EXPECT_EQ(asked, 0);
    EXPECT_FALSE(permission().isWaiting());
}

TEST_F(PermissionTest, IsRequestedAtTheStartAndShownWhereItIsGranted)
{
    EXPECT_FALSE(permission().needsRelaunch());

    EXPECT_THAT(access.requests, ElementsAre(InputAccess::Occasion::start));
    EXPECT_EQ(access.settingsShown, 1);
    EXPECT_TRUE(permission().isWaiting());
}

TEST_F(PermissionTest, GrantedAtTheRequestNeedsNoSettings)
{
    access.granted = true;

    permission().request();

    EXPECT_THAT(access.requests, ElementsAre(InputAccess::Occasion::userRequest));
    EXPECT_EQ(access.settingsShown, 0);
}

TEST_F(PermissionTest, ReportsWhatKeepsTheProgramFromListening)
{
    const QSignalSpy changes(&permission(), &Permission::changed);

    access.obstacle = InputAccess::State::noKeyboard;
    access.changed();
    EXPECT_TRUE(permission().lacksKeyboard());
    EXPECT_FALSE(permission().needsLogin());

    access.obstacle = InputAccess::State::notInThisLogin;
    access.typed = "sudo one";
    permission().request();
    EXPECT_FALSE(permission().lacksKeyboard());
    EXPECT_TRUE(permission().needsLogin());
    EXPECT_EQ(permission().commands(), "") << "nothing is left to be granted";

    access.obstacle = InputAccess::State::refused;
    time.advance(2s); // A question.
    EXPECT_FALSE(permission().needsLogin());
    EXPECT_EQ(permission().commands(), "sudo one");
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(PermissionTest, LooksAtTheAccessWhenItMayHaveChangedAndNotWhenItIsRead)
{
    permission();
    access.typed = "sudo one";
    access.changed();
    const QSignalSpy changes(&permission(), &Permission::changed);
    const auto looks = access.looks;

    EXPECT_FALSE(permission().lacksKeyboard());
    EXPECT_FALSE(permission().needsLogin());
    EXPECT_EQ(permission().commands(), "sudo one");
    EXPECT_EQ(access.looks, looks);

    time.advance(2s);
    EXPECT_EQ(access.looks, looks + 1);
    EXPECT_EQ(changes.count(), 0) << "it has not changed";
}

TEST_F(PermissionTest, AFreshProcessIsAskedEveryTwoSecondsUntilItIsGranted)
{
    permission();
    time.advance(1999ms);
    EXPECT_EQ(asked, 0);
    time.advance(1ms);
    EXPECT_EQ(asked, 1);
    answer(false);
    time.advance(2s);
    EXPECT_EQ(asked, 2);

    answer(true);
    time.advance(60s);

    EXPECT_EQ(platform.relauncher->opened, 1);
    EXPECT_EQ(asked, 2);
    EXPECT_FALSE(permission().isWaiting());
}

TEST_F(PermissionTest, OneFreshProcessIsAskedAtATime)
{
    permission();
    time.advance(7s);
    EXPECT_EQ(asked, 1);

    answer(false);
    time.advance(1s);

    EXPECT_EQ(asked, 2);
}

TEST_F(PermissionTest, TheWaitEndsSilentlyAfterTenMinutes)
{
    permission();
    for (int tick = 0; tick < 299; ++tick) {
        time.advance(2s);
        answer(false);
    }
    EXPECT_EQ(asked, 299);

    time.advance(60s);

    EXPECT_EQ(asked, 299);
    EXPECT_EQ(platform.relauncher->opened, 0);
    EXPECT_FALSE(permission().isWaiting());
}

TEST_F(PermissionTest, AnAnswerAfterTheTenMinutesIsIgnored)
{
    permission();
    time.advance(601s);

    answer(true);

    EXPECT_EQ(platform.relauncher->opened, 0);
}

TEST_F(PermissionTest, AChangeThatGrantsItAfterTheTenMinutesRelaunchesTheProgram)
{
    letTheWaitEnd();

    access.granted = true;
    access.changed();
    access.changed();
    ASSERT_EQ(asked, 1);
    answer(true);

    EXPECT_EQ(platform.relauncher->opened, 1);
    EXPECT_FALSE(permission().isWaiting()) << "nothing polls";
}

TEST_F(PermissionTest, AChangeThatDoesNotGrantItStartsNoProcess)
{
    letTheWaitEnd();

    for (const auto obstacle : {InputAccess::State::noKeyboard, InputAccess::State::refused}) {
        access.obstacle = obstacle;
        access.changed();
    }

    EXPECT_EQ(asked, 0);
    EXPECT_FALSE(permission().lacksKeyboard());
}

TEST_F(PermissionTest, AnotherChangeIsNoticedAfterAFreshProcessSaidNo)
{
    letTheWaitEnd();
    access.granted = true;
    access.changed();
    answer(false);

    access.changed();
    answer(true);

    EXPECT_EQ(platform.relauncher->opened, 1);
}

TEST_F(PermissionTest, WithinTheTenMinutesAChangeLeavesTheQuestionToThePoll)
{
    permission();
    access.granted = true;
    access.changed();
    EXPECT_EQ(asked, 0);

    time.advance(2s);

    EXPECT_EQ(asked, 1);
}

TEST_F(PermissionTest, AChangeDuringTheLastQuestionIsNotMissed)
{
    permission();
    time.advance(599s); // The first question is still open.
    access.granted = true;
    access.changed();
    questions.clear();

    time.advance(1s);
    ASSERT_EQ(questions.size(), 1U);
    answer(true);

    EXPECT_EQ(platform.relauncher->opened, 1);
}

TEST_F(PermissionTest, TheWaitEndsAtOnceWhenTheProgramListens)
{
    access.granted = true;
    permission().request();
    EXPECT_TRUE(permission().isWaiting());

    time.advance(60s);

    EXPECT_EQ(asked, 0);
    EXPECT_FALSE(permission().isWaiting());
}

TEST_F(PermissionTest, AnAnswerToAnEarlierWaitIsIgnored)
{
    permission();
    time.advance(2s);
    permission().request();

    answer(true);
    EXPECT_EQ(platform.relauncher->opened, 0);
    EXPECT_TRUE(permission().isWaiting());
    time.advance(2s);
    answer(true);

    EXPECT_EQ(platform.relauncher->opened, 1);
}

TEST_F(PermissionTest, ASecondWaitDoesNotMakeTheFirstAskOn)
{
    permission();
    time.advance(1s);
    permission().request();
    time.advance(1s);
    EXPECT_EQ(asked, 0);

    time.advance(1s);

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(time.waiting(), 1U);
}

TEST_F(PermissionTest, AnAnswerAfterItsEndIsIgnored)
{
    permission();
    time.advance(2s);
    end();

    time.advance(2s);
    answer(true);

    EXPECT_EQ(asked, 1);
    EXPECT_EQ(platform.relauncher->opened, 0);
}

TEST_F(PermissionTest, RelaunchesTheProgramOnceItIsGranted)
{
    permission();
    time.advance(30s);

    answer(true);

    EXPECT_EQ(platform.relauncher->opened, 1);
    EXPECT_FALSE(permission().needsRelaunch());
    EXPECT_EQ(logged.lines().back(), "autorisation accordée : relance de Clavo");
    EXPECT_THAT(platform.defaults->written,
                ElementsAre(Pair("permissionRelaunch", DefaultsValue(secondsAtStart + 30))));
}

TEST_F(PermissionTest, LeavesASecondRelaunchWithinAMinuteToTheUser)
{
    platform.defaults->written = {{"permissionRelaunch", secondsAtStart - 58}};
    const QSignalSpy changes(&permission(), &Permission::changed);
    time.advance(2s);

    answer(true);

    EXPECT_TRUE(permission().needsRelaunch());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(platform.relauncher->opened, 0);
    EXPECT_THAT(platform.defaults->written,
                ElementsAre(Pair("permissionRelaunch", DefaultsValue(secondsAtStart - 58))));

    permission().relaunch();
    EXPECT_EQ(platform.relauncher->opened, 1);
}

} // namespace
} // namespace clavo
