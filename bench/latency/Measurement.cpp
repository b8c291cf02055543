// SPDX-License-Identifier: MIT
#include "latency/Measurement.h"

#include "latency/Clavo.h"
#include "latency/Graph.h"
#include "latency/Hearing.h"
#include "latency/Options.h"
#include "latency/Typing.h"
#include "latency/XTestKeyboard.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>
#include <thread>

namespace clavo::latency
{
namespace
{

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr float soundFloor = 0.01F; // -40 dB: nothing else sounds in the virtual desktop.
constexpr float clickOnset =
    0.1F; // Well inside a click, above the ripple of a resampler before it.
constexpr std::size_t mebibyte = 1024; // In the unit of Memory.
constexpr int exitUncertain = 3;       // A sound is missing and the recording has gaps.

/// What a measurement runs on.
struct Bench {
    std::unique_ptr<Graph> graph;
    std::unique_ptr<Clavo> clavo;
    Keyboard& keyboard;
    std::uint32_t cyclesLate = 0;
};

int fail(std::string_view reason)
{
    fmt::print(stderr, "clavo-latency: {}\n", reason);
    return EXIT_FAILURE;
}

void row(std::string_view name, std::string_view value)
{
    fmt::print("  {:<22}{}\n", name, value);
}

std::string milliseconds(nanoseconds time)
{
    return fmt::format("{:.2f} ms", std::chrono::duration<double, std::milli>(time).count());
}

std::string decibels(float level)
{
    return fmt::format("{:.3f} ({:.1f} dB)", level, 20 * std::log10(level));
}

std::string described(const std::vector<Missed>& missed)
{
    std::string text;
    for (const auto& [node, asleep, atWork] : missed)
        text += fmt::format("{}{} {} (asleep {}, at work {})", text.empty() ? "" : ", ", node,
                            asleep + atWork, asleep, atWork);
    return text.empty() ? "none" : text;
}

/// Presses a key until it is heard, which shows that Clavo listens and that its output runs.
bool waitUntilHeard(Bench& bench)
{
    const auto key = bench.keyboard.key('a').value();
    const auto deadline = steady_clock::now() + 20s;
    for (int heard = 0; heard < 3;) {
        if (steady_clock::now() > deadline || (bench.clavo && !bench.clavo->isRunning()))
            return false;
        static_cast<void>(bench.graph->takePeak());
        tap(bench.keyboard, key, 50ms);
        std::this_thread::sleep_for(100ms);
        heard = bench.graph->takePeak() > soundFloor ? heard + 1 : 0;
    }
    std::this_thread::sleep_for(300ms);
    return true;
}

bool writeRecording(const Options& options, const Recording& recording)
{
    if (options.wav.empty())
        return true;
    if (!writeWav(options.wav, recording))
        return false;
    row("recording", options.wav.string());
    return true;
}

int measureSounds(const Options& options, Bench& bench)
{
    const bool isClick = options.clavo && options.clavo->pack == Pack::click;
    // Real sounds may ring on until the next one.
    const auto listening = isClick ? Listening{clickOnset, 10ms} : Listening{soundFloor, 1ms};
    static_cast<void>(bench.graph->takeMissedDeadlines());
    static_cast<void>(bench.graph->takePeak());
    const auto text = options.text.empty() ? randomText(options.count) : options.text;
    const auto sent = isClick ? pressKeys(bench.keyboard, text) : typeText(bench.keyboard, text);
    std::this_thread::sleep_for(300ms);
    const auto quantum = bench.graph->quantum();
    const auto missed = bench.graph->takeMissedDeadlines();
    const auto peak = bench.graph->takePeak();
    auto recording = bench.graph->stop();
    recording.cyclesLate = bench.cyclesLate;

    std::vector<nanoseconds> pressLatencies;
    std::size_t heard = 0;
    for (std::size_t i = 0; i < sent.all.size(); ++i) {
        const auto next = i + 1 < sent.all.size() ? sent.all[i + 1] : sent.all[i] + 150ms;
        const auto found = latency(recording, sent.all[i], next, listening);
        heard += found ? 1 : 0;
        if (found && std::ranges::find(sent.presses, sent.all[i]) != sent.presses.end())
            pressLatencies.push_back(*found);
    }

    row("keys sent", std::to_string(sent.presses.size()));
    row("keys heard", std::to_string(pressLatencies.size()));
    if (!isClick)
        row("with releases", fmt::format("{} of {} sounds", heard, sent.all.size()));
    if (!pressLatencies.empty()) {
        const auto times = distribution(pressLatencies);
        row("latency median", milliseconds(times.median));
        row("latency 99 %", milliseconds(times.percentile99));
        row("latency maximum", milliseconds(times.maximum));
    }
    row("period", fmt::format("{} frames of {} a second", quantum, recording.rate));
    row("peak level", decibels(peak));
    row("missed deadlines", described(missed));
    const auto gaps = recording.gaps(sent.all.front());
    row("gaps in recording", std::to_string(gaps));
    if (!writeRecording(options, recording))
        return fail("the recording cannot be written");
    if (heard == sent.all.size())
        return EXIT_SUCCESS;
    return gaps > 0 ? exitUncertain : EXIT_FAILURE;
}

int measureFlood(const Options& options, Bench& bench)
{
    const auto key = bench.keyboard.key('a').value();
    static_cast<void>(bench.graph->takePeak());
    for (int i = 0; i < 10; ++i) {
        tap(bench.keyboard, key, 50ms);
        std::this_thread::sleep_for(50ms);
    }
    const auto height = bench.graph->takePeak();
    static_cast<void>(bench.graph->takeMissedDeadlines());

    auto other = XTestKeyboard::open();
    if (!other)
        return fail("there is no X server with the test extension");
    std::vector<nanoseconds> answers;
    std::atomic<bool> isOver = false;
    std::thread bystander([&] {
        while (!isOver) {
            answers.push_back(other->roundTrip());
            std::this_thread::sleep_for(2ms);
        }
    });
    const auto start = steady_clock::now();
    sendEvents(bench.keyboard, options.count, nanoseconds(1s) / options.count);
    const nanoseconds duration = steady_clock::now() - start;
    std::this_thread::sleep_for(500ms);
    isOver = true;
    bystander.join();

    const auto missed = bench.graph->takeMissedDeadlines();
    auto recording = bench.graph->stop();
    recording.cyclesLate = bench.cyclesLate;
    const auto heard = pulses(recording, recording.frameAt(start - 1ms), height);
    const auto sent = (options.count + 1) / 2;
    const auto times = distribution(answers);
    row("events sent", fmt::format("{} in {}", options.count, milliseconds(duration)));
    row("presses sent", std::to_string(sent));
    row("presses heard", std::to_string(heard));
    row("X server answers", fmt::format("median {}, maximum {}", milliseconds(times.median),
                                        milliseconds(times.maximum)));
    row("missed deadlines", described(missed));
    row("gaps in recording", std::to_string(recording.gaps(start)));
    if (!writeRecording(options, recording))
        return fail("the recording cannot be written");
    const bool isInTime = std::ranges::find(missed, "Clavo", &Missed::node) == missed.end();
    return heard == sent && isInTime ? EXIT_SUCCESS : EXIT_FAILURE;
}

int measureSoak(const Options& options, Bench& bench)
{
    constexpr std::size_t parts = 20;
    const auto print = [&](std::size_t sent) {
        const auto memory = bench.clavo->memory();
        row(fmt::format("{} events", sent), fmt::format("{:.1f} MiB resident, {:.1f} proportional",
                                                        double(memory.resident) / mebibyte,
                                                        double(memory.proportional) / mebibyte));
        return memory;
    };
    print(0);
    Memory settled;
    for (std::size_t part = 1; part <= parts; ++part) {
        sendEvents(bench.keyboard, options.count / parts, nanoseconds(1s) / 4000);
        if (part == 1 || part == parts)
            std::this_thread::sleep_for(1s);
        const auto sent = options.count / parts * part;
        if (part == 1)
            settled = print(sent);
        else if (part % 5 == 0)
            print(sent);
    }
    const auto after = bench.clavo->memory();
    if (!waitUntilHeard(bench))
        return fail("Clavo makes no sound any more");
    return after.resident <= settled.resident + mebibyte ? EXIT_SUCCESS : fail("the memory grew");
}

int run(const Options& options, Keyboard& keyboard)
{
    for (const char character : options.text + std::string(letters)) {
        if (!keyboard.key(character))
            return fail(fmt::format("no key types '{}' alone", character));
    }
    // A key of the longest kind of measurement takes 160 ms.
    auto graph = Graph::open(60s + std::chrono::seconds((options.count + options.text.size()) / 6));
    if (!graph)
        return fail("PipeWire's clavo-sink cannot be recorded");
    const auto cyclesLate = graph->measureCyclesLate();
    if (!cyclesLate)
        return fail("the sink's monitor does not keep step with the graph");

    std::unique_ptr<Clavo> clavo;
    if (options.clavo) {
        clavo = Clavo::start(*options.clavo);
        if (!clavo)
            return fail(options.clavo->program.string() + " cannot be started");
    }
    Bench bench{std::move(graph), std::move(clavo), keyboard, *cyclesLate};
    if (!waitUntilHeard(bench))
        return fail("Clavo makes no sound");
    switch (options.mode) {
    case Mode::keys:
    case Mode::text:
        return measureSounds(options, bench);
    case Mode::flood:
        return measureFlood(options, bench);
    case Mode::soak:
        break;
    }
    return measureSoak(options, bench);
}

} // namespace

int measure(std::span<char* const> commandLine,
            const std::function<std::unique_ptr<Keyboard>()>& openKeyboard)
try {
    const auto options = readOptions(commandLine.subspan(1));
    if (const auto* const answer = std::get_if<ToolOptions::Answer>(&options))
        return answer->give();
    return run(std::get<Options>(options), *openKeyboard());
} catch (const std::exception& exception) {
    return fail(exception.what());
}

} // namespace clavo::latency
