// SPDX-License-Identifier: MIT
#include "input/SecureInput.h"

#include <gtest/gtest.h>

#include <utility>

namespace clavo
{
namespace
{

class Watcher final : public ObservableSecureInput
{
public:
    using ObservableSecureInput::setReason;
};

class CombinedSecureInputTest : public testing::Test
{
protected:
    CombinedSecureInputTest()
    {
        second->setReason(SecureReason::passwordPrompt); // Since before anybody listened.
        sources.emplace_back(first);
        sources.emplace_back(second);
    }

    Watcher* first = new Watcher;
    Watcher* second = new Watcher;
    CombinedSecureInput::Sources sources;
};

TEST_F(CombinedSecureInputTest, IsOffWhileNoWatcherHasAReason)
{
    second->setReason(SecureReason::none);
    const CombinedSecureInput secureInput(std::move(sources));

    EXPECT_EQ(secureInput.reason(), SecureReason::none);
    EXPECT_FALSE(secureInput.isEnabled());
}

TEST_F(CombinedSecureInputTest, IsOnWhileAnyWatcherHasOne)
{
    const CombinedSecureInput secureInput(std::move(sources));
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

TEST(ObservableSecureInput, TellsChangesAndNothingElse)
{
    Watcher watcher;
    int changes = 0;
    watcher.watch([&] { ++changes; });

    watcher.setReason(SecureReason::none);
    EXPECT_EQ(changes, 0);
    watcher.setReason(SecureReason::passwordField);
    watcher.setReason(SecureReason::passwordField);
    EXPECT_EQ(changes, 1);
    watcher.setReason(SecureReason::lockedSession);
    EXPECT_EQ(changes, 2);
}

TEST(CombinedSecureInput, WithoutWatchersIsOff)
{
    EXPECT_FALSE(CombinedSecureInput({}).isEnabled());
}

} // namespace
} // namespace clavo
