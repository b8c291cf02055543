// SPDX-License-Identifier: MIT
#include "unit/audio/Rendered.h"
#include "unit/audio/SoundEngineFixture.h"
#include "unit/audio/linux/CountedCalls.h"

#include "audio/realtime/Mixer.h"

#include <gmock/gmock.h>

#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <limits>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::IsEmpty;
using testing::KilledBySignal;

/// Brings a mixer into every situation that render() can meet. The call itself is the test's.
class EverySituation
{
public:
    EverySituation()
    {
        m_broken[3] = std::numeric_limits<float>::quiet_NaN();
        m_broken[5] = std::numeric_limits<float>::infinity();
    }

    template <typename Render> void run(Render&& renderBlock)
    {
        const auto render = [&](std::size_t frames) {
            const StereoBlock block{.left = std::span(m_block.left).first(frames),
                                    .right = std::span(m_block.right).first(frames)};
            renderBlock(m_mixer, block);
        };
        render(128); // Nothing sounds.
        start(0, m_sound);
        render(0);
        render(128);
        render(1000); // It ends.
        for (std::size_t voice = 0; voice < Mixer::voiceCount; ++voice)
            start(voice, m_sound);
        render(128); // All sound, beyond full scale: the limiter is at work.
        for (std::size_t voice = 0; voice < Mixer::voiceCount; ++voice)
            start(voice, m_sound);
        render(128); // All are cut off.
        m_mixer.setVolume(0.25F);
        render(128); // The volume moves.
        start(0, m_sound);
        m_mixer.silence();
        start(1, m_broken);
        start(2, {});
        render(128); // Silenced, and what is not finite arrives.
        while (start(3, m_sound)) {
        }
        render(128); // The queue was full, and each of its sounds cuts the one before off.
        while (m_mixer.takeFinished()) {
        }
        render(8000); // Everything dies away and the limiter releases.
    }

private:
    bool start(std::size_t voice, std::span<const float> samples)
    {
        return m_mixer.start(voice, {.samples = samples, .left = 1, .right = 0.5F, .sound = 0});
    }

    Mixer m_mixer;
    Rendered m_block{8000};
    std::vector<float> m_sound = std::vector<float>(500, 0.5F);
    std::vector<float> m_broken = std::vector<float>(500, 0.5F);
};

void forbidSystemCalls()
{
    // From here on the kernel ends the thread at any call but read, write, exit and sigreturn.
    if (prctl(PR_SET_SECCOMP, SECCOMP_MODE_STRICT) != 0)
        _exit(99);
}

[[noreturn]] void leave()
{
    syscall(SYS_exit, 0); // The only way out: _exit() asks for the whole group's end.
    __builtin_unreachable();
}

TEST(CountedCalls, SeeAllocationsAndLocks)
{
    std::mutex mutex;
    std::vector<int> numbers;

    const auto calls = callsMadeBy([&] {
        const std::lock_guard lock(mutex);
        numbers.reserve(100);
        std::vector<int>().swap(numbers);
    });

    EXPECT_THAT(calls, ElementsAre("pthread_mutex_lock", "malloc", "free"));
}

TEST(CountedCalls, SeeNothingWhereThereIsNothing)
{
    int number = 0;

    EXPECT_THAT(callsMadeBy([&] { ++number; }), IsEmpty());
}

TEST(RealTime, RenderingNeverAllocatesOrLocks)
{
    EverySituation situations;
    std::vector<std::string> seen;
    int renders = 0;

    situations.run([&](Mixer& mixer, StereoBlock block) {
        const auto calls = callsMadeBy([&] { mixer.render(block); });
        seen.insert(seen.end(), calls.begin(), calls.end());
        ++renders;
    });

    EXPECT_EQ(renders, 10);
    EXPECT_THAT(seen, IsEmpty());
}

TEST(RealTime, PlayingAllocatesNothing)
{
    Mixer mixer;
    const std::vector<float> sound(500, 0.5F);

    EXPECT_THAT(callsMadeBy([&] {
                    static_cast<void>(mixer.start(0, {.samples = sound}));
                    mixer.setVolume(0.5F);
                    mixer.silence();
                    static_cast<void>(mixer.takeFinished());
                }),
                IsEmpty());
}

class RealTimeEngine : public SoundEngineFixture
{
};

TEST_F(RealTimeEngine, PlayingAllocatesAndLocksNothing)
{
    const auto sound = steady(0.5F, 100);
    Rendered block(128);
    engine();

    for (int i = 0; i < 100; ++i) {
        ASSERT_THAT(callsMadeBy([&] { engine().play(sound, 0.3F, 1); }), IsEmpty());
        output.render(block.block());
    }
}

using RealTimeDeathTest = testing::Test;

TEST_F(RealTimeDeathTest, AForbiddenSystemCallIsFatal)
{
    EXPECT_EXIT(
        {
            forbidSystemCalls();
            syscall(SYS_getppid);
            leave();
        },
        KilledBySignal(SIGKILL), "");
}

TEST_F(RealTimeDeathTest, RenderingMakesNoSystemCall)
{
    EverySituation situations;

    EXPECT_EXIT(
        {
            forbidSystemCalls();
            for (int i = 0; i < 100; ++i)
                situations.run([](Mixer& mixer, StereoBlock block) { mixer.render(block); });
            leave();
        },
        ExitedWithCode(0), "");
}

} // namespace
} // namespace clavo
