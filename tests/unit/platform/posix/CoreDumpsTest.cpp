// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/resource.h>

namespace clavo
{
namespace
{

class CoreDumps : public testing::Test
{
protected:
    CoreDumps() { ::getrlimit(RLIMIT_CORE, &m_before); }
    ~CoreDumps() override { ::setrlimit(RLIMIT_CORE, &m_before); }

    [[nodiscard]] const rlimit& before() const { return m_before; }

private:
    rlimit m_before = {};
};

TEST_F(CoreDumps, ArePreventedForThisProcessAlone)
{
    const rlimit most{.rlim_cur = before().rlim_max, .rlim_max = before().rlim_max};
    ::setrlimit(RLIMIT_CORE, &most);

    preventCoreDumps();

    rlimit limit = {};
    ASSERT_EQ(::getrlimit(RLIMIT_CORE, &limit), 0);
    EXPECT_EQ(limit.rlim_cur, 0U);
    EXPECT_EQ(limit.rlim_max, before().rlim_max);
}

TEST_F(CoreDumps, ArePreventedWithoutHidingTheProcessFromThePortal)
{
    preventCoreDumps();

    EXPECT_EQ(::prctl(PR_GET_DUMPABLE), 1);
}

} // namespace
} // namespace clavo
