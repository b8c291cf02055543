// SPDX-License-Identifier: MIT
#include "desktop/x11/X11HotKeyFixture.h"
#include "platform/x11/X11EventTap.h"

#include <QProcess>

#include <csignal>

namespace clavo
{
namespace
{

/// The keyboard's map, or the server itself, changes while shortcuts are registered.
class X11HotKeyChangesTest : public X11HotKeyFixture
{
protected:
    X11HotKeyChangesTest()
    {
        signal(SIGPIPE, SIG_DFL); // Starting a process through Qt ignores it.
    }

    [[nodiscard]] bool moveSuperTo(unsigned modifier, unsigned from, std::uint32_t inItsPlace)
    {
        return hands.makeModifier(from, {inItsPlace}) &&
               hands.makeModifier(modifier, {KEY_LEFTMETA, KEY_RIGHTMETA});
    }

    [[nodiscard]] bool setLayout(const QStringList& layout) const
    {
        return QProcess::execute("setxkbmap",
                                 QStringList{"-display", QString::fromStdString(server.display())} +
                                     layout) == 0;
    }
};

TEST_F(X11HotKeyChangesTest, SuperIsFollowedToAnotherModifier)
{
    add();
    ASSERT_TRUE(isHeard());

    ASSERT_TRUE(moveSuperTo(XCB_MAP_INDEX_3, XCB_MAP_INDEX_4, KEY_F9));
    ASSERT_TRUE(isHeard());
    strike(KEY_K);
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 1);
}

TEST_F(X11HotKeyChangesTest, WhatSuperWasIsGivenBack)
{
    add();
    ASSERT_TRUE(isHeard());
    ASSERT_TRUE(moveSuperTo(XCB_MAP_INDEX_3, XCB_MAP_INDEX_4, KEY_F9));
    ASSERT_TRUE(isHeard());
    hands.openWindow();

    hands.press(KEY_F9);
    ASSERT_EQ(hands.modifiers(), XCB_MOD_MASK_4);
    hands.release(KEY_F9);
    strike(KEY_K, {KEY_LEFTSHIFT, KEY_F9});

    EXPECT_EQ(hands.pressesInWindow(), 4);
    ASSERT_TRUE(settle());
    EXPECT_EQ(pressesOfK, 0);
}

TEST_F(X11HotKeyChangesTest, EachOfTwoModifiersThatAreSuperWillDo)
{
    ASSERT_TRUE(hands.makeModifier(XCB_MAP_INDEX_3, {KEY_RIGHTMETA}));
    add();
    ASSERT_TRUE(isHeard());

    strike(KEY_K, {KEY_LEFTSHIFT, KEY_LEFTMETA});
    strike(KEY_K, {KEY_LEFTSHIFT, KEY_RIGHTMETA});
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 2);
}

TEST_F(X11HotKeyChangesTest, AKeyboardWithoutSuperIsWaitedOut)
{
    ASSERT_TRUE(hands.makeModifier(XCB_MAP_INDEX_4, {KEY_F9}));
    add();
    hands.openWindow();
    strike(KEY_K, {KEY_LEFTSHIFT, KEY_F9});
    strike(KEY_K, {KEY_LEFTSHIFT});
    EXPECT_EQ(hands.pressesInWindow(), 5);

    ASSERT_TRUE(hands.makeModifier(XCB_MAP_INDEX_4, {KEY_LEFTMETA}));

    EXPECT_TRUE(isHeard());
    EXPECT_EQ(pressesOfK, 0);
}

TEST_F(X11HotKeyChangesTest, NumLockIsFollowedToAnotherModifier)
{
    add();
    ASSERT_TRUE(isHeard());

    ASSERT_TRUE(hands.makeModifier(XCB_MAP_INDEX_2, {KEY_F9}));
    ASSERT_TRUE(hands.makeModifier(XCB_MAP_INDEX_5, {KEY_NUMLOCK}));
    hands.strike(KEY_NUMLOCK);
    ASSERT_EQ(hands.modifiers(), XCB_MOD_MASK_5);

    EXPECT_TRUE(isHeard());
}

TEST_F(X11HotKeyChangesTest, TheShortcutIsAPlaceOnTheKeyboardInEveryLayout)
{
    add();
    ASSERT_TRUE(isHeard());

    for (const QStringList& layout :
         {QStringList{"us", "-variant", "dvorak"}, {"fr"}, {"ru"}, {"us,gr"}, {"us"}}) {
        ASSERT_TRUE(setLayout(layout));
        ASSERT_TRUE(isHeard()) << layout.join(' ').toStdString();
        strike(KEY_K);
    }
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 5);
}

TEST_F(X11HotKeyChangesTest, ALayoutThatPutsSuperBackIsFollowed)
{
    add();
    ASSERT_TRUE(moveSuperTo(XCB_MAP_INDEX_3, XCB_MAP_INDEX_4, KEY_F9));
    ASSERT_TRUE(isHeard());

    ASSERT_TRUE(setLayout({"de"}));
    hands.press(KEY_LEFTMETA);
    ASSERT_EQ(hands.modifiers(), XCB_MOD_MASK_4);
    hands.release(KEY_LEFTMETA);

    EXPECT_TRUE(isHeard());
}

TEST_F(X11HotKeyChangesTest, TheKeyThatTheLayoutMakesSuperIsTheOneToHold)
{
    add();
    ASSERT_TRUE(isHeard());

    ASSERT_TRUE(setLayout({"us", "-option", "ctrl:swap_lwin_lctl"}));

    EXPECT_TRUE(isHeard({KEY_LEFTSHIFT, KEY_LEFTCTRL}));
}

TEST_F(X11HotKeyChangesTest, AMapThatChangesWhileTheServerIsGrabbedHoldsNothingUp)
{
    const auto tap = makeX11EventTap(server.display());
    int events = 0;
    ASSERT_TRUE(tap->create(1U << RawEventType::keyDown, [&](const RawEvent&) { ++events; }));
    add();
    ASSERT_TRUE(isHeard());
    ASSERT_TRUE(EventLoop::until([&] { return events >= pressesOfJ; }));
    events = 0;

    hands.grabServer();
    ASSERT_TRUE(moveSuperTo(XCB_MAP_INDEX_3, XCB_MAP_INDEX_4, KEY_F9));
    for (int i = 1; i <= 10; ++i) {
        hands.strike(KEY_A);
        ASSERT_TRUE(EventLoop::until([&] { return events == i; }));
    }
    hands.ungrabServer();

    EXPECT_TRUE(isHeard());
}

TEST_F(X11HotKeyChangesTest, TheLastOfManyMapsCounts)
{
    add();
    ASSERT_TRUE(isHeard());

    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(moveSuperTo(XCB_MAP_INDEX_3, XCB_MAP_INDEX_4, KEY_F9));
        ASSERT_TRUE(moveSuperTo(XCB_MAP_INDEX_4, XCB_MAP_INDEX_3, KEY_F9));
    }

    EXPECT_TRUE(isHeard());
}

TEST_F(X11HotKeyChangesTest, ALostServersShortcutsAreHeardOnTheNewOne)
{
    add();
    ASSERT_TRUE(isHeard());

    server.stop();
    server.start();
    Hands newHands(server.display());

    EXPECT_TRUE(EventLoop::until([&] {
        strike(newHands, KEY_K);
        return pressesOfK > 0;
    }));
}

TEST_F(X11HotKeyChangesTest, AServerMayBeLostWhileAShortcutIsHeld)
{
    add();
    ASSERT_TRUE(isHeard());
    hands.press(KEY_LEFTSHIFT);
    hands.press(KEY_LEFTMETA);
    hands.press(KEY_K);
    ASSERT_TRUE(EventLoop::until([&] { return pressesOfK == 1; }));

    server.stop();
    server.start();
    Hands newHands(server.display());

    EXPECT_TRUE(EventLoop::until([&] {
        strike(newHands, KEY_K);
        return pressesOfK > 1;
    }));
}

TEST_F(X11HotKeyChangesTest, ShortcutsMayComeAndGoWhileTheServerIsLost)
{
    add();
    ASSERT_TRUE(isHeard());
    server.stop();
    service->unregisterHotKey(
        *refOfJ); // Writes to a connection that is broken, not yet known to be.
    refOfJ = service->registerHotKey({.keyCode = 37, .modifiers = shiftCommand},
                                     [this] { ++pressesOfJ; });
    ASSERT_TRUE(refOfJ);
    server.start();
    Hands newHands(server.display());

    EXPECT_TRUE(EventLoop::until([&, before = pressesOfJ] {
        strike(newHands, KEY_L);
        return pressesOfJ > before;
    }));
}

TEST_F(X11HotKeyChangesTest, AServerThatComesLaterIsFound)
{
    server.stop();
    add();

    server.start();
    Hands newHands(server.display());

    EXPECT_TRUE(EventLoop::until([&] {
        strike(newHands, KEY_K);
        return pressesOfK > 0;
    }));
}

} // namespace
} // namespace clavo
