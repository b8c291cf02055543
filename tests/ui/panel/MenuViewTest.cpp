// SPDX-License-Identifier: MIT
#include "ui/HoverPreview.h"
#include "ui/panel/PanelFixture.h"

#include <QClipboard>
#include <QTranslator>

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Pair;

constexpr std::int64_t keyA = 0; // Virtual key code.

class MenuViewTest : public PanelFixture
{
protected:
    MenuViewTest()
    {
        addPack("cherrymx-red-abs", "Cherry Red", "linear");
        addPack("topre", "Topre", "special");
    }

    std::vector<std::string> marked()
    {
        std::vector<std::string> names;
        for (const auto* item : itemsNamed("row"))
            if (item->property("selected").toBool())
                names.push_back(item->property("text").toString().toStdString());
        return names;
    }
    std::vector<std::string> highlighted()
    {
        std::vector<std::string> names;
        for (const auto* item : itemsNamed("row"))
            if (item->property("highlighted").toBool())
                names.push_back(item->property("text").toString().toStdString());
        return names;
    }
};

TEST_F(MenuViewTest, HasItsFixedWidth)
{
    EXPECT_EQ(window().width(), 330);
    EXPECT_EQ(item("packs").height(), 210);
}

TEST_F(MenuViewTest, ShowsTheCardOnlyWithoutPermission)
{
    access->granted = false;

    EXPECT_TRUE(isShown("permissionCard"));
    EXPECT_FALSE(hasControl("Restart now"));
}

TEST_F(MenuViewTest, ShowsNoCardWithPermission)
{
    EXPECT_FALSE(isShown("permissionCard"));
}

TEST_F(MenuViewTest, OffersTheRestartOnlyWhenItIsNeeded)
{
    needRelaunch();

    click(control("Restart now"));

    EXPECT_EQ(relauncher->opened, 1);
}

TEST_F(MenuViewTest, TheCardHasItsExactTexts)
{
    access->granted = false;

    EXPECT_THAT(
        allTexts(),
        IsSupersetOf({"Permission needed",
                      "Clavo needs to detect that a key moved. It never records what you type.",
                      "Turn on Clavo in the list: it restarts by itself once allowed."}));
}

TEST_F(MenuViewTest, AsksForThePermission)
{
    access->granted = false;
    window();
    const auto requests = access->requests.size();

    click(control("Open Input Monitoring"));

    EXPECT_EQ(access->requests.size(), requests + 1);
    EXPECT_EQ(access->requests.back(), InputAccess::Occasion::userRequest);
}

TEST_F(MenuViewTest, SaysWhatKeepsItFromListening)
{
    access->granted = false;
    window();
    const auto said = [this](InputAccess::State state, const char* commands = "") {
        access->obstacle = state;
        access->typed = commands;
        access->changed();
        settle();
        return text("permissionAdvice");
    };

    EXPECT_EQ(said(InputAccess::State::refused),
              "Turn on Clavo in the list: it restarts by itself once allowed.");
    EXPECT_FALSE(isShown("permissionCommands"));
    EXPECT_EQ(said(InputAccess::State::noKeyboard),
              "There is no keyboard to listen to: Clavo restarts by itself once there is one.");
    EXPECT_EQ(said(InputAccess::State::notInThisLogin),
              "The permission is granted and counts from your next login.");
    EXPECT_EQ(said(InputAccess::State::refused, "sudo one\nsudo two"),
              "Type these two commands in a terminal: Clavo restarts by itself once allowed.");
    EXPECT_EQ(text("permissionCommands"), "sudo one\nsudo two");
}

TEST_F(MenuViewTest, TheCommandsCanBeCopied)
{
    access->granted = false;
    window();
    EXPECT_FALSE(hasControl("Copy"));
    access->typed = "sudo one\nsudo two";
    access->changed();
    settle();

    click(control("Copy"));

    EXPECT_EQ(QGuiApplication::clipboard()->text(), "sudo one\nsudo two");
}

TEST_F(MenuViewTest, TheCardsButtonsStandBesideEachOtherInLongerLanguages)
{
    needRelaunch();
    for (const auto* const language : {"fr", "de"}) {
        QTranslator translator;
        ASSERT_TRUE(translator.load(QString("clavo_") + language, ":/translations"));
        QCoreApplication::installTranslator(&translator);
        const auto buttons = visibleItems([card = &item("permissionCard")](const auto& item) {
            return item.inherits("QQuickButton") && card->isAncestorOf(&item);
        });
        ASSERT_EQ(buttons.size(), 2U);
        EXPECT_EQ(buttons[0]->y(), buttons[1]->y()) << language;
        panel().close();
        QCoreApplication::processEvents();
    }
}

TEST_F(MenuViewTest, TilesShowTheStatistics)
{
    window();
    for (int i = 0; i < 5; ++i)
        press(keyA);
    EXPECT_THAT(texts("value"), ElementsAre("0", "0", "0"));

    // Five characters within a minute are one word.
    EXPECT_TRUE(QTest::qWaitFor([this] { return text("value") == "5"; }));
    EXPECT_THAT(texts("value"), ElementsAre("5", "0", "1"));
    EXPECT_THAT(texts("label"), ElementsAre("keys today", "streak", "best WPM"));
}

TEST_F(MenuViewTest, TilesShowTheirSymbols)
{
    EXPECT_EQ(item("today").property("symbol"), "keyboard");
    EXPECT_EQ(item("streak").property("symbol"), "flame.fill");
    EXPECT_EQ(item("best").property("symbol"), "speedometer");
}

TEST_F(MenuViewTest, TheSwitchHasAHelpText)
{
    window();
    const auto* const help = item("enabled").findChild<QObject*>("help");
    ASSERT_TRUE(help);
    EXPECT_EQ(help->property("text"), "Turn on / off (⇧⌘K)");
    EXPECT_FALSE(help->property("visible").toBool());

    moveOver({2, 2});
    moveOver(middle(item("enabled")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return help->property("visible").toBool(); }));
}

TEST_F(MenuViewTest, HeaderShowsThePackThatPlays)
{
    state().setPackID("deleted");

    EXPECT_EQ(text("selectedPack"), "Cherry Red");
    EXPECT_THAT(marked(), ElementsAre());
}

TEST_F(MenuViewTest, ShowsThePacksByCategory)
{
    EXPECT_THAT(texts("categoryTitle"), ElementsAre("Linear", "Special"));
    EXPECT_THAT(texts("row"), ElementsAre("Cherry Red", "Topre"));
    EXPECT_THAT(marked(), ElementsAre("Cherry Red"));
}

TEST_F(MenuViewTest, ShowsTheUsersPacksUnderATitleOfTheirOwn)
{
    addCustomPack("mine", "Mine");

    EXPECT_THAT(texts("categoryTitle"), ElementsAre("Linear", "Special", "My packs"));
}

TEST_F(MenuViewTest, TheSelectedRowHasItsMarkAndWeight)
{
    std::vector<std::string> marks;
    for (const auto* const mark : itemsNamed("mark"))
        marks.push_back(mark->property("name").toString().toStdString());
    EXPECT_THAT(marks, ElementsAre("checkmark.circle.fill", "circle"));

    std::vector<std::pair<int, int>> fonts;
    for (const auto* const name : itemsNamed("name")) {
        const auto font = name->property("font").value<QFont>();
        fonts.emplace_back(font.pixelSize(), font.weight());
    }
    EXPECT_THAT(fonts, ElementsAre(Pair(12, QFont::DemiBold), Pair(12, QFont::Normal)));
}

TEST_F(MenuViewTest, AClickSelectsAPack)
{
    click(row("Topre"));

    EXPECT_EQ(state().packID(), "topre");
    EXPECT_THAT(marked(), ElementsAre("Topre"));
    EXPECT_EQ(text("selectedPack"), "Topre");
}

TEST_F(MenuViewTest, AClickOnTheSelectedPackLoadsItAgain)
{
    window();
    logged.clear();

    click(row("Cherry Red"));

    EXPECT_THAT(logged.lines(), ElementsAre("pack chargé : cherrymx-red-abs"));
}

TEST_F(MenuViewTest, TheRowUnderThePointerStandsOut)
{
    moveOver({2, 2});
    moveOver(middle(row("Cherry Red")));
    EXPECT_THAT(highlighted(), ElementsAre("Cherry Red"));
    ASSERT_EQ(itemsNamed("speaker").size(), 1U);
    EXPECT_EQ(item("speaker").property("name"), "speaker.wave.2.fill");
    std::vector<double> opacities;
    for (const auto* const highlight : itemsNamed("highlight"))
        opacities.push_back(highlight->property("color").value<QColor>().alphaF());
    EXPECT_THAT(opacities, ElementsAre(DoubleNear(0.07, 0.005), 0));

    moveOver(middle(row("Topre")));
    EXPECT_THAT(highlighted(), ElementsAre("Topre"));

    moveOver({2, 2});
    EXPECT_THAT(highlighted(), ElementsAre());
    EXPECT_FALSE(isShown("speaker"));
}

TEST_F(MenuViewTest, APackThatIsRestedOnIsHeard)
{
    auto* const hover = window().findChild<HoverPreview*>();
    ASSERT_TRUE(hover);
    const auto waiting = time.waiting();

    emit hover->rested("topre");

    EXPECT_GT(time.waiting(), waiting);
    EXPECT_EQ(state().packID(), "cherrymx-red-abs");
}

TEST_F(MenuViewTest, SwitchesChangeTheSettingsAtOnce)
{
    for (const auto* name : {"enabled", "keyUpSounds", "spatial", "mouseSounds", "scrollSounds"})
        click(item(name));

    EXPECT_THAT(defaults->written, ElementsAre(Pair("enabled", DefaultsValue(false)),
                                               Pair("keyUpSounds", DefaultsValue(false)),
                                               Pair("mouseSounds", DefaultsValue(true)),
                                               Pair("scrollSounds", DefaultsValue(true)),
                                               Pair("spatial", DefaultsValue(false))));
}

TEST_F(MenuViewTest, SwitchesFollowTheSettings)
{
    window();
    state().setEnabled(false);
    EXPECT_FALSE(item("enabled").property("checked").toBool());
    click(item("enabled"));
    state().setEnabled(false);
    EXPECT_FALSE(item("enabled").property("checked").toBool());
}

TEST_F(MenuViewTest, TheSliderChangesTheVolume)
{
    item("volume").forceActiveFocus(Qt::TabFocusReason);

    press(Qt::Key_Left);
    EXPECT_NEAR(state().volume(), 0.75, 1e-9);
    press(Qt::Key_Right);
    EXPECT_NEAR(state().volume(), 0.8, 1e-9);

    click(item("volume"));
    EXPECT_NEAR(state().volume(), 0.5, 0.05);
}

TEST_F(MenuViewTest, LargeNumbersMoveNothing)
{
    const auto size = window().size();
    const auto packs = middle(item("packs"));
    for (auto* const value : itemsNamed("value"))
        value->setProperty("text", "9,999,999,999");
    settle();

    EXPECT_EQ(window().size(), size);
    EXPECT_EQ(middle(item("packs")), packs);
}

class WithoutPacks : public PanelFixture
{
};

TEST_F(WithoutPacks, TheHeaderShowsADash)
{
    EXPECT_EQ(text("selectedPack"), "—");
    EXPECT_FALSE(isShown("row"));
}

TEST_F(WithoutPacks, TheListSaysThatThereAreNone)
{
    EXPECT_EQ(text("noPacks"), "No packs found");
}

} // namespace
} // namespace clavo
