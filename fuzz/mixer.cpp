// SPDX-License-Identifier: MIT
// The mixer's commands, in any order and with any numbers.
#include "audio/realtime/Mixer.h"
#include "fuzz/Input.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>

using namespace clavo;
using fuzz::require;

namespace
{

/// A mixer, and the sounds that it has accepted and not let go of. One that it has let go of is
/// freed, so that reading it is noticed.
struct Desk {
    Mixer mixer;
    std::map<std::uint32_t, std::unique_ptr<float[]>> sounds;
    std::uint32_t started = 0;

    void start(fuzz::Input& input)
    {
        const auto voice = input.takeBelow(Mixer::voiceCount);
        const std::size_t length = input.take<std::uint16_t>() % 3000;
        const std::array<float, 2> pattern{input.take<float>(), input.take<float>()};
        auto samples = std::make_unique<float[]>(length);
        for (std::size_t i = 0; i < length; ++i)
            samples[i] = pattern[i % pattern.size()];
        const VoiceStart start{.samples = {samples.get(), length},
                               .left = input.take<float>(),
                               .right = input.take<float>(),
                               .sound = started};
        const bool isAccepted = mixer.start(voice, start);
        require(isAccepted == (sounds.size() < Mixer::soundLimit), "the limit alone refuses");
        if (isAccepted)
            sounds.emplace(started++, std::move(samples));
    }

    void render(std::size_t frames)
    {
        std::array<float, 512> left{};
        std::array<float, 512> right{};
        const StereoBlock block{std::span(left).first(frames), std::span(right).first(frames)};
        mixer.render(block);
        const auto isWithin = [](float sample) { return std::abs(sample) <= 1; };
        require(std::ranges::all_of(left, isWithin) && std::ranges::all_of(right, isWithin),
                "the output is finite and within full scale");
    }

    void takeFinished()
    {
        while (const auto sound = mixer.takeFinished())
            require(sounds.erase(*sound) == 1, "a sound is let go once");
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    Desk desk;
    while (!input.isEmpty()) {
        switch (input.takeBelow(8)) {
        case 0:
            desk.mixer.silence();
            break;
        case 1:
            desk.mixer.setVolume(input.take<float>());
            break;
        case 2:
        case 3:
            desk.render(input.take<std::uint16_t>() % 513);
            break;
        case 4:
            desk.takeFinished();
            break;
        default:
            desk.start(input);
        }
    }
    for (int frames = 0; frames < 3000; frames += 500)
        desk.render(500);
    desk.takeFinished();
    require(desk.sounds.empty(), "every accepted sound is let go");
    return 0;
}
