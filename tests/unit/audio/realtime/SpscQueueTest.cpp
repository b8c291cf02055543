// SPDX-License-Identifier: MIT
#include "audio/realtime/SpscQueue.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <thread>

namespace clavo
{
namespace
{

using testing::Optional;

TEST(SpscQueue, GivesNothingWhenEmpty)
{
    SpscQueue<int, 4> queue;

    EXPECT_EQ(queue.pop(), std::nullopt);
}

TEST(SpscQueue, GivesValuesInTheOrderTheyCame)
{
    SpscQueue<int, 4> queue;

    EXPECT_TRUE(queue.push(1));
    EXPECT_TRUE(queue.push(2));

    EXPECT_THAT(queue.pop(), Optional(1));
    EXPECT_THAT(queue.pop(), Optional(2));
    EXPECT_EQ(queue.pop(), std::nullopt);
}

TEST(SpscQueue, TakesExactlyItsCapacity)
{
    SpscQueue<int, 4> queue;

    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(queue.push(i));
    EXPECT_FALSE(queue.push(4));

    EXPECT_THAT(queue.pop(), Optional(0));
    EXPECT_TRUE(queue.push(5)) << "one place is free again";
    EXPECT_FALSE(queue.push(6));
    for (const int expected : {1, 2, 3, 5})
        EXPECT_THAT(queue.pop(), Optional(expected));
    EXPECT_EQ(queue.pop(), std::nullopt);
}

TEST(SpscQueue, KeepsTheOrderWhenItsPlacesAreUsedAgain)
{
    SpscQueue<int, 4> queue;
    int pushed = 0;
    int popped = 0;

    for (int round = 0; round < 100; ++round) {
        for (int i = 0; i < 3; ++i)
            ASSERT_TRUE(queue.push(pushed++));
        for (int i = 0; i < 3; ++i)
            ASSERT_THAT(queue.pop(), Optional(popped++));
    }
}

/// A thread whose end is waited for at the end of the scope.
struct JoinedThread {
    std::thread thread;
    ~JoinedThread() { thread.join(); }
};

TEST(SpscQueue, LosesAndAltersNothingBetweenTwoThreads)
{
    struct Pair {
        std::uint64_t value;
        std::uint64_t complement;
    };
    constexpr std::uint64_t count = 200'000;
    SpscQueue<Pair, 16> queue;

    const JoinedThread pusher{std::thread([&queue] {
        for (std::uint64_t i = 0; i < count; ++i) {
            while (!queue.push({.value = i, .complement = ~i}))
                std::this_thread::yield();
        }
    })};
    for (std::uint64_t i = 0; i < count;) {
        const auto pair = queue.pop();
        if (!pair) {
            std::this_thread::yield();
            continue;
        }
        ASSERT_EQ(pair->value, i);
        ASSERT_EQ(pair->complement, ~i);
        ++i;
    }
}

} // namespace
} // namespace clavo
