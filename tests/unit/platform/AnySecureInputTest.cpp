// SPDX-License-Identifier: MIT
#include "platform/linux/AnySecureInput.h"

#include <gtest/gtest.h>

namespace clavo
{
namespace
{

class Watcher final : public SecureInput
{
public:
    explicit Watcher(const SecureReason& reason) : m_reason(reason) {}

    [[nodiscard]] SecureReason reason() const override { return m_reason; }

private:
    const SecureReason& m_reason;
};

class AnySecureInputTest : public testing::Test
{
protected:
    [[nodiscard]] AnySecureInput::Watchers watchers() const
    {
        AnySecureInput::Watchers made;
        made.push_back(std::make_unique<Watcher>(first));
        made.push_back(std::make_unique<Watcher>(second));
        return made;
    }

    SecureReason first = SecureReason::none;
    SecureReason second = SecureReason::none;
    AnySecureInput secureInput{watchers()};
};

TEST_F(AnySecureInputTest, IsOffWhileNoWatcherHasAReason)
{
    EXPECT_EQ(secureInput.reason(), SecureReason::none);
    EXPECT_FALSE(secureInput.isEnabled());
}

TEST_F(AnySecureInputTest, IsOnWhileAnyWatcherHasOne)
{
    second = SecureReason::passwordField;
    EXPECT_EQ(secureInput.reason(), SecureReason::passwordField);
    EXPECT_TRUE(secureInput.isEnabled());

    first = SecureReason::lockedSession;
    EXPECT_EQ(secureInput.reason(), SecureReason::lockedSession);

    first = second = SecureReason::none;
    EXPECT_FALSE(secureInput.isEnabled());
}

TEST(AnySecureInput, WithoutWatchersIsOff)
{
    EXPECT_FALSE(AnySecureInput({}).isEnabled());
}

} // namespace
} // namespace clavo
