// SPDX-License-Identifier: MIT
#include "unit/app/AppStateFixture.h"
#include "unit/packs/PackFiles.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::Contains;
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

} // namespace
} // namespace clavo
