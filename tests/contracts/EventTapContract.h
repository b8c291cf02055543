// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <ostream>
#include <vector>

namespace clavo
{

inline bool operator==(const RawEvent& a, const RawEvent& b)
{
    return a.type == b.type && a.keyCode == b.keyCode && a.isAutoRepeat == b.isAutoRepeat &&
           a.x == b.x;
}

inline std::ostream& operator<<(std::ostream& out, const RawEvent& event)
{
    return out << "{type " << event.type << ", code " << event.keyCode << ", x " << event.x
               << (event.isAutoRepeat ? ", repeat}" : "}");
}

/// What every EventTap promises. A Rig is a desktop with one tap and hands at its keyboard:
///
///     EventTap& tap();
///     void key(std::int64_t code, bool down);             of the letters and the modifiers
///     void click(bool down, double x);                    the left button
///     void wheel(double x);                               one detent
///     void movePointer(double x);
///     void lose(), restore();                             the tap's source
///     template <typename Condition> bool until(Condition) lets time pass until it holds; false if
///     it never does
template <typename Rig> class EventTapContract : public testing::Test
{
protected:
    static constexpr EventMask everything =
        1U << RawEventType::leftMouseDown | 1U << RawEventType::leftMouseUp |
        1U << RawEventType::rightMouseDown | 1U << RawEventType::rightMouseUp |
        1U << RawEventType::keyDown | 1U << RawEventType::keyUp | 1U << RawEventType::flagsChanged |
        1U << RawEventType::scrollWheel;
    static constexpr std::int64_t letterA = 0;
    static constexpr std::int64_t letterS = 1;
    static constexpr std::int64_t shift = 56;

    [[nodiscard]] bool listen(EventMask mask = everything)
    {
        const bool created =
            rig.tap().create(mask, [this](const RawEvent& event) { events.push_back(event); });
        rig.tap().enable();
        return created;
    }

    void strike(std::int64_t code)
    {
        rig.key(code, true);
        rig.key(code, false);
    }

    [[nodiscard]] bool untilEvents(std::size_t count)
    {
        return rig.until([&] { return events.size() >= count; });
    }

    Rig rig;
    std::vector<RawEvent> events;
};

TYPED_TEST_SUITE_P(EventTapContract);

TYPED_TEST_P(EventTapContract, AKeyArrivesDownAndUp)
{
    ASSERT_TRUE(this->listen());

    this->strike(this->letterS);

    ASSERT_TRUE(this->untilEvents(2));
    EXPECT_THAT(this->events,
                testing::ElementsAre(RawEvent{.type = RawEventType::keyDown, .keyCode = 1},
                                     RawEvent{.type = RawEventType::keyUp, .keyCode = 1}));
}

TYPED_TEST_P(EventTapContract, AModifierArrivesAsFlagsChangedBothWays)
{
    ASSERT_TRUE(this->listen());

    this->strike(this->shift);

    ASSERT_TRUE(this->untilEvents(2));
    EXPECT_THAT(this->events,
                testing::Each(RawEvent{.type = RawEventType::flagsChanged, .keyCode = 56}));
    EXPECT_EQ(this->events.size(), 2U);
}

TYPED_TEST_P(EventTapContract, AClickAndTheWheelCarryThePointersPlace)
{
    ASSERT_TRUE(this->listen());

    this->rig.click(true, 300);
    this->rig.click(false, 300);
    ASSERT_TRUE(this->untilEvents(2));
    this->rig.wheel(17);
    ASSERT_TRUE(this->untilEvents(3));

    EXPECT_THAT(this->events,
                testing::ElementsAre(RawEvent{.type = RawEventType::leftMouseDown, .x = 300},
                                     RawEvent{.type = RawEventType::leftMouseUp, .x = 300},
                                     RawEvent{.type = RawEventType::scrollWheel, .x = 17}));
}

TYPED_TEST_P(EventTapContract, OnlyWhatTheMaskAsksForArrives)
{
    ASSERT_TRUE(this->listen(EventMask{1} << RawEventType::keyUp));

    this->rig.click(true, 5);
    this->rig.click(false, 5);
    this->strike(this->shift);
    this->strike(this->letterA);

    ASSERT_TRUE(this->untilEvents(1));
    EXPECT_THAT(this->events,
                testing::ElementsAre(RawEvent{.type = RawEventType::keyUp, .keyCode = 0}));
}

TYPED_TEST_P(EventTapContract, ALostSourceIsReportedOnceAndHeardAgainWhenEnabled)
{
    ASSERT_TRUE(this->listen());

    this->rig.lose();
    ASSERT_TRUE(this->untilEvents(1));
    this->rig.restore();
    this->rig.tap().enable();

    ASSERT_TRUE(this->rig.until([this] {
        this->strike(this->letterA);
        return this->events.size() > 1;
    }));
    EXPECT_EQ(this->events.at(0), RawEvent{.type = RawEventType::tapDisabledByTimeout});
    EXPECT_THAT(std::vector(this->events.begin() + 1, this->events.end()),
                testing::Each(testing::Field(&RawEvent::keyCode, this->letterA)));
}

TYPED_TEST_P(EventTapContract, TheNextMotionIsNotedOnce)
{
    ASSERT_TRUE(this->listen());
    int moved = 0;
    this->rig.tap().notifyNextMotion([&] { ++moved; });

    double x = 10; // A tap may need a moment to begin to watch.
    ASSERT_TRUE(this->rig.until([&] {
        this->rig.movePointer(++x);
        return moved > 0;
    }));
    this->rig.movePointer(5);
    this->strike(this->letterA); // Comes after every motion.

    ASSERT_TRUE(this->untilEvents(2));
    EXPECT_EQ(moved, 1);
}

REGISTER_TYPED_TEST_SUITE_P(EventTapContract, AKeyArrivesDownAndUp,
                            AModifierArrivesAsFlagsChangedBothWays,
                            AClickAndTheWheelCarryThePointersPlace, OnlyWhatTheMaskAsksForArrives,
                            ALostSourceIsReportedOnceAndHeardAgainWhenEnabled,
                            TheNextMotionIsNotedOnce);

} // namespace clavo
