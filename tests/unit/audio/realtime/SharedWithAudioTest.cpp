// SPDX-License-Identifier: MIT
#include "audio/realtime/SharedWithAudio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <latch>
#include <thread>

namespace clavo
{
namespace
{

int valueSeen(SharedWithAudio<int>& shared)
{
    int value = -1;
    shared.access([&value](const int* object) { value = object ? *object : 0; });
    return value;
}

TEST(SharedWithAudio, HoldsNothingUntilAnObjectIsPublished)
{
    SharedWithAudio<int> shared;

    EXPECT_EQ(valueSeen(shared), 0);
}

TEST(SharedWithAudio, AccessSeesTheObjectPublishedLast)
{
    SharedWithAudio<int> shared;
    std::array objects{1, 2};

    shared.publish(&objects[0]);
    EXPECT_EQ(valueSeen(shared), 1);
    shared.publish(&objects[1]);
    EXPECT_EQ(valueSeen(shared), 2);
    shared.publish(nullptr);
    EXPECT_EQ(valueSeen(shared), 0);
}

TEST(SharedWithAudio, WithdrawingWaitsForTheEndOfAnAccess)
{
    SharedWithAudio<int> shared;
    int object = 1; // No atomic: the thread sanitizer reports an access that publish() misses.
    shared.publish(&object);
    std::latch hasBegun(1);

    std::thread audio([&] {
        shared.access([&](int* accessed) {
            hasBegun.count_down();
            for (int i = 0; i < 100; ++i) {
                std::this_thread::yield();
                ++*accessed;
            }
        });
    });
    hasBegun.wait();
    shared.publish(nullptr);

    EXPECT_EQ(object, 101);
    audio.join();
}

TEST(SharedWithAudio, WithdrawnObjectIsNoLongerAccessed)
{
    struct Object {
        int first = 0;
        int second = 0;
    };
    constexpr int rounds = 100;
    SharedWithAudio<Object> shared;
    std::atomic<bool> isOver = false;
    std::atomic<int> accesses = 0;
    std::atomic<int> torn = 0;

    std::thread audio([&] {
        while (!isOver.load()) {
            shared.access([&](Object* object) {
                if (object == nullptr)
                    return;
                if (++object->first != ++object->second)
                    ++torn;
                ++accesses;
            });
            std::this_thread::yield();
        }
    });
    std::array<Object, 2> objects;
    for (int round = 0; round < rounds; ++round) {
        auto& object = objects[static_cast<std::size_t>(round % 2)];
        const int before = accesses.load();
        shared.publish(&object);
        while (accesses.load() == before)
            std::this_thread::yield();
        shared.publish(nullptr);
        object = {}; // The main thread's again: writing it races with no access.
    }
    isOver = true;
    audio.join();

    EXPECT_GE(accesses.load(), rounds);
    EXPECT_EQ(torn.load(), 0);
}

} // namespace
} // namespace clavo
