// SPDX-License-Identifier: MIT
#include "desktop/x11/X11HotKeyFixture.h"
#include "desktop/x11/X11TapFixture.h"

namespace clavo
{
namespace
{

using testing::ElementsAre;

using X11HotKeyServiceTest = X11HotKeyFixture;

/// The locks that are on: bit 0 Caps, bit 1 Num, bit 2 Scroll Lock.
class X11HotKeyLocksTest : public X11HotKeyFixture, public testing::WithParamInterface<unsigned>
{
protected:
    void lock()
    {
        constexpr std::array<std::uint32_t, 3> keys{KEY_CAPSLOCK, KEY_NUMLOCK, KEY_SCROLLLOCK};
        for (unsigned i = 0; i < keys.size(); ++i) {
            if ((GetParam() >> i & 1) != 0)
                hands.strike(keys.at(i));
        }
    }

    [[nodiscard]] unsigned state(unsigned num, unsigned scroll) const
    {
        return ((GetParam() & 1) != 0 ? +XCB_MOD_MASK_LOCK : 0U) |
               ((GetParam() & 2) != 0 ? num : 0U) | ((GetParam() & 4) != 0 ? scroll : 0U);
    }
};

INSTANTIATE_TEST_SUITE_P(, X11HotKeyLocksTest, testing::Range(0U, 8U));

TEST_P(X11HotKeyLocksTest, TheShortcutIsHeard)
{
    ASSERT_TRUE(hands.makeModifier(XCB_MAP_INDEX_3, {KEY_SCROLLLOCK}));
    add();
    ASSERT_TRUE(isHeard());
    lock();
    ASSERT_EQ(hands.modifiers(), state(XCB_MOD_MASK_2, XCB_MOD_MASK_3));

    strike(KEY_K);
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 1);
}

TEST_P(X11HotKeyLocksTest, TheShortcutIsHeardWhicheverModifiersTheLocksAre)
{
    ASSERT_TRUE(hands.makeModifier(XCB_MAP_INDEX_2, {KEY_SCROLLLOCK}));
    ASSERT_TRUE(hands.makeModifier(XCB_MAP_INDEX_5, {KEY_NUMLOCK}));
    add();
    ASSERT_TRUE(isHeard());
    lock();
    ASSERT_EQ(hands.modifiers(), state(XCB_MOD_MASK_5, XCB_MOD_MASK_2));

    strike(KEY_K);
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 1);
}

TEST_F(X11HotKeyServiceTest, EitherSideOfShiftAndSuperWillDo)
{
    add();
    ASSERT_TRUE(isHeard());

    strike(KEY_K, {KEY_RIGHTSHIFT, KEY_LEFTMETA});
    strike(KEY_K, {KEY_RIGHTMETA, KEY_RIGHTSHIFT});
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 2);
}

TEST_F(X11HotKeyServiceTest, AnythingLessOrMoreThanTheShortcutIsNotHeard)
{
    add();
    ASSERT_TRUE(isHeard());

    strike(KEY_K, {});
    strike(KEY_K, {KEY_LEFTSHIFT});
    strike(KEY_K, {KEY_LEFTMETA});
    strike(KEY_K, {KEY_LEFTSHIFT, KEY_LEFTALT});
    strike(KEY_K, {KEY_LEFTSHIFT, KEY_LEFTMETA, KEY_LEFTCTRL});
    strike(KEY_K, {KEY_LEFTSHIFT, KEY_LEFTMETA, KEY_LEFTALT});
    strike(KEY_L);
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 0);
}

TEST_F(X11HotKeyServiceTest, OneShortcutDoesNotStandForAnotherOfTheSameKey)
{
    add();
    int others = 0;
    ASSERT_TRUE(service->registerHotKey({.keyCode = 40, .modifiers = HotKeyModifier::cmdKey},
                                        [&] { ++others; }));
    ASSERT_TRUE(isHeard());

    strike(KEY_K, {KEY_LEFTMETA});
    strike(KEY_K);
    strike(KEY_K);
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 2);
    EXPECT_EQ(others, 1);
}

TEST_F(X11HotKeyServiceTest, AModifierItDoesNotKnowIsRefused)
{
    constexpr std::uint32_t control = 4096;

    EXPECT_FALSE(service->registerHotKey({.keyCode = 40, .modifiers = shiftCommand | control},
                                         [this] { ++pressesOfK; }));
}

TEST_F(X11HotKeyServiceTest, AHeldShortcutIsHeardOnce)
{
    add();
    ASSERT_TRUE(isHeard());
    Hands atSession(qgetenv("DISPLAY").toStdString()); // Shows that keys have had time to repeat.
    atSession.openWindow();

    hands.press(KEY_LEFTSHIFT);
    hands.press(KEY_LEFTMETA);
    hands.press(KEY_K);
    atSession.press(KEY_A);
    ASSERT_TRUE(EventLoop::until([&] { return atSession.pressesInWindow() >= 8; }));
    atSession.release(KEY_A);

    EXPECT_EQ(pressesOfK, 1);

    hands.release(KEY_K);
    hands.strike(KEY_K);
    ASSERT_TRUE(EventLoop::until([&] { return pressesOfK > 1; }));
    EXPECT_EQ(pressesOfK, 2);
}

TEST_F(X11HotKeyServiceTest, AnotherKeyPressedMeanwhileDoesNotCountForTheShortcut)
{
    add();
    ASSERT_TRUE(isHeard());

    hands.press(KEY_LEFTSHIFT);
    hands.press(KEY_LEFTMETA);
    hands.press(KEY_K);
    hands.strike(KEY_A);
    hands.press(KEY_S);
    hands.release(KEY_K);
    hands.release(KEY_S);
    hands.release(KEY_LEFTMETA);
    hands.release(KEY_LEFTSHIFT);
    strike(KEY_K);
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 2);
}

TEST_F(X11HotKeyServiceTest, EveryStrikeOfABurstIsHeard)
{
    add();
    ASSERT_TRUE(isHeard());

    hands.press(KEY_LEFTSHIFT);
    hands.press(KEY_LEFTMETA);
    hands.strikeInABurst(KEY_K, 200);
    hands.release(KEY_LEFTMETA);
    hands.release(KEY_LEFTSHIFT);
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 200);
}

TEST_F(X11HotKeyServiceTest, TheWindowInFrontDoesNotGetTheKey)
{
    add();
    ASSERT_TRUE(isHeard());
    hands.openWindow();

    strike(KEY_K);
    EXPECT_EQ(hands.pressesInWindow(), 2); // Shift and Super.

    strike(KEY_K, {KEY_LEFTSHIFT});
    EXPECT_EQ(hands.pressesInWindow(), 4);
}

TEST_F(X11HotKeyServiceTest, TheWindowInFrontGetsTheKeyOnceTheShortcutIsGone)
{
    add();
    ASSERT_TRUE(isHeard());
    hands.openWindow();

    service->unregisterHotKey(*refOfK);
    ASSERT_TRUE(isHeard());
    ASSERT_TRUE(settle());
    const auto before = hands.pressesInWindow();
    strike(KEY_K);

    EXPECT_EQ(hands.pressesInWindow(), before + 3);
    EXPECT_EQ(pressesOfK, 0);
}

TEST_F(X11HotKeyServiceTest, TheTapHearsEveryKeyOfTheShortcut)
{
    std::vector<RawEvent> events;
    const auto tap = makeX11EventTap(server.display());
    ASSERT_TRUE(tap->create(1U << RawEventType::keyDown | 1U << RawEventType::keyUp |
                                1U << RawEventType::flagsChanged,
                            [&](const RawEvent& event) { events.push_back(event); }));
    add();
    ASSERT_TRUE(isHeard());
    ASSERT_TRUE(EventLoop::until([&] { return events.size() % 6 == 0; }));
    events.clear();

    strike(KEY_K);
    ASSERT_TRUE(EventLoop::until([&] { return events.size() >= 6 && pressesOfK == 1; }));

    EXPECT_THAT(events,
                ElementsAre(isKey(RawEventType::flagsChanged, 56),
                            isKey(RawEventType::flagsChanged, 55), isKey(RawEventType::keyDown, 40),
                            isKey(RawEventType::keyUp, 40), isKey(RawEventType::flagsChanged, 55),
                            isKey(RawEventType::flagsChanged, 56)));
}

TEST_F(X11HotKeyServiceTest, AShortcutThatAnotherProgramHasIsLeftToIt)
{
    Hands other(server.display());
    ASSERT_TRUE(other.grabKey(KEY_K, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4));
    add();
    ASSERT_TRUE(isHeard());

    strike(KEY_K);
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 0);
    EXPECT_EQ(other.pressesInWindow(), 1);
}

TEST_F(X11HotKeyServiceTest, AnotherProgramsShareOfTheLocksIsLeftToItAndTheRestIsHeard)
{
    Hands other(server.display());
    ASSERT_TRUE(other.grabKey(KEY_K, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4 | XCB_MOD_MASK_2));
    add();
    ASSERT_TRUE(isHeard());

    hands.strike(KEY_NUMLOCK);
    strike(KEY_K);
    ASSERT_TRUE(settle());
    EXPECT_EQ(pressesOfK, 0);

    hands.strike(KEY_CAPSLOCK); // On, beside Num Lock.
    strike(KEY_K);
    ASSERT_TRUE(settle());
    EXPECT_EQ(pressesOfK, 1);

    hands.strike(KEY_NUMLOCK);
    strike(KEY_K);
    ASSERT_TRUE(settle());
    EXPECT_EQ(pressesOfK, 2);
}

TEST_F(X11HotKeyServiceTest, AShortcutThatAnotherProgramHasGivenUpIsTakenWithTheNextMap)
{
    auto other = std::make_unique<Hands>(server.display());
    ASSERT_TRUE(other->grabKey(KEY_K, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4));
    add();
    ASSERT_TRUE(isHeard());
    strike(KEY_K);
    ASSERT_TRUE(settle());
    ASSERT_EQ(pressesOfK, 0);
    other.reset();

    ASSERT_TRUE(hands.makeModifier(XCB_MAP_INDEX_3, {KEY_SCROLLLOCK}));

    EXPECT_TRUE(EventLoop::until([&] {
        strike(KEY_K);
        return pressesOfK > 0;
    }));
}

TEST_F(X11HotKeyServiceTest, AnEmptyDisplayIsTheSessionsOne)
{
    const auto ofSession = makeX11HotKeyService();
    Hands handsOfSession(qgetenv("DISPLAY").toStdString());
    int presses = 0;
    ASSERT_TRUE(
        ofSession->registerHotKey({.keyCode = 40, .modifiers = shiftCommand}, [&] { ++presses; }));

    EXPECT_TRUE(EventLoop::until([&] {
        strike(handsOfSession, KEY_K);
        return presses > 0;
    }));
}

class X11HotKeyTwoScreensTest : public X11HotKeyFixture
{
protected:
    X11HotKeyTwoScreensTest()
        : X11HotKeyFixture({"-screen", "0", "800x600x24", "-screen", "1", "800x600x24"})
    {
    }
};

TEST_F(X11HotKeyTwoScreensTest, TheShortcutIsHeardOnEachRootWindow)
{
    add();

    hands.moveToScreen(0);
    ASSERT_TRUE(isHeard());
    strike(KEY_K);
    hands.moveToScreen(1);
    strike(KEY_K);
    ASSERT_TRUE(settle());

    EXPECT_EQ(pressesOfK, 2);
}

} // namespace
} // namespace clavo
