// SPDX-License-Identifier: MIT
#include "unit/app/AppStateFixture.h"
#include "unit/packs/PackFiles.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::Contains;
using testing::Key;
using testing::Not;
using testing::Pair;

class AppStatePacksTest : public AppStateFixture
{
protected:
    AppStatePacksTest()
    {
        writePack("cherrymx-red-abs", {{30, 0.5F}});
        writePack("nk-cream", {{30, 0.25F}});
    }

    /// A pack that takes longer to load than the main thread may be busy, if each step takes 1 ms.
    void writeSlowPack()
    {
        Levels levels;
        for (int scancode = 0; scancode < 60; ++scancode)
            levels[scancode] = 0.125F;
        writePack("slow", levels);
        platform.workPerLook = 1ms;
    }

    void expectLoaded(const std::string& id)
    {
        EXPECT_EQ(logged.lines().back(), "pack chargé : " + id);
        EXPECT_THAT(defaults->written, Contains(Pair("packID", DefaultsValue(id))));
    }

    /// The first value of the key bank's A.
    [[nodiscard]] float level()
    {
        return state().sound().keyBank().press.at(30).front()->samples().front();
    }

    /// A pack of the longest sounds that load: three files, each under dozens of names.
    void writeHugePack() const
    {
        const auto folder = builtInPacks() / "huge";
        std::string press;
        for (int scancode = 0; scancode < 120; ++scancode) {
            std::string name;
            for (int step = 0; step < scancode; ++step)
                name += "./";
            press += fmt::format("{}\"{}\": \"{}{}\"", scancode == 0 ? "" : ", ", scancode, name,
                                 "abc"[scancode / 40]);
        }
        writeFile(folder / "pack.json", manifestText(press, "", "huge", "huge"));
        writeLongSound(folder / "sounds" / "a.wav");
        for (const auto* const name : {"b.wav", "c.wav"})
            std::filesystem::copy_file(folder / "sounds" / "a.wav", folder / "sounds" / name);
    }
};

TEST_F(AppStatePacksTest, StartsWithAPackThatIsTooLargeAndSaysWhatIsLeftOut)
{
    writeHugePack();
    defaults->written["packID"] = std::string("huge");

    state();

    EXPECT_EQ(state().sound().keyBank().press.size(), 80U);
    EXPECT_THAT(logged.lines(),
                Contains("pack huge : 40 sons laissés de côté, il n'y a de place que "
                         "pour 256 Mio"));
    EXPECT_THAT(logged.lines(), Contains("pack chargé : huge"));
}

TEST_F(AppStatePacksTest, SelectionIsStoredOnceThePackIsLoaded)
{
    state();
    std::vector<std::string> storedWhileLoading;
    QObject::connect(&state(), &AppState::selectedPackChanged, [&] {
        for (const auto& [key, value] : defaults->written)
            storedWhileLoading.push_back(key);
    });

    state().setPackID("nk-cream");

    EXPECT_THAT(storedWhileLoading, Not(Contains("packID")));
    EXPECT_THAT(defaults->written,
                Contains(Pair("packID", DefaultsValue(std::string("nk-cream")))));
}

TEST_F(AppStatePacksTest, StrangeIDIsSelectedAsWrittenAndShownWithoutControlCharacters)
{
    writeFile(customPacks() / "strange" / "pack.json", manifestText("", "", "a\\u001b[2J"));
    state();

    state().setPackID("custom:a\x1b[2J");

    EXPECT_EQ(state().selectedPack()->id, "custom:a\x1b[2J");
    EXPECT_EQ(logged.lines().back(), "pack chargé : custom:a\ufffd[2J");
    EXPECT_EQ(state().status().packID, "custom:a\ufffd[2J");
}

TEST_F(AppStatePacksTest, OrdinaryPackIsLoadedAtOnce)
{
    platform.workPerLook = 1ms;
    state();

    state().setPackID("nk-cream");

    expectLoaded("nk-cream");
    EXPECT_EQ(level(), 0.25F);
}

TEST_F(AppStatePacksTest, KeysSoundWithThePreviousPackWhileASlowOneLoads)
{
    writeSlowPack();
    state();
    const QSignalSpy chosen(&state(), &AppState::packIDChanged);

    state().setPackID("slow");
    press(0);

    EXPECT_EQ(state().packID(), "slow");
    EXPECT_EQ(chosen.count(), 1);
    EXPECT_EQ(level(), 0.5F);
    EXPECT_EQ(state().sound().nextPlayer(), 1);
    EXPECT_EQ(state().stats()->total(), 1);
    EXPECT_THAT(defaults->written, Not(Contains(Key("packID"))));

    time.advance(0ms);
    EXPECT_EQ(level(), 0.125F);
    EXPECT_EQ(chosen.count(), 1);
    expectLoaded("slow");
}

TEST_F(AppStatePacksTest, LoadingKeepsTheMainThreadBusyForAShortTimeOnly)
{
    writeSlowPack();
    state();

    auto before = platform.worked;
    state().setPackID("slow");
    EXPECT_LE(platform.worked - before, 105ms);

    int slices = 0;
    for (; time.untilNext() == 0ms; ++slices) {
        before = platform.worked;
        time.makeNextCall();
        EXPECT_LE(platform.worked - before, 25ms);
    }
    EXPECT_GT(slices, 10);
    expectLoaded("slow");
}

TEST_F(AppStatePacksTest, ListensWhileThePackOfTheStartLoads)
{
    writeSlowPack();
    defaults->written["packID"] = std::string("slow");

    EXPECT_TRUE(state().hasPermission());
    press(0);
    EXPECT_EQ(state().stats()->total(), 1);
    EXPECT_EQ(state().sound().nextPlayer(), 0);

    time.advance(0ms);
    press(0);
    EXPECT_EQ(state().sound().nextPlayer(), 1);
}

TEST_F(AppStatePacksTest, AnotherChoiceReplacesThePackThatIsLoading)
{
    writeSlowPack();
    state();

    state().setPackID("slow");
    state().setPackID("nk-cream");
    time.advance(0ms);

    expectLoaded("nk-cream");
    EXPECT_EQ(level(), 0.25F);
    EXPECT_THAT(logged.lines(), Not(Contains("pack chargé : slow")));
}

TEST_F(AppStatePacksTest, ReloadLoadsAndStoresThePackThatIsLoading)
{
    writeSlowPack();
    state();

    state().setPackID("slow");
    state().reloadPacks();
    EXPECT_THAT(defaults->written, Not(Contains(Key("packID"))));
    time.advance(0ms);

    expectLoaded("slow");
}

TEST_F(AppStatePacksTest, PreviewOfASlowPackKeepsTheMainThreadBusyForAShortTimeOnly)
{
    writeSlowPack();
    state();
    platform.workPerLook = 10ms;

    const auto before = platform.worked;
    state().preview("slow");
    EXPECT_LE(platform.worked - before, 120ms);
    EXPECT_EQ(state().sound().nextPlayer(), 0);

    time.advance(2s);
    EXPECT_EQ(state().sound().nextPlayer(), 11);
    EXPECT_EQ(level(), 0.5F);
}

} // namespace
} // namespace clavo
