// SPDX-License-Identifier: MIT
#include "latency/Graph.h"

#include "latency/Deadlines.h"
#include "platform/pipewire/RealtimeContext.h"

#include <pipewire/pipewire.h>
#include <spa/param/audio/format-utils.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstring>
#include <span>
#include <thread>

namespace clavo::latency
{
namespace
{

constexpr std::uint32_t rate = 48000;
constexpr std::size_t bytesPerFrame = 2 * sizeof(float);
constexpr std::size_t shortestCycle = 32; // Frames; the virtual desktop allows no less.
constexpr std::size_t impulses = 16;
constexpr std::size_t cyclesPerImpulse = 16;
constexpr float impulseLevel = 0.5F;

Cycle currentCycle(pw_stream* stream)
{
    pw_time time = {};
    pw_stream_get_time_n(stream, &time, sizeof time);
    return {.start = Moment(nanoseconds(time.now)), .position = time.ticks};
}

/// The cycles of impulses that were played, written by the audio thread.
struct ImpulseTrain {
    pw_stream* stream = nullptr;
    spa_hook listener = {};
    std::size_t cycle = 0;
    std::array<Moment, impulses> played = {};
    std::atomic<std::size_t> count = 0;

    void process() noexcept
    {
        auto* const buffer = pw_stream_dequeue_buffer(stream);
        if (buffer == nullptr)
            return;
        auto& data = buffer->buffer->datas[0];
        const auto room = data.maxsize / bytesPerFrame;
        const auto frames =
            buffer->requested > 0 ? std::min<std::size_t>(buffer->requested, room) : room;
        const std::span samples(static_cast<float*>(data.data), 2 * frames);
        std::ranges::fill(samples, 0.0F);
        const auto done = count.load(std::memory_order_relaxed);
        if (++cycle % cyclesPerImpulse == 0 && done < impulses) {
            samples[0] = samples[1] = impulseLevel;
            played.at(done) = currentCycle(stream).start;
            count.store(done + 1, std::memory_order_release);
        }
        data.chunk->offset = 0;
        data.chunk->stride = bytesPerFrame;
        data.chunk->size = static_cast<std::uint32_t>(frames * bytesPerFrame);
        pw_stream_queue_buffer(stream, buffer);
    }
};

template <typename Client> const pw_stream_events& processEvents()
{
    static const pw_stream_events events = [] {
        pw_stream_events wanted = {};
        wanted.version = PW_VERSION_STREAM_EVENTS;
        wanted.process = [](void* self) { static_cast<Client*>(self)->process(); };
        return wanted;
    }();
    return events;
}

pw_stream* newStream(pw_core* core, const char* name, spa_direction direction, const char* latency,
                     spa_hook& listener, const pw_stream_events& events, void* self)
{
    const bool isRecorder = direction == SPA_DIRECTION_INPUT;
    auto* const properties = pw_properties_new(PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CATEGORY,
                                               isRecorder ? "Capture" : "Playback",
                                               PW_KEY_NODE_NAME, name, PW_KEY_TARGET_OBJECT,
                                               "clavo-sink", PW_KEY_NODE_LATENCY, latency, nullptr);
    if (isRecorder)
        pw_properties_set(properties, PW_KEY_STREAM_CAPTURE_SINK, "true");
    auto* const stream = pw_stream_new(core, name, properties);
    pw_stream_add_listener(stream, &listener, &events, self);

    std::array<std::uint8_t, 1024> memory;
    spa_pod_builder builder = {};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    spa_audio_info_raw format = {};
    format.format = SPA_AUDIO_FORMAT_F32;
    format.rate = rate;
    format.channels = 2;
    format.position[0] = SPA_AUDIO_CHANNEL_FL;
    format.position[1] = SPA_AUDIO_CHANNEL_FR;
    const spa_pod* parameters[] = {
        spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format)};
    const auto flags = static_cast<pw_stream_flags>(
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS);
    pw_stream_connect(stream, direction, PW_ID_ANY, flags, parameters, 1);
    return stream;
}

} // namespace

struct Graph::State {
    pw_thread_loop* loop = nullptr;
    pw_context* context = nullptr;
    pw_core* core = nullptr;
    pw_stream* stream = nullptr;
    spa_hook listener = {};
    Deadlines deadlines;

    // Written by the audio thread up to the counts, read by the caller below them.
    std::vector<float> samples;
    std::vector<Cycle> cycles;
    std::atomic<std::size_t> frameCount = 0;
    std::atomic<std::size_t> cycleCount = 0;
    std::size_t framesHeard = 0; // By takePeak().

    void process() noexcept
    {
        auto* const buffer = pw_stream_dequeue_buffer(stream);
        if (buffer == nullptr)
            return;
        const auto& data = buffer->buffer->datas[0];
        const auto first = frameCount.load(std::memory_order_relaxed);
        const auto index = cycleCount.load(std::memory_order_relaxed);
        const std::size_t frames = data.chunk->size / bytesPerFrame;
        if (2 * (first + frames) <= samples.size() && index < cycles.size()) {
            const auto* const from = static_cast<const std::byte*>(data.data) + data.chunk->offset;
            std::memcpy(samples.data() + 2 * first, from, frames * bytesPerFrame);
            cycles[index] = currentCycle(stream);
            cycles[index].firstFrame = first;
            cycles[index].frames = static_cast<std::uint32_t>(frames);
            frameCount.store(first + frames, std::memory_order_release);
            cycleCount.store(index + 1, std::memory_order_release);
        }
        pw_stream_queue_buffer(stream, buffer);
    }

    [[nodiscard]] Recording recorded() const
    {
        const auto cyclesDone = cycleCount.load(std::memory_order_acquire);
        const auto framesDone = frameCount.load(std::memory_order_acquire);
        Recording recording;
        recording.rate = rate;
        recording.samples.assign(samples.begin(),
                                 samples.begin() + static_cast<std::ptrdiff_t>(2 * framesDone));
        recording.cycles.assign(cycles.begin(),
                                cycles.begin() + static_cast<std::ptrdiff_t>(cyclesDone));
        return recording;
    }
};

Graph::Graph() : m_state(std::make_unique<State>()) {}

std::unique_ptr<Graph> Graph::open(std::chrono::seconds longest)
{
    pw_init(nullptr, nullptr);
    std::unique_ptr<Graph> graph(new Graph);
    auto& state = *graph->m_state;
    const auto frames = static_cast<std::size_t>(longest.count()) * rate;
    state.samples.resize(2 * frames);
    state.cycles.resize(frames / shortestCycle);

    state.loop = pw_thread_loop_new("clavo-latency", nullptr);
    state.context = newRealtimeContext(pw_thread_loop_get_loop(state.loop));
    if (state.context == nullptr || pw_thread_loop_start(state.loop) < 0)
        return nullptr;
    pw_thread_loop_lock(state.loop);
    state.core = pw_context_connect(state.context, nullptr, 0);
    if (state.core != nullptr) {
        // The smallest wish in the graph wins, so this one must not have a say.
        state.stream = newStream(state.core, "clavo-latency", SPA_DIRECTION_INPUT, "8192/48000",
                                 state.listener, processEvents<State>(), &state);
        state.deadlines.watch(state.core);
    }
    pw_thread_loop_unlock(state.loop);

    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (state.core != nullptr && state.cycleCount == 0) {
        if (std::chrono::steady_clock::now() > deadline)
            return nullptr;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return state.core != nullptr ? std::move(graph) : nullptr;
}

Graph::~Graph()
{
    auto& state = *m_state;
    if (state.loop != nullptr)
        pw_thread_loop_stop(state.loop);
    state.deadlines.stop();
    if (state.stream != nullptr)
        pw_stream_destroy(state.stream);
    if (state.core != nullptr)
        pw_core_disconnect(state.core);
    if (state.context != nullptr)
        pw_context_destroy(state.context);
    if (state.loop != nullptr)
        pw_thread_loop_destroy(state.loop);
}

float Graph::takePeak()
{
    auto& state = *m_state;
    const auto end = state.frameCount.load(std::memory_order_acquire);
    float highest = 0;
    for (auto i = 2 * state.framesHeard; i < 2 * end; ++i)
        highest = std::max(highest, std::abs(state.samples[i]));
    state.framesHeard = end;
    return highest;
}

std::uint32_t Graph::quantum() const
{
    const auto count = m_state->cycleCount.load(std::memory_order_acquire);
    return m_state->cycles[count - 1].frames;
}

std::vector<Missed> Graph::takeMissedDeadlines()
{
    auto& state = *m_state;
    pw_thread_loop_lock(state.loop);
    auto missed = state.deadlines.takeMissed();
    pw_thread_loop_unlock(state.loop);
    return missed;
}

std::optional<std::uint32_t> Graph::measureCyclesLate()
{
    auto& state = *m_state;
    ImpulseTrain train;
    pw_thread_loop_lock(state.loop);
    train.stream = newStream(state.core, "clavo-latency impulses", SPA_DIRECTION_OUTPUT,
                             "128/48000", train.listener, processEvents<ImpulseTrain>(), &train);
    pw_thread_loop_unlock(state.loop);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (train.count < impulses && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    std::this_thread::sleep_for(std::chrono::milliseconds(100)); // The last one passes the monitor.
    pw_thread_loop_lock(state.loop);
    pw_stream_destroy(train.stream);
    pw_thread_loop_unlock(state.loop);
    if (train.count < impulses)
        return {};

    const auto recording = state.recorded();
    const auto& cycles = recording.cycles;
    std::array<std::size_t, 4> votes = {}; // By the cycles between playing and hearing.
    for (const auto moment : train.played) {
        const auto played = std::ranges::find(cycles, moment, &Cycle::start);
        const auto heard = std::find_if(played, cycles.end(), [&](const Cycle& cycle) {
            return recording.peak(cycle.firstFrame, cycle.firstFrame + cycle.frames) > 0;
        });
        // It was the first frame of its period.
        if (heard == cycles.end() || recording.level(heard->firstFrame) < impulseLevel / 2)
            continue;
        const auto late = static_cast<std::size_t>(heard - played);
        if (late < votes.size())
            ++votes.at(late);
    }
    // A machine under load loses a period now and then.
    const auto most = std::ranges::max_element(votes);
    if (*most < impulses * 3 / 4)
        return {};
    return static_cast<std::uint32_t>(most - votes.begin());
}

Recording Graph::stop()
{
    auto& state = *m_state;
    pw_thread_loop_lock(state.loop);
    pw_stream_disconnect(state.stream);
    pw_thread_loop_unlock(state.loop);
    return state.recorded();
}

} // namespace clavo::latency
