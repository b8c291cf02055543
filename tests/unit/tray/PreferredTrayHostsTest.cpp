// SPDX-License-Identifier: MIT
#include "tray/PreferredTrayHosts.h"

#include "fakes/FakeTrayHosts.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class PreferredTrayHostsTest : public testing::Test
{
protected:
    PreferredTrayHostsTest()
    {
        auto ofFirst = std::make_unique<FakeTrayHosts>();
        auto ofSecond = std::make_unique<FakeTrayHosts>();
        first = ofFirst.get();
        second = ofSecond.get();
        hosts = makePreferredTrayHosts(std::move(ofFirst), std::move(ofSecond));
        hosts->watch([this](TrayHost host) { told.push_back(host); });
    }

    FakeTrayHosts* first = nullptr;
    FakeTrayHosts* second = nullptr;
    std::unique_ptr<TrayHosts> hosts;
    std::vector<TrayHost> told;
};

TEST_F(PreferredTrayHostsTest, TheSecondKindIsNotAskedForWhereTheFirstIsThere)
{
    first->turnTo(TrayHost::statusNotifier);

    EXPECT_THAT(told, ElementsAre(TrayHost::statusNotifier));
    EXPECT_FALSE(second->isWatched());
}

TEST_F(PreferredTrayHostsTest, NothingIsToldBeforeBothHaveAnswered)
{
    first->turnTo(TrayHost::none);

    EXPECT_THAT(told, IsEmpty());
    EXPECT_TRUE(second->isWatched());
}

TEST_F(PreferredTrayHostsTest, TheSecondKindStandsInForTheFirst)
{
    first->turnTo(TrayHost::none);
    second->turnTo(TrayHost::xembed);
    second->turnTo(TrayHost::none);

    EXPECT_THAT(told, ElementsAre(TrayHost::xembed, TrayHost::none));
}

TEST_F(PreferredTrayHostsTest, TheFirstKindTakesOverWhenItComes)
{
    first->turnTo(TrayHost::none);
    second->turnTo(TrayHost::xembed);

    first->turnTo(TrayHost::statusNotifier);

    EXPECT_THAT(told, ElementsAre(TrayHost::xembed, TrayHost::statusNotifier));
}

TEST_F(PreferredTrayHostsTest, TheSecondKindsChangesAreNotToldWhileTheFirstIsThere)
{
    first->turnTo(TrayHost::none);
    second->turnTo(TrayHost::none);
    first->turnTo(TrayHost::statusNotifier);
    told.clear();

    second->turnTo(TrayHost::xembed);

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(PreferredTrayHostsTest, WhenTheFirstKindVanishesTheSecondCountsAsItIsByThen)
{
    first->turnTo(TrayHost::none);
    second->turnTo(TrayHost::none);
    first->turnTo(TrayHost::statusNotifier);
    second->turnTo(TrayHost::xembed);
    told.clear();

    first->turnTo(TrayHost::none);

    EXPECT_THAT(told, ElementsAre(TrayHost::xembed));
}

TEST_F(PreferredTrayHostsTest, WhenTheFirstKindVanishesAnUnaskedSecondIsAsked)
{
    first->turnTo(TrayHost::statusNotifier);
    first->turnTo(TrayHost::none);
    second->turnTo(TrayHost::none);

    EXPECT_THAT(told, ElementsAre(TrayHost::statusNotifier, TrayHost::none));
}

TEST_F(PreferredTrayHostsTest, AWindowIsDockedInTheKindThatIsThere)
{
    first->turnTo(TrayHost::none);
    second->turnTo(TrayHost::xembed);

    hosts->dock(7);

    EXPECT_THAT(second->docked, ElementsAre(7));
    EXPECT_THAT(first->docked, IsEmpty());
}

TEST_F(PreferredTrayHostsTest, TheTrayLooksAsTheKindThatIsThereTells)
{
    second->tray.showsThrough = true;
    first->turnTo(TrayHost::none);
    second->turnTo(TrayHost::xembed);

    EXPECT_TRUE(hosts->appearance().showsThrough);
}

} // namespace
} // namespace clavo
