// SPDX-License-Identifier: MIT
#include "platform/pipewire/PipeWireOutput.h"

#include "audio/output/ServerOutput.h"
#include "audio/realtime/Mixer.h"
#include "audio/realtime/SharedWithAudio.h"
#include "loop/QtTimer.h"
#include "platform/pipewire/RealtimeContext.h"
#include "synth/AudioBuffer.h"

#include <QObject>
#include <QSocketNotifier>

#include <fmt/format.h>
#include <pipewire/pipewire.h>
#include <spa/param/audio/format-utils.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <span>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::uint32_t channels = 2;

/// One cycle of the graph, as its present driver runs it.
struct Period {
    std::uint32_t frames = 0;
    std::uint32_t rate = 0;

    bool operator==(const Period&) const = default;
};

/// The state that the data thread uses.
struct Renderer {
    pw_stream* stream = nullptr;
    pw_loop* mainLoop = nullptr;
    spa_source* periodChanged = nullptr; // An event of the main loop.
    SharedWithAudio<Mixer> mixer;
    /// Written by the driver, in memory shared with it.
    SharedWithAudio<const spa_io_position> position;
    std::atomic<Period> period; // Of the last cycle.
    static_assert(std::atomic<Period>::is_always_lock_free);
};

/// The frames asked for, in the buffer's own memory; no frames if the buffer is not what was
/// negotiated.
StereoBlock blockIn(const pw_buffer& buffer) noexcept CLAVO_NONBLOCKING
{
    const auto& parts = *buffer.buffer;
    if (parts.n_datas < channels || !parts.datas[0].data || !parts.datas[1].data)
        return {};
    const std::size_t room =
        std::min(parts.datas[0].maxsize, parts.datas[1].maxsize) / sizeof(float);
    const auto frames = buffer.requested ? std::min<std::size_t>(buffer.requested, room) : room;
    return {.left = {static_cast<float*>(parts.datas[0].data), frames},
            .right = {static_cast<float*>(parts.datas[1].data), frames}};
}

Period periodOf(const spa_io_position* position) noexcept CLAVO_NONBLOCKING
{
    if (!position)
        return {};
    return {.frames = static_cast<std::uint32_t>(position->clock.duration),
            .rate = position->clock.rate.denom};
}

void renderInto(StereoBlock out, Mixer* mixer) noexcept CLAVO_NONBLOCKING
{
    if (mixer) {
        mixer->render(out);
    } else {
        std::ranges::fill(out.left, 0.0F);
        std::ranges::fill(out.right, 0.0F);
    }
}

/// Fills one buffer with exactly the frames that the rate conversion asks for, so that nothing is
/// ever queued beyond the cycle. Thread: data, once a cycle.
///
/// foreign calls: dequeue and queue move an index between two rings of the stream; the event, one
/// write to an eventfd, is raised only by a cycle whose period differs from the last one's.
void renderCycle(Renderer& renderer) noexcept
{
    auto* const buffer = pw_stream_dequeue_buffer(renderer.stream);
    if (!buffer)
        return;

    const auto out = blockIn(*buffer);
    renderer.mixer.access([out](Mixer* mixer) { renderInto(out, mixer); });

    buffer->size = out.frames();
    for (auto& part : std::span(buffer->buffer->datas, buffer->buffer->n_datas)) {
        part.chunk->offset = 0;
        part.chunk->stride = sizeof(float);
        part.chunk->size = static_cast<std::uint32_t>(out.frames() * sizeof(float));
    }
    pw_stream_queue_buffer(renderer.stream, buffer);

    Period period;
    renderer.position.access([&period](const auto* position) { period = periodOf(position); });
    if (period != renderer.period.load(std::memory_order_relaxed)) {
        renderer.period.store(period, std::memory_order_relaxed);
        pw_loop_signal_event(renderer.mainLoop, renderer.periodChanged);
    }
}

pw_properties* propertiesOf(std::uint32_t quantumFrames)
{
    // No role: the session would share the remembered volume with every other program of that role.
    // No rate of the graph either: a stream that is nearly always there would decide it for all.
    // The quality of the rate conversion stays the desktop's, usually 4: from 44.1 to 48 kHz a peak
    // is 0.7 ms late. At 1 it is 0.3 ms late, but 14 kHz comes out 4 dB and 16 kHz 10 dB lower.
    auto* const properties =
        pw_properties_new(PW_KEY_APP_NAME, "Clavo", PW_KEY_APP_ID, "clavo", PW_KEY_APP_ICON_NAME,
                          "app.clavo.Clavo", PW_KEY_NODE_NAME, "Clavo", PW_KEY_MEDIA_NAME, "Clavo",
                          PW_KEY_MEDIA_TYPE, "Audio", PW_KEY_MEDIA_CATEGORY, "Playback", nullptr);
    pw_properties_set(properties, PW_KEY_NODE_LATENCY,
                      fmt::format("{}/{}", quantumFrames, samplesPerSecond).c_str());
    return properties;
}

const spa_pod* formatIn(std::span<std::uint8_t> memory)
{
    spa_audio_info_raw format{};
    format.format = SPA_AUDIO_FORMAT_F32P;
    format.rate = samplesPerSecond;
    format.channels = channels;
    format.position[0] = SPA_AUDIO_CHANNEL_FL;
    format.position[1] = SPA_AUDIO_CHANNEL_FR;
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), static_cast<std::uint32_t>(memory.size()));
    return spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format);
}

/// A loop inside the Qt main loop, so that all of PipeWire's events arrive on the main thread, and
/// a context with the real-time data thread. Needs no server until it connects.
class PipeWireClient
{
public:
    PipeWireClient()
    {
        pw_init(nullptr, nullptr);
        m_loop = pw_loop_new(nullptr);
        if (!m_loop)
            return;
        // The loop stays entered: what the data thread hands to it then waits for this thread
        // instead of being run on the other one.
        pw_loop_enter(m_loop);
        m_readable =
            std::make_unique<QSocketNotifier>(pw_loop_get_fd(m_loop), QSocketNotifier::Read);
        QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(),
                         [this] { pw_loop_iterate(m_loop, 0); });
        m_context = newRealtimeContext(m_loop);
    }

    ~PipeWireClient()
    {
        if (m_context)
            pw_context_destroy(m_context);
        m_readable.reset();
        if (m_loop) {
            pw_loop_leave(m_loop);
            pw_loop_destroy(m_loop);
        }
        pw_deinit();
    }

    PipeWireClient(const PipeWireClient&) = delete;
    PipeWireClient& operator=(const PipeWireClient&) = delete;

    /// A new connection, null if there is no server. The caller disconnects it.
    [[nodiscard]] pw_core* connect()
    {
        return m_context ? pw_context_connect(m_context, nullptr, 0) : nullptr;
    }

    /// Not null if there is a connection.
    [[nodiscard]] pw_loop* loop() const { return m_loop; }

private:
    pw_loop* m_loop = nullptr;
    pw_context* m_context = nullptr;
    std::unique_ptr<QSocketNotifier> m_readable;
};

/// One connection to PipeWire with one stream. Owns: the core.
class PipeWireStream final : public ServerStream
{
public:
    PipeWireStream(pw_loop* mainLoop, pw_core& core, std::uint32_t quantumFrames,
                   std::function<void()> changed)
        : m_changed(std::move(changed)), m_core(&core)
    {
        static const auto coreEvents = [] {
            pw_core_events events{};
            events.version = PW_VERSION_CORE_EVENTS;
            events.error = onCoreError;
            return events;
        }();
        static const auto streamEvents = [] {
            pw_stream_events events{};
            events.version = PW_VERSION_STREAM_EVENTS;
            events.state_changed = onState;
            events.io_changed = onIo;
            events.process = onProcess;
            return events;
        }();

        pw_core_add_listener(m_core, &m_coreHook, &coreEvents, this);
        m_renderer.mainLoop = mainLoop;
        m_renderer.periodChanged = pw_loop_add_event(mainLoop, onPeriod, this);
        m_renderer.stream = pw_stream_new(m_core, "Clavo", propertiesOf(quantumFrames));
        if (!m_renderer.stream) {
            breakDown();
            return;
        }
        pw_stream_add_listener(m_renderer.stream, &m_streamHook, &streamEvents, this);

        std::array<std::uint8_t, 512> memory;
        std::array<const spa_pod*, 1> formats{formatIn(memory)};
        const auto flags = static_cast<pw_stream_flags>(
            PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS);
        if (pw_stream_connect(m_renderer.stream, PW_DIRECTION_OUTPUT, PW_ID_ANY, flags,
                              formats.data(), formats.size()) < 0)
            breakDown();
    }

    ~PipeWireStream() override
    {
        m_changed = [] {};
        m_renderer.mixer.publish(nullptr);
        if (m_renderer.stream)
            pw_stream_destroy(m_renderer.stream); // Waits for the running cycle.
        spa_hook_remove(&m_coreHook);
        pw_core_disconnect(m_core);
        pw_loop_destroy_source(m_renderer.mainLoop, m_renderer.periodChanged);
    }

    PipeWireStream(const PipeWireStream&) = delete;
    PipeWireStream& operator=(const PipeWireStream&) = delete;

    void play(Mixer* mixer) override { m_renderer.mixer.publish(mixer); }
    void activate() override { pw_stream_set_active(m_renderer.stream, true); }
    void deactivate() override { pw_stream_set_active(m_renderer.stream, false); }

    [[nodiscard]] ServerStream::State state() const override
    {
        if (m_isBroken)
            return State::broken;
        const bool hasCycles = m_renderer.period.load(std::memory_order_relaxed).rate != 0;
        return m_isStreaming && hasCycles ? State::streaming : State::waiting;
    }

    [[nodiscard]] OutputStatus status() const override
    {
        const auto period = m_renderer.period.load(std::memory_order_relaxed);
        return {.server = "PipeWire", .quantumFrames = period.frames, .sampleRate = period.rate};
    }

private:
    static void onCoreError(void* data, std::uint32_t id, int, int result, const char*)
    {
        if (id == PW_ID_CORE && result == -EPIPE)
            static_cast<PipeWireStream*>(data)->breakDown();
    }

    static void onState(void* data, pw_stream_state, pw_stream_state state, const char*)
    {
        auto& self = *static_cast<PipeWireStream*>(data);
        self.m_isStreaming = state == PW_STREAM_STATE_STREAMING;
        if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED)
            self.breakDown();
        self.m_changed();
    }

    static void onIo(void* data, std::uint32_t id, void* area, std::uint32_t size)
    {
        if (id != SPA_IO_Position)
            return;
        const bool isWhole = area && size >= sizeof(spa_io_position);
        static_cast<PipeWireStream*>(data)->m_renderer.position.publish(
            isWhole ? static_cast<const spa_io_position*>(area) : nullptr);
    }

    static void onProcess(void* data)
    {
        renderCycle(static_cast<PipeWireStream*>(data)->m_renderer);
    }

    static void onPeriod(void* data, std::uint64_t)
    {
        static_cast<PipeWireStream*>(data)->m_changed();
    }

    void breakDown()
    {
        m_isBroken = true;
        m_changed();
    }

    Renderer m_renderer;
    std::function<void()> m_changed;
    pw_core* m_core;
    spa_hook m_coreHook{};
    spa_hook m_streamHook{};
    bool m_isStreaming = false;
    bool m_isBroken = false;
};

} // namespace

std::unique_ptr<ServerBackedOutput> makePipeWireOutput(std::uint32_t quantumFrames)
{
    // The client is created when it is first needed.
    return makeServerOutput(
        [client = std::shared_ptr<PipeWireClient>(),
         quantumFrames](std::function<void()> changed) mutable -> std::unique_ptr<ServerStream> {
            if (!client)
                client = std::make_shared<PipeWireClient>();
            auto* const core = client->connect();
            if (!core)
                return nullptr;
            return std::make_unique<PipeWireStream>(client->loop(), *core, quantumFrames,
                                                    std::move(changed));
        },
        makeQtTimer(), makeQtTimer());
}

} // namespace clavo
