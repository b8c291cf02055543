// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsFixture.h"

#include <QClipboard>

namespace clavo
{
namespace
{

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class GeneralTab : public SettingsFixture
{
protected:
    void openTab() { open(Tab::general); }
};

TEST_F(GeneralTab, HasItsSectionsInOrder)
{
    openTab();

    Texts inOrder;
    for (const auto& text : allTexts()) {
        if (text == "Open Clavo at login" || text == "Turn on / off from anywhere" ||
            text == "⇧⌘K" || text == "Language" || text == "Permission" ||
            text == "Input Monitoring" || text == "Custom packs")
            inOrder.push_back(text);
    }
    EXPECT_EQ(inOrder,
              Texts({"Open Clavo at login", "Turn on / off from anywhere", "⇧⌘K", "Language",
                     "Language", "Permission", "Input Monitoring", "Custom packs"}));
}

TEST_F(GeneralTab, HasItsExactTexts)
{
    openTab();

    EXPECT_THAT(allTexts(),
                AllOf(Contains("Read-only: Clavo knows a key moved, never which one you type. It "
                               "stays silent in password fields."),
                      Contains("Drop one folder per pack containing pack.json and sounds/*.wav. A "
                               "Mechvibes pack can be converted with "
                               "scripts/import_mechvibes.py.")));
}

TEST_F(GeneralTab, TheSwitchRegistersTheLoginItem)
{
    openTab();
    EXPECT_FALSE(item("launchAtLogin").property("checked").toBool());

    click(item("launchAtLogin"));

    EXPECT_TRUE(state().launchAtLogin());
    EXPECT_TRUE(item("launchAtLogin").property("checked").toBool());
}

TEST_F(GeneralTab, TheSwitchFollowsTheState)
{
    openTab();

    state().setLaunchAtLogin(true);

    EXPECT_TRUE(item("launchAtLogin").property("checked").toBool());
}

TEST_F(GeneralTab, ListsTheLanguagesByTheirOwnNames)
{
    openTab();

    auto& picker = item("language");
    EXPECT_EQ(picker.property("count").toInt(), 4);
    EXPECT_EQ(picker.property("model").toStringList(),
              QStringList({"System", "English", "Français", "Deutsch"}));
    EXPECT_EQ(picker.property("displayText").toString(), "System");
}

TEST_F(GeneralTab, ChoosingALanguageStoresIt)
{
    openTab();
    auto& picker = item("language");
    picker.forceActiveFocus();

    press(Qt::Key_Down); // English
    press(Qt::Key_Down);

    EXPECT_EQ(defaults->written["appLanguage"], DefaultsValue("fr"));
    EXPECT_EQ(picker.property("displayText").toString(), "Français");
}

TEST_F(GeneralTab, AnotherLanguageOffersARestartUntilItIsTakenBack)
{
    openTab();
    const std::string notice = "Restart Clavo to apply the language.";
    EXPECT_THAT(allTexts(), Not(Contains(notice)));
    EXPECT_FALSE(hasControl("Restart now"));

    language().setLanguage(AppLanguage::de);
    EXPECT_THAT(allTexts(), Contains(notice));
    EXPECT_TRUE(hasControl("Restart now"));

    language().setLanguage(AppLanguage::system);
    EXPECT_THAT(allTexts(), Not(Contains(notice)));
    EXPECT_FALSE(hasControl("Restart now"));
}

TEST_F(GeneralTab, TheOfferIsStillThereWhenTheWindowIsOpenedAgain)
{
    openTab();
    language().setLanguage(AppLanguage::de);

    settings().close();
    settle();
    openTab();

    EXPECT_THAT(allTexts(), Contains("Restart Clavo to apply the language."));
}

TEST_F(GeneralTab, TheOfferedRestartRelaunches)
{
    openTab();
    language().setLanguage(AppLanguage::de);
    settle();

    click(control("Restart now"));

    EXPECT_EQ(relauncher->opened, 1);
}

TEST_F(GeneralTab, AGrantedPermissionIsSaidWithoutButtons)
{
    openTab();

    EXPECT_THAT(allTexts(), Contains("Granted"));
    EXPECT_FALSE(visibleItems([](const auto& each) {
                     return each.property("name") == "checkmark.seal.fill";
                 }).empty());
    EXPECT_FALSE(hasControl("Grant…"));
    EXPECT_FALSE(hasControl("Restart now"));
}

TEST_F(GeneralTab, AMissingPermissionIsAskedFor)
{
    access->granted = false;
    openTab();
    const auto before = access->requests.size();

    EXPECT_THAT(allTexts(), Not(Contains("Granted")));
    EXPECT_FALSE(hasControl("Restart now"));
    click(control("Grant…"));

    EXPECT_EQ(access->requests.size(), before + 1);
}

TEST_F(GeneralTab, OffersTheRestartThatThePermissionNeeds)
{
    needRelaunch();
    openTab();

    EXPECT_TRUE(hasControl("Grant…"));
    click(control("Restart now"));

    EXPECT_EQ(relauncher->opened, 1);
}

TEST_F(GeneralTab, SaysWhatKeepsItFromListening)
{
    access->granted = false;
    openTab();
    EXPECT_FALSE(isShown("permissionAdvice"));
    const auto said = [this](InputAccess::State state) {
        access->obstacle = state;
        access->changed();
        return text("permissionAdvice");
    };

    EXPECT_EQ(said(InputAccess::State::noKeyboard),
              "There is no keyboard to listen to: Clavo restarts by itself once there is one.");
    EXPECT_EQ(said(InputAccess::State::notInThisLogin),
              "The permission is granted and counts from your next login.");
    EXPECT_FALSE(hasControl("Copy"));
}

TEST_F(GeneralTab, TheCommandsThatGrantThePermissionCanBeCopied)
{
    access->granted = false;
    openTab();
    access->typed = "sudo one\nsudo two";
    access->changed();
    settle();
    EXPECT_EQ(text("permissionCommands"), "sudo one\nsudo two");

    click(control("Copy"));

    EXPECT_EQ(QGuiApplication::clipboard()->text(), "sudo one\nsudo two");
}

TEST_F(GeneralTab, OpensThePacksFolderWhichIsThereThen)
{
    openTab();

    click(control("Open packs folder"));

    EXPECT_THAT(platform.fileManager->shown, ElementsAre(state().packsFolder()));
    EXPECT_TRUE(std::filesystem::is_directory(platform.fileManager->shown.front()));
}

TEST_F(GeneralTab, RefreshFindsAddedAndRemovedPacksAndLoadsTheSelectedOneAgain)
{
    writePack("first", {{30, 0.25F}});
    defaults->written["packID"] = std::string("second");
    openTab();
    EXPECT_EQ(state().selectedPack()->id, "first");
    writePack("second", {{30, 0.5F}});

    click(control("Refresh"));

    EXPECT_EQ(state().packs().size(), 2U);
    EXPECT_EQ(state().selectedPack()->id, "second");
    EXPECT_THAT(logged.lines(), Contains("pack chargé : second"));

    std::filesystem::remove_all(builtInPacks() / "second");
    click(control("Refresh"));
    EXPECT_EQ(state().packs().size(), 1U);
    EXPECT_EQ(state().selectedPack()->id, "first");
}

} // namespace
} // namespace clavo
