// SPDX-License-Identifier: MIT
#include "desktop/user/ProgramFixture.h"

namespace clavo
{
namespace
{

class StoredSettings : public ProgramFixture
{
};

TEST_F(StoredSettings, HotKeyTwiceReturnsToTheFirstValueAndTheStoreFollows)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());

    strikeHotKey();
    EXPECT_TRUE(becomes(settingsFile(), "enabled", false));
    strikeHotKey();
    EXPECT_TRUE(becomes(settingsFile(), "enabled", true));
}

TEST_F(StoredSettings, AreAllThereAfterARestart)
{
    const json settings{{"enabled", true},      {"volume", 0.25},
                        {"packID", "nk-cream"}, {"keyUpSounds", false},
                        {"mouseSounds", true},  {"scrollSounds", true},
                        {"spatial", false},     {"written by a later version", {1, 2, 3}}};
    store(settings);
    auto expected = settings;
    expected["enabled"] = false;
    {
        RunningProgram program(user.path());
        ASSERT_TRUE(program.says("clavo: pack chargé : nk-cream"));
        ASSERT_TRUE(program.listens());
        strikeHotKey();
        ASSERT_TRUE(becomes(settingsFile(), "enabled", false));
        program.kill();
    }
    EXPECT_EQ(read(settingsFile()), expected);

    RunningProgram again(user.path());
    ASSERT_TRUE(again.listens());
    hands.strike(keyA);
    EXPECT_TRUE(again.says("clavo: touche appuyée, son: false")) << "it is still switched off";
    strikeHotKey();
    EXPECT_TRUE(becomes(settingsFile(), "enabled", true));
    EXPECT_EQ(read(settingsFile()), settings);
}

} // namespace
} // namespace clavo
