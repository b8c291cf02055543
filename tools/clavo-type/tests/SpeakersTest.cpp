// SPDX-License-Identifier: MIT
#include "clavo-type/Speakers.h"

#include "eventloop/EventLoop.h"
#include "fakes/FakeAudioOutput.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace clavo
{
namespace
{

TEST(Speakers, SayThatNoSoundServerAnswers)
{
    const EventLoop loop;
    FakeAudioOutput output;
    output.setServer(false);

    EXPECT_THAT(
        [&] {
            play(
                {}, SoundBank(), 0, output, [](std::size_t) {}, std::chrono::milliseconds(0));
        },
        testing::ThrowsMessage<std::runtime_error>(
            "no sound server answers; -o FILE writes a file without one"));
}

} // namespace
} // namespace clavo
