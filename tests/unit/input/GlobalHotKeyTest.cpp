// SPDX-License-Identifier: MIT
#include "input/GlobalHotKey.h"

#include "fakes/FakeHotKeyService.h"
#include "platform/none/NonePlatform.h"

#include <gmock/gmock.h>

#include <memory>

namespace clavo
{
namespace
{

using testing::IsEmpty;
using testing::SizeIs;

constexpr auto kKey = GlobalHotKey::kKey;
constexpr auto shiftCommand = GlobalHotKey::shiftKey + GlobalHotKey::cmdKey;

class GlobalHotKeyTest : public testing::Test
{
protected:
    /// A hot key that counts its action's runs.
    [[nodiscard]] std::unique_ptr<GlobalHotKey> counting(int& runs, std::int64_t keyCode = kKey)
    {
        return std::make_unique<GlobalHotKey>(service, keyCode, shiftCommand, [&runs] { ++runs; });
    }

    void press(std::uint32_t keyCode = 40) { service.press(keyCode, 768); }

    FakeHotKeyService service;
    int first = 0;
    int second = 0;
};

TEST_F(GlobalHotKeyTest, RegistersTheShortcutWithItsIdentifier)
{
    const auto hotKey = counting(first);

    ASSERT_THAT(service.registrations, SizeIs(1));
    const auto& registered = service.registrations.begin()->second.hotKey;
    EXPECT_EQ(registered.keyCode, 40U);
    EXPECT_EQ(registered.modifiers, 768U);
    EXPECT_EQ(registered.signature, 0x434C5631U); // CLV1
    EXPECT_EQ(registered.number, 1U);
}

TEST_F(GlobalHotKeyTest, RunsItsActionAtEveryPress)
{
    const auto hotKey = counting(first);
    EXPECT_EQ(first, 0);

    press();
    press();

    EXPECT_EQ(first, 2);
}

TEST_F(GlobalHotKeyTest, DestructionUnregistersTheShortcut)
{
    auto hotKey = counting(first);

    hotKey.reset();

    EXPECT_THAT(service.registrations, IsEmpty());
}

TEST_F(GlobalHotKeyTest, TheActionOfTheSecondRunsForPressesOfEither)
{
    const auto one = counting(first, 40);
    const auto two = counting(second, 38);

    press(40);
    press(38);

    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 2);
}

TEST_F(GlobalHotKeyTest, DestroyingTheFirstLeavesTheActionOfTheSecond)
{
    auto one = counting(first, 40);
    const auto two = counting(second, 38);

    one.reset();
    press(38);

    EXPECT_EQ(second, 1);
}

TEST_F(GlobalHotKeyTest, DestroyingTheSecondLeavesItsActionToTheFirst)
{
    const auto one = counting(first, 40);
    auto two = counting(second, 38);

    two.reset();
    press(40);

    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST_F(GlobalHotKeyTest, ANewActionReleasesThePreviousOne)
{
    auto kept = std::make_shared<int>();
    const std::weak_ptr<int> watched = kept;
    const GlobalHotKey one(service, 40, shiftCommand, [kept = std::move(kept)] { ++*kept; });
    ASSERT_FALSE(watched.expired());

    const auto two = counting(second, 38);

    EXPECT_TRUE(watched.expired());
}

TEST_F(GlobalHotKeyTest, ARefusedRegistrationIsSilent)
{
    service.refuses = true;
    auto hotKey = counting(first);

    press();
    hotKey.reset();

    EXPECT_EQ(first, 0);
}

TEST_F(GlobalHotKeyTest, ARefusedSecondHotKeyLeavesTheFirstOnesShortcut)
{
    const auto one = counting(first);
    service.refuses = true;
    auto two = counting(second);

    two.reset();
    press();

    EXPECT_EQ(second, 1);
}

TEST_F(GlobalHotKeyTest, IsConstructedWhereThereIsNoService)
{
    const auto none = makeNoHotKeyService();

    const GlobalHotKey hotKey(*none, kKey, shiftCommand, [this] { ++first; });

    EXPECT_EQ(first, 0);
}

TEST_F(GlobalHotKeyTest, WithoutAnActionAPressDoesNothing)
{
    const GlobalHotKey hotKey(service, kKey, shiftCommand, nullptr);

    press();
}

TEST_F(GlobalHotKeyTest, AnActionMayReplaceTheHotKeyItBelongsTo)
{
    std::unique_ptr<GlobalHotKey> hotKey;
    hotKey = std::make_unique<GlobalHotKey>(
        service, kKey, shiftCommand, [this, &hotKey, kept = std::make_shared<int>(7)] {
            hotKey.reset();
            hotKey = counting(second);
            first = *kept; // Of the action that has just been replaced.
        });

    press();
    press();

    EXPECT_EQ(first, 7);
    EXPECT_EQ(second, 1);
}

TEST_F(GlobalHotKeyTest, TheEndsOfTheNumbersRangesAreRegistered)
{
    const GlobalHotKey lowest(service, 0, 0, nullptr);
    const GlobalHotKey highest(service, 4294967295, 4294967295, nullptr);

    ASSERT_THAT(service.registrations, SizeIs(2));
    EXPECT_EQ(service.registrations.at(1).hotKey.keyCode, 0U);
    EXPECT_EQ(service.registrations.at(1).hotKey.modifiers, 0U);
    EXPECT_EQ(service.registrations.at(2).hotKey.keyCode, 0xFFFFFFFFU);
    EXPECT_EQ(service.registrations.at(2).hotKey.modifiers, 0xFFFFFFFFU);
}

using GlobalHotKeyDeathTest = GlobalHotKeyTest;

TEST_F(GlobalHotKeyDeathTest, ANumberOutsideItsRangeEndsTheProgram)
{
    constexpr auto message = "fatal error: a hot key's key code and modifiers must fit";
    EXPECT_DEATH(GlobalHotKey(service, -1, shiftCommand, nullptr), message);
    EXPECT_DEATH(GlobalHotKey(service, 4294967296, shiftCommand, nullptr), message);
    EXPECT_DEATH(GlobalHotKey(service, kKey, -1, nullptr), message);
    EXPECT_DEATH(GlobalHotKey(service, kKey, 4294967296, nullptr), message);
}

} // namespace
} // namespace clavo
