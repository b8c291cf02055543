// SPDX-License-Identifier: MIT
#include "platform/linux/AnySecureInput.h"

#include <gtest/gtest.h>

#include <utility>

namespace clavo
{
namespace
{

class Watcher final : public SecureWatcher
{
public:
    using SecureWatcher::setReason;
};

class AnySecureInputTest : public testing::Test
{
protected:
    AnySecureInputTest()
    {
        second->setReason(SecureReason::passwordPrompt); // Since before anybody listened.
        watchers.emplace_back(first);
        watchers.emplace_back(second);
    }

    Watcher* first = new Watcher;
    Watcher* second = new Watcher;
    AnySecureInput::Watchers watchers;
};

TEST_F(AnySecureInputTest, IsOffWhileNoWatcherHasAReason)
{
    second->setReason(SecureReason::none);
    const AnySecureInput secureInput(std::move(watchers));

    EXPECT_EQ(secureInput.reason(), SecureReason::none);
    EXPECT_FALSE(secureInput.isEnabled());
}

TEST_F(AnySecureInputTest, IsOnWhileAnyWatcherHasOne)
{
    const AnySecureInput secureInput(std::move(watchers));
    EXPECT_EQ(secureInput.reason(), SecureReason::passwordPrompt);

    second->setReason(SecureReason::passwordField);
    EXPECT_EQ(secureInput.reason(), SecureReason::passwordField);
    EXPECT_TRUE(secureInput.isEnabled());

    first->setReason(SecureReason::lockedSession);
    EXPECT_EQ(secureInput.reason(), SecureReason::lockedSession);

    first->setReason(SecureReason::none);
    EXPECT_EQ(secureInput.reason(), SecureReason::passwordField);
    second->setReason(SecureReason::none);
    EXPECT_FALSE(secureInput.isEnabled());
}

TEST(SecureWatcher, TellsChangesAndNothingElse)
{
    Watcher watcher;
    int changes = 0;
    watcher.changed = [&] { ++changes; };

    watcher.setReason(SecureReason::none);
    EXPECT_EQ(changes, 0);
    watcher.setReason(SecureReason::passwordField);
    watcher.setReason(SecureReason::passwordField);
    EXPECT_EQ(changes, 1);
    watcher.setReason(SecureReason::lockedSession);
    EXPECT_EQ(changes, 2);
}

TEST(AnySecureInput, WithoutWatchersIsOff)
{
    EXPECT_FALSE(AnySecureInput({}).isEnabled());
}

} // namespace
} // namespace clavo
