// SPDX-License-Identifier: MIT
#pragma once

#include "app/LoginItem.h"

#include <gtest/gtest.h>

namespace clavo
{

/// What every login item promises. A Host has
///   LoginItem& item()    one that is not registered yet.
template <typename Host> class LoginItemContract : public testing::Test
{
protected:
    Host m_host;
};

TYPED_TEST_SUITE_P(LoginItemContract);

TYPED_TEST_P(LoginItemContract, RegisteringEnablesIt)
{
    auto& item = this->m_host.item();

    EXPECT_EQ(item.registerItem(), std::nullopt);

    EXPECT_EQ(item.status(), LoginItem::Status::enabled);
}

TYPED_TEST_P(LoginItemContract, RegisteringAgainChangesNothing)
{
    auto& item = this->m_host.item();
    EXPECT_EQ(item.registerItem(), std::nullopt);

    EXPECT_EQ(item.registerItem(), std::nullopt);

    EXPECT_EQ(item.status(), LoginItem::Status::enabled);
}

TYPED_TEST_P(LoginItemContract, UnregisteringDisablesIt)
{
    auto& item = this->m_host.item();
    EXPECT_EQ(item.registerItem(), std::nullopt);

    EXPECT_EQ(item.unregisterItem(), std::nullopt);

    EXPECT_NE(item.status(), LoginItem::Status::enabled);
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemContract, RegisteringEnablesIt, RegisteringAgainChangesNothing,
                            UnregisteringDisablesIt);

} // namespace clavo
