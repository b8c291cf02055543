// SPDX-License-Identifier: MIT
#include "contracts/AudioOutputContract.h"

#include "fakes/FakeAudioOutput.h"
#include "platform/none/SilentOutput.h"

#include <chrono>
#include <thread>

namespace clavo
{
namespace
{

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds tooLong{30};

struct SilentHost {
    static std::unique_ptr<AudioOutput> make() { return makeSilentOutput(); }

    static bool until(const std::function<bool()>& isFulfilled)
    {
        for (const auto end = Clock::now() + tooLong; Clock::now() < end;) {
            if (isFulfilled())
                return true;
            goOn();
        }
        return false;
    }

    static bool isThere(const AudioOutput& output) { return output.isRunning(); }

    static void goOn() { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }
};

/// The fake's device runs whenever the test waits.
struct FakeHost {
    std::unique_ptr<AudioOutput> make()
    {
        auto output = std::make_unique<Watched>(*this);
        device = output.get();
        return output;
    }

    bool until(const std::function<bool()>& isFulfilled) const
    {
        constexpr int manyBlocks = 10'000;
        for (int block = 0; block < manyBlocks; ++block) {
            if (isFulfilled())
                return true;
            goOn();
        }
        return false;
    }

    static bool isThere(const AudioOutput& output) { return output.isRunning(); }

    void goOn() const
    {
        std::array<float, 64> left{};
        std::array<float, 64> right{};
        if (device)
            device->render({.left = left, .right = right});
    }

    struct Watched : FakeAudioOutput {
        explicit Watched(FakeHost& of) : host(of) {}
        ~Watched() override { host.device = nullptr; }
        FakeHost& host;
    };
    FakeAudioOutput* device = nullptr;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Silent, AudioOutputContract, SilentHost);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, AudioOutputContract, FakeHost);

} // namespace
} // namespace clavo
