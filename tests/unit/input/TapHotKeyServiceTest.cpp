// SPDX-License-Identifier: MIT
#include "input/TapHotKeyService.h"

#include "contracts/HotKeyServiceContract.h"
#include "fakes/FakeEventTap.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace clavo
{
namespace
{

constexpr std::int64_t leftCommand = 55;
constexpr std::int64_t rightCommand = 54;
constexpr std::int64_t leftShift = 56;
constexpr std::int64_t rightShift = 60;
constexpr std::int64_t option = 58;
constexpr std::int64_t capsLock = 57;
constexpr std::uint32_t letterK = 40;
constexpr auto chord = HotKeyModifier::cmdKey | HotKeyModifier::shiftKey;

/// The service at a tap whose events the test makes.
class TappedKeyboard
{
public:
    TappedKeyboard()
    {
        auto fake = std::make_unique<FakeEventTap>();
        m_fake = fake.get();
        m_tap = m_service.watched(std::move(fake));
        EXPECT_TRUE(m_tap->create(
            ~EventMask{0}, [this](const RawEvent& event) { delivered.push_back(event.type); }));
    }

    HotKeyService& service() { return m_service; }

    void modifier(std::int64_t keyCode)
    {
        m_fake->deliver({.type = RawEventType::flagsChanged, .keyCode = keyCode});
    }
    void down(std::int64_t keyCode, bool isAutoRepeat = false)
    {
        m_fake->deliver(
            {.type = RawEventType::keyDown, .keyCode = keyCode, .isAutoRepeat = isAutoRepeat});
    }
    void up(std::int64_t keyCode)
    {
        m_fake->deliver({.type = RawEventType::keyUp, .keyCode = keyCode});
    }

    void strike(std::uint32_t keyCode, std::uint32_t modifiers)
    {
        moveModifiers(modifiers);
        down(keyCode);
        up(keyCode);
        moveModifiers(modifiers);
    }

    template <typename Condition> bool until(Condition condition) { return condition(); }

    std::vector<std::uint32_t> delivered;

private:
    void moveModifiers(std::uint32_t modifiers)
    {
        if ((modifiers & HotKeyModifier::cmdKey) != 0)
            modifier(leftCommand);
        if ((modifiers & HotKeyModifier::shiftKey) != 0)
            modifier(leftShift);
    }

    TapHotKeyService m_service;
    FakeEventTap* m_fake = nullptr;
    std::unique_ptr<EventTap> m_tap;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Tap, HotKeyServiceContract, TappedKeyboard);

class TapHotKeyServiceTest : public testing::Test
{
protected:
    TapHotKeyServiceTest()
    {
        const HotKey hotKey{.keyCode = letterK, .modifiers = chord};
        EXPECT_TRUE(keyboard.service().registerHotKey(hotKey, [this] { ++presses; }));
    }

    TappedKeyboard keyboard;
    int presses = 0;
};

TEST_F(TapHotKeyServiceTest, HearsTheModifiersOfEitherSide)
{
    keyboard.modifier(rightShift);
    keyboard.modifier(rightCommand);
    keyboard.down(letterK);

    EXPECT_EQ(presses, 1);
}

TEST_F(TapHotKeyServiceTest, IsDeafToAThirdModifierButNotToALock)
{
    keyboard.modifier(leftShift);
    keyboard.modifier(leftCommand);
    keyboard.modifier(option);
    keyboard.down(letterK);
    EXPECT_EQ(presses, 0);

    keyboard.modifier(option);
    keyboard.modifier(capsLock);
    keyboard.down(letterK);
    EXPECT_EQ(presses, 1);
}

TEST_F(TapHotKeyServiceTest, HearsAHeldKeyOnce)
{
    keyboard.modifier(leftShift);
    keyboard.modifier(leftCommand);
    keyboard.down(letterK);
    keyboard.down(letterK, true);
    keyboard.up(letterK);

    EXPECT_EQ(presses, 1);
}

TEST_F(TapHotKeyServiceTest, LetsEveryEventPass)
{
    keyboard.strike(letterK, HotKeyModifier::cmdKey);

    EXPECT_EQ(keyboard.delivered, (std::vector{RawEventType::flagsChanged, RawEventType::keyDown,
                                               RawEventType::keyUp, RawEventType::flagsChanged}));
}

TEST_F(TapHotKeyServiceTest, RefusesModifiersItDoesNotKnow)
{
    EXPECT_FALSE(keyboard.service().registerHotKey({.keyCode = letterK, .modifiers = 2048}, [] {}));
}

} // namespace
} // namespace clavo
