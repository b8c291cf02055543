// SPDX-License-Identifier: MIT
#include "log/Log.h"
#include "fakes/CollectedLog.h"
#include "log/Fatal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::Pair;

class LogTest : public testing::Test
{
protected:
    CollectedLog logged;
};

/// Counts how often it is written out.
struct Costly {
    int* formatted;
};

TEST_F(LogTest, ArgumentsAreShown)
{
    log::notice("autorisation : {}, écoute : {}", true, false);

    EXPECT_THAT(logged.entries(),
                ElementsAre(Pair(log::Level::notice, "autorisation : true, écoute : false")));
}

TEST_F(LogTest, PrivateArgumentIsHidden)
{
    log::error("aucun pack trouvé ({})", log::Private{"my pack"});

    EXPECT_THAT(logged.entries(),
                ElementsAre(Pair(log::Level::error, "aucun pack trouvé (<private>)")));
}

} // namespace
} // namespace clavo

template <> struct fmt::formatter<clavo::Costly> {
    static constexpr auto parse(fmt::format_parse_context& context) { return context.begin(); }
    static auto format(const clavo::Costly& costly, fmt::format_context& context)
    {
        ++*costly.formatted;
        return context.out();
    }
};

namespace clavo
{
namespace
{

TEST_F(LogTest, DiscardedLineIsNotEvenFormatted)
{
    int formatted = 0;

    log::debug("touche {}", Costly{&formatted});

    EXPECT_EQ(formatted, 0);
    EXPECT_TRUE(logged.lines().empty());
}

TEST_F(LogTest, DebugLineIsKeptOnRequest)
{
    log::setThreshold(log::Level::debug);
    int formatted = 0;

    log::debug("touche {}", Costly{&formatted});

    EXPECT_EQ(formatted, 1);
    EXPECT_THAT(logged.entries(), ElementsAre(Pair(log::Level::debug, "touche ")));
}

TEST(StandardError, MayBeAPipeWithoutAReader)
{
    const auto logInVain = [] {
        std::array<int, 2> ends{};
        std::signal(SIGPIPE, SIG_IGN);
        if (::pipe(ends.data()) != 0 || ::dup2(ends[1], STDERR_FILENO) < 0)
            return EXIT_FAILURE;
        ::close(ends[0]);
        log::writeToStandardError(log::Level::notice, "a line");
        return EXIT_SUCCESS;
    };
    EXPECT_EXIT(std::exit(logInVain()), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST(Fatal, EndsTheProgramWithItsMessage)
{
    EXPECT_DEATH(fatal("this cannot be"), "fatal error: this cannot be");
}

} // namespace
} // namespace clavo
