// SPDX-License-Identifier: MIT
#include "unit/audio/Rendered.h"
#include "unit/audio/SoundEngineFixture.h"

#include "audio/realtime/Mixer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>
#include <vector>

namespace clavo
{
namespace
{

using testing::Each;

/// Renders block after block on a thread of its own and looks at every sample.
template <typename Source> class AudioThread
{
public:
    explicit AudioThread(Source& source)
        : m_thread([this, &source] {
              for (std::size_t frames = 1; !m_isEnding; frames = frames % 128 + 1) {
                  const auto block = rendered(source, frames);
                  if (!isWithinFullScale(block.left) || !isWithinFullScale(block.right))
                      m_isFaulty = true;
                  // Lets the other thread in on a machine with one core.
                  std::this_thread::yield();
              }
          })
    {
    }
    ~AudioThread() { join(); }
    AudioThread(const AudioThread&) = delete;
    AudioThread& operator=(const AudioThread&) = delete;

    void join()
    {
        m_isEnding = true;
        if (m_thread.joinable())
            m_thread.join();
    }

    [[nodiscard]] bool isFaulty() const { return m_isFaulty; }

private:
    static bool isWithinFullScale(const std::vector<float>& samples)
    {
        return std::ranges::all_of(samples, [](float sample) { return std::abs(sample) <= 1.0F; });
    }

    std::atomic<bool> m_isFaulty = false;
    std::atomic<bool> m_isEnding = false;
    std::thread m_thread; // Last: it uses the others.
};

TEST(MixerThread, ReportsEverySoundExactlyOnceWhateverTheMainThreadDoes)
{
    constexpr std::uint32_t soundCount = 20'000;
    Mixer mixer;
    std::vector<std::vector<float>> sounds(soundCount); // Empty again once the mixer let go.
    std::vector<int> reports(soundCount, 0);
    AudioThread audioThread(mixer);

    std::uint32_t finished = 0;
    const auto takeFinished = [&] {
        while (const auto sound = mixer.takeFinished()) {
            ++reports[*sound];
            ++finished;
            std::fill(sounds[*sound].begin(), sounds[*sound].end(), 1e9F);
            std::vector<float>().swap(sounds[*sound]);
        }
    };
    for (std::uint32_t sound = 0; sound < soundCount; ++sound) {
        sounds[sound].assign(sound % 300, 0.25F);
        while (!mixer.start(sound % Mixer::voiceCount,
                            {.samples = sounds[sound], .left = 1, .right = 0.5F, .sound = sound})) {
            takeFinished();
            std::this_thread::yield();
        }
        mixer.setVolume(static_cast<float>(sound % 10) / 10);
        if (sound % 1000 == 999)
            mixer.silence();
    }
    while (finished < soundCount) {
        takeFinished();
        std::this_thread::yield();
    }
    audioThread.join();

    EXPECT_THAT(reports, Each(1));
    EXPECT_FALSE(audioThread.isFaulty());
}

/// Played over a real second thread.
class SoundEngineThread : public SoundEngineFixture
{
};

TEST_F(SoundEngineThread, FreesBuffersOnTheMainThreadOnly)
{
    constexpr int soundCount = 2'000;
    std::atomic<int> freedHere = 0;
    std::atomic<int> freedElsewhere = 0;
    const auto sound = [&, mainThread = std::this_thread::get_id()] {
        return AudioBufferPtr(new AudioBuffer(std::vector<float>(50, 0.01F)),
                              [&, mainThread](const AudioBuffer* buffer) {
                                  const bool isHere = std::this_thread::get_id() == mainThread;
                                  ++(isHere ? freedHere : freedElsewhere);
                                  delete buffer;
                              });
    };
    engine();
    AudioThread audioThread(output);

    for (int i = 0; i < soundCount; ++i) {
        engine().play(sound(), 0, 1);
        std::this_thread::yield();
    }
    while (freedHere + freedElsewhere < soundCount - 1) {
        engine().play(steady(0, 1), 0, 1); // Collects what has been played.
        std::this_thread::yield();
    }
    audioThread.join();
    destroyEngine();

    EXPECT_EQ(freedHere, soundCount);
    EXPECT_EQ(freedElsewhere, 0);
    EXPECT_FALSE(audioThread.isFaulty());
}

} // namespace
} // namespace clavo
