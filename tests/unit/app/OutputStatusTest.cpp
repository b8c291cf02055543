// SPDX-License-Identifier: MIT
#include "app/Status.h"

#include "audio/output/FallbackOutput.h"
#include "audio/realtime/Mixer.h"
#include "fakes/FakeAudioOutput.h"
#include "fakes/SimulatedTime.h"
#include "fakes/SteerableOutput.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using nlohmann::json;
using testing::HasSubstr;

/// The output that plays while there is no server.
class Silence : public FakeAudioOutput
{
public:
    [[nodiscard]] OutputStatus status() const override { return {}; }
};

/// The status of the output that the program has, over servers that the test steers.
class OutputStatusTest : public testing::Test
{
protected:
    OutputStatusTest()
    {
        auto first = std::make_unique<SteerableOutput>("PipeWire");
        auto second = std::make_unique<SteerableOutput>("PulseAudio");
        pipeWire = first.get();
        pulseAudio = second.get();
        std::vector<NamedOutput> candidates;
        candidates.push_back({"PipeWire", std::move(first)});
        candidates.push_back({"PulseAudio", std::move(second)});
        output = outputOver(std::move(candidates));
    }

    std::unique_ptr<AudioOutput> outputOver(std::vector<NamedOutput> candidates)
    {
        auto made = makeFallbackOutput(std::move(candidates), std::make_unique<Silence>(),
                                       time.makeTimer());
        made->prepare(mixer, [] {});
        return made;
    }

    [[nodiscard]] Status status() const
    {
        return {.output = output->status(), .isOutputRunning = output->isRunning()};
    }
    [[nodiscard]] json reported() const { return json::parse(jsonOf(status()))["output"]; }
    [[nodiscard]] std::string text() const { return describe(jsonOf(status())).value_or(""); }

    Mixer mixer;
    SimulatedTime time;
    SteerableOutput* pipeWire = nullptr;
    SteerableOutput* pulseAudio = nullptr;
    std::unique_ptr<AudioOutput> output;
};

TEST_F(OutputStatusTest, Playing)
{
    output->start();
    pipeWire->comeUp();

    EXPECT_EQ(reported()["state"], "playing");
    EXPECT_EQ(reported()["running"], true);
    EXPECT_THAT(text(),
                HasSubstr("Output:     PipeWire, 128 frames at 48000 per second, 2.7 ms\n"));
}

TEST_F(OutputStatusTest, AsleepWithItsServer)
{
    output->start();
    pipeWire->comeUp();
    output->pause();

    EXPECT_EQ(reported()["state"], "asleep");
    EXPECT_EQ(reported()["running"], false);
    EXPECT_THAT(text(), HasSubstr("2.7 ms; asleep until the next sound\n"));
}

TEST_F(OutputStatusTest, AsleepAfterItsServerWasLost)
{
    output->start();
    pipeWire->comeUp();
    output->pause();
    pipeWire->loseServer();

    EXPECT_EQ(reported()["state"], "asleep");
    EXPECT_THAT(text(), HasSubstr("Output:     none; asleep until the next sound\n"));
}

TEST_F(OutputStatusTest, SilentWhileNoServerAnswers)
{
    pipeWire->setServer(false);
    pulseAudio->setServer(false);
    output->start();

    EXPECT_EQ(reported()["state"], "searching");
    EXPECT_EQ(reported()["running"], false) << "nothing is heard";
    EXPECT_EQ(reported()["server"], json());
    EXPECT_THAT(text(), HasSubstr("Output:     none: neither PipeWire nor PulseAudio answers\n"));
}

TEST_F(OutputStatusTest, SilentAfterItsServerWasLost)
{
    pulseAudio->setServer(false);
    output->start();
    pipeWire->comeUp();
    pipeWire->loseServer();

    EXPECT_EQ(reported()["state"], "searching");
    EXPECT_EQ(reported()["running"], false);
}

TEST_F(OutputStatusTest, SilentWhileTheServerHasNoDevice)
{
    pulseAudio->setServer(false);
    output->start();
    pipeWire->comeUp();
    pipeWire->loseDevice();

    EXPECT_EQ(reported()["state"], "waiting");
    EXPECT_EQ(reported()["waitingFor"], "PipeWire");
    EXPECT_EQ(reported()["running"], false);
    EXPECT_THAT(text(), HasSubstr("Output:     none: PipeWire answers, but has no device\n"));
}

TEST_F(OutputStatusTest, SilentWhileTheOneServerThatIsWantedDoesNotAnswer)
{
    auto wanted = std::make_unique<SteerableOutput>("PulseAudio");
    wanted->setServer(false);
    std::vector<NamedOutput> candidates;
    candidates.push_back({"PulseAudio", std::move(wanted)});
    output = outputOver(std::move(candidates));
    output->start();

    EXPECT_THAT(text(), HasSubstr("Output:     none: PulseAudio does not answer\n"));
}

TEST_F(OutputStatusTest, OffWhereNoServerIsLookedFor)
{
    output = std::make_unique<Silence>(); // As CLAVO_AUDIO=none has it.
    output->prepare(mixer, [] {});
    EXPECT_EQ(reported()["state"], "off");

    output->start();

    EXPECT_EQ(reported()["state"], "off");
    EXPECT_EQ(reported()["running"], false);
    EXPECT_THAT(text(), HasSubstr("Output:     none: no sound server is looked for; CLAVO_AUDIO"));
}

} // namespace
} // namespace clavo
