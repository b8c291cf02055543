// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiSecureInput.h"

#include "desktop/atspi/AccessibleProgram.h"
#include "eventloop/EventLoop.h"
#include "fakes/SimulatedTime.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <vector>

#include <unistd.h>

namespace clavo
{
namespace
{

using testing::Optional;
using testing::UnorderedElementsAre;

class AtspiSecureInputTest : public testing::Test
{
protected:
    AtspiSecureInputTest()
    {
        program.add("/name", AccessibleProgram::text, "/form");
        program.add("/password", AccessibleProgram::passwordText, "/form");
        program.add("/inside", AccessibleProgram::text, "/password");
        program.add("/form", 85);
        program.add("/alone", AccessibleProgram::text);
    }

    void watch(atspi::FocusReceiver receiver = {})
    {
        secureInput = makeAtspiSecureInput(time.makeTimer(), std::move(receiver));
    }
    void listen()
    {
        bus.emplace();
        watch();
        ASSERT_TRUE(EventLoop::until([this] { return bus->registered().size() >= 2; }));
    }
    [[nodiscard]] bool becomes(SecureReason reason) const
    {
        return EventLoop::until([&] { return secureInput->reason() == reason; });
    }
    /// True once a change of focus has been answered.
    [[nodiscard]] bool settles() const
    {
        return EventLoop::until([this] { return program.questions > 0; }) &&
               EventLoop::until([this] { return !time.untilNext(); });
    }

    EventLoop loop;
    std::optional<AccessibilityBus> bus;
    AccessibleProgram program;
    SimulatedTime time;
    std::unique_ptr<SecureInput> secureInput;
};

TEST_F(AtspiSecureInputTest, AsksForChangesOfFocusAndNothingElse)
{
    listen();

    EXPECT_THAT(bus->registered(),
                UnorderedElementsAre("object:state-changed:focused", "window:deactivate"));
    EXPECT_EQ(secureInput->reason(), SecureReason::none);
}

TEST_F(AtspiSecureInputTest, IsOnWhileAPasswordFieldHasTheKeys)
{
    listen();

    program.giveKeysTo("/password");
    ASSERT_TRUE(becomes(SecureReason::passwordField));
    ASSERT_TRUE(settles());
    EXPECT_EQ(secureInput->reason(), SecureReason::passwordField);

    program.takeKeysFrom("/password");
    EXPECT_TRUE(becomes(SecureReason::none));
}

TEST_F(AtspiSecureInputTest, IsOnWhileATextInsideAPasswordFieldHasTheKeys)
{
    listen();

    program.giveKeysTo("/inside");

    ASSERT_TRUE(becomes(SecureReason::passwordField));
    ASSERT_TRUE(settles());
    EXPECT_EQ(secureInput->reason(), SecureReason::passwordField);
}

TEST_F(AtspiSecureInputTest, IsOffOnceAnythingElseHasTheKeys)
{
    listen();
    for (const auto* element : {"/name", "/alone"}) {
        program.giveKeysTo("/password");
        ASSERT_TRUE(becomes(SecureReason::passwordField));

        program.giveKeysTo(element);
        program.takeKeysFrom("/password"); // Comes late.

        EXPECT_TRUE(becomes(SecureReason::none)) << element;
    }
}

TEST_F(AtspiSecureInputTest, AnotherElementThatLosesFocusChangesNothing)
{
    listen();
    program.giveKeysTo("/password");
    ASSERT_TRUE(becomes(SecureReason::passwordField));
    ASSERT_TRUE(settles());

    program.takeKeysFrom("/name");
    program.isFocused = true;
    program.deactivateWindow(); // Is seen after it, and asked about.

    ASSERT_TRUE(EventLoop::until([this] { return program.questions == 2; }));
    EXPECT_EQ(secureInput->reason(), SecureReason::passwordField);
}

TEST_F(AtspiSecureInputTest, AProgramThatHangsKeepsInputSecretForAMomentOnly)
{
    listen();
    program.hang();

    program.giveKeysTo("/name");
    ASSERT_TRUE(becomes(SecureReason::passwordField));
    EXPECT_THAT(time.untilNext(), Optional(atspi::patience));

    time.elapse();
    EXPECT_EQ(secureInput->reason(), SecureReason::none);
}

TEST_F(AtspiSecureInputTest, AnAnswerThatComesAfterTheNextChangeIsDropped)
{
    listen();
    program.hang();
    program.giveKeysTo("/password");
    program.giveKeysTo("/name");
    ASSERT_TRUE(EventLoop::until([this] { return program.questions == 2; }));

    program.recover();

    EXPECT_TRUE(becomes(SecureReason::none));
}

TEST_F(AtspiSecureInputTest, AProgramThatEndsTakesItsPasswordFieldAlong)
{
    listen();
    {
        AccessibleProgram prompt;
        prompt.add("/password", AccessibleProgram::passwordText);
        prompt.giveKeysTo("/password");
        ASSERT_TRUE(becomes(SecureReason::passwordField));
        ASSERT_TRUE(EventLoop::until([this] { return !time.untilNext(); }));
    }

    EXPECT_TRUE(becomes(SecureReason::none));
}

TEST_F(AtspiSecureInputTest, AFieldThatLosesFocusWithItsWindowIsAskedWhetherItHasIt)
{
    listen();
    program.giveKeysTo("/password");
    ASSERT_TRUE(settles());
    ASSERT_EQ(secureInput->reason(), SecureReason::passwordField);

    program.isFocused = true;
    program.deactivateWindow();
    ASSERT_TRUE(EventLoop::until([this] { return program.questions == 2; }));
    EXPECT_EQ(secureInput->reason(), SecureReason::passwordField) << "another of its windows";

    program.isFocused = false;
    program.deactivateWindow();
    EXPECT_TRUE(becomes(SecureReason::none));
}

TEST_F(AtspiSecureInputTest, TheBusMayComeLaterAndComeAgain)
{
    watch();
    EXPECT_EQ(secureInput->reason(), SecureReason::none);

    for (int round = 0; round < 2; ++round) {
        bus.emplace();
        ASSERT_TRUE(EventLoop::until([this] { return bus->registered().size() >= 2; })) << round;
        program.giveKeysTo("/password");
        ASSERT_TRUE(becomes(SecureReason::passwordField));
        program.giveKeysTo("/name");
        ASSERT_TRUE(becomes(SecureReason::none));
        bus.reset();
    }
}

TEST_F(AtspiSecureInputTest, ReportsWhichProcessHasFocus)
{
    std::vector<pid_t> processes;
    bus.emplace();
    watch([&](pid_t process) { processes.push_back(process); });
    ASSERT_TRUE(EventLoop::until([this] { return bus->registered().size() >= 2; }));

    program.giveKeysTo("/name");
    program.giveKeysTo("/password");
    ASSERT_TRUE(settles());
    ASSERT_TRUE(EventLoop::until([&] { return processes.size() == 1; }));
    program.takeKeysFrom("/password");
    AccessibleProgram other;
    other.add("/name", AccessibleProgram::text);
    other.giveKeysTo("/name");

    EXPECT_TRUE(EventLoop::until([&] { return processes.size() == 3; }));
    EXPECT_THAT(processes, testing::ElementsAre(getpid(), 0, getpid()));
}

} // namespace
} // namespace clavo
