// SPDX-License-Identifier: MIT
#include "desktop/x11/X11TapFixture.h"

#include <linux/input-event-codes.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;

using X11DevicesTest = X11TapFixture;

TEST_F(X11DevicesTest, AKeyboardAndAPointerAddedLaterAreHeard)
{
    listen();
    Hands others(server.display());
    ASSERT_NE(others.takeSecondPair(), 0);
    others.movePointer(300);
    hands.movePointer(40);

    others.strike(KEY_A);
    others.click(1);
    hands.click(1);
    ASSERT_TRUE(untilEvents(6));

    EXPECT_THAT(events, ElementsAre(isKey(RawEventType::keyDown, 0), isKey(RawEventType::keyUp, 0),
                                    isAt(RawEventType::leftMouseDown, 300),
                                    isAt(RawEventType::leftMouseUp, 300),
                                    isAt(RawEventType::leftMouseDown, 40),
                                    isAt(RawEventType::leftMouseUp, 40)));
}

TEST_F(X11DevicesTest, TheFirstKeyboardIsHeardAfterAnotherHasGone)
{
    listen();
    Hands others(server.display());
    ASSERT_NE(others.takeSecondPair(), 0);
    others.strike(KEY_A);
    others.removeSecondPair();

    hands.strike(KEY_S);
    settle();

    EXPECT_THAT(events,
                ElementsAre(isKey(RawEventType::keyDown, 0), isKey(RawEventType::keyUp, 0),
                            isKey(RawEventType::keyDown, 1), isKey(RawEventType::keyUp, 1)));
}

TEST_F(X11DevicesTest, AModifierHeldWhenItsKeyboardGoesIsReleased)
{
    listen();
    Hands others(server.display());
    ASSERT_NE(others.takeSecondPair(), 0);

    others.press(KEY_LEFTCTRL);
    others.removeSecondPair();
    ASSERT_TRUE(untilEvents(2));
    hands.strike(KEY_LEFTCTRL);
    settle();

    EXPECT_THAT(events, testing::SizeIs(4));
    EXPECT_THAT(events, testing::Each(isKey(RawEventType::flagsChanged, 59)));
}

TEST_F(X11DevicesTest, AButtonHeldWhenItsPointerGoesIsReleased)
{
    listen();
    Hands others(server.display());
    ASSERT_NE(others.takeSecondPair(), 0);

    others.pressButton(1);
    others.removeSecondPair();
    settle();

    EXPECT_THAT(events, ElementsAre(testing::Field(&RawEvent::type, RawEventType::leftMouseDown),
                                    testing::Field(&RawEvent::type, RawEventType::leftMouseUp)));
}

} // namespace
} // namespace clavo
