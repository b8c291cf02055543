// SPDX-License-Identifier: MIT
#include "platform/pulse/PulseOutput.h"

#include "audio/output/ServerOutput.h"
#include "audio/realtime/Mixer.h"
#include "loop/QtTimer.h"
#include "synth/AudioBuffer.h"

#include <QObject>
#include <QSocketNotifier>

#include <pulse/pulseaudio.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::size_t blockFrames = 1024;

struct Frame {
    float left = 0;
    float right = 0;
};

/// The lock of the library's thread, which guards the context and the stream.
class Lock
{
public:
    explicit Lock(pa_threaded_mainloop* loop) : m_loop(loop) { pa_threaded_mainloop_lock(m_loop); }
    ~Lock() { pa_threaded_mainloop_unlock(m_loop); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    pa_threaded_mainloop* m_loop;
};

/// Leaves an operation to the server without waiting for its outcome.
void forget(pa_operation* operation)
{
    if (operation)
        pa_operation_unref(operation);
}

/// One connection to a PulseAudio server with one stream, and the thread of its callbacks.
class PulseStream final : public ServerStream
{
public:
    PulseStream(std::uint32_t quantumFrames, std::function<void()> changed)
        : m_quantumFrames(quantumFrames), m_changed(std::move(changed)),
          m_stateChanged(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
          m_notifier(m_stateChanged, QSocketNotifier::Read)
    {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
            eventfd_t count = 0;
            eventfd_read(m_stateChanged, &count);
            m_changed();
        });
    }

    ~PulseStream() override
    {
        if (m_loop)
            pa_threaded_mainloop_stop(m_loop);
        if (m_stream) {
            pa_stream_disconnect(m_stream);
            pa_stream_unref(m_stream);
        }
        if (m_context) {
            pa_context_disconnect(m_context);
            pa_context_unref(m_context);
        }
        if (m_loop)
            pa_threaded_mainloop_free(m_loop);
        close(m_stateChanged);
    }

    PulseStream(const PulseStream&) = delete;
    PulseStream& operator=(const PulseStream&) = delete;

    /// False when there is no server. No server is started.
    [[nodiscard]] bool connect()
    {
        m_loop = pa_threaded_mainloop_new();
        if (!m_loop)
            return false;
        auto* const properties = pa_proplist_new();
        pa_proplist_sets(properties, PA_PROP_APPLICATION_ID, "clavo");
        pa_proplist_sets(properties, PA_PROP_APPLICATION_ICON_NAME, "app.clavo.Clavo");
        m_context =
            pa_context_new_with_proplist(pa_threaded_mainloop_get_api(m_loop), "Clavo", properties);
        pa_proplist_free(properties);
        if (!m_context)
            return false;
        pa_context_set_state_callback(
            m_context,
            [](pa_context* of, void* data) {
                auto& self = *static_cast<PulseStream*>(data);
                if (pa_context_get_state(of) == PA_CONTEXT_READY)
                    self.openStream();
                else if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(of)))
                    self.wakeMainThread();
            },
            this);
        return pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) >= 0 &&
               pa_threaded_mainloop_start(m_loop) >= 0;
    }

    void play(Mixer* mixer) override
    {
        const Lock lock(m_loop); // Waits for a running callback.
        m_mixer = mixer;
    }

    void activate() override
    {
        const Lock lock(m_loop);
        forget(pa_stream_cork(m_stream, 0, nullptr, nullptr));
    }

    void deactivate() override
    {
        const Lock lock(m_loop);
        forget(pa_stream_cork(m_stream, 1, nullptr, nullptr));
    }

    [[nodiscard]] ServerStream::State state() const override
    {
        const Lock lock(m_loop);
        if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context)) ||
            (m_stream && !PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream))))
            return State::broken;
        const bool plays = m_hasStarted && pa_stream_is_suspended(m_stream) == 0;
        return plays ? State::streaming : State::waiting;
    }

    [[nodiscard]] OutputStatus status() const override
    {
        const Lock lock(m_loop);
        const auto* const granted = pa_stream_get_buffer_attr(m_stream);
        return {.server = "PulseAudio",
                .quantumFrames =
                    granted ? granted->minreq / static_cast<std::uint32_t>(sizeof(Frame)) : 0,
                .sampleRate = samplesPerSecond};
    }

private:
    // Thread: the library's, with its lock held.

    void openStream()
    {
        const pa_sample_spec format{
            .format = PA_SAMPLE_FLOAT32NE, .rate = samplesPerSecond, .channels = 2};
        // No media role: the session would share the remembered volume with every program of that
        // role.
        m_stream = pa_stream_new(m_context, "Clavo", &format, nullptr);
        if (!m_stream) {
            pa_context_disconnect(m_context);
            return;
        }
        const auto wake = [](pa_stream*, void* data) {
            static_cast<PulseStream*>(data)->wakeMainThread();
        };
        pa_stream_set_state_callback(m_stream, wake, this);
        pa_stream_set_started_callback(
            m_stream,
            [](pa_stream*, void* data) {
                auto& self = *static_cast<PulseStream*>(data);
                self.m_hasStarted = true;
                self.wakeMainThread();
            },
            this);
        pa_stream_set_moved_callback(m_stream, wake, this);
        pa_stream_set_suspended_callback(m_stream, wake, this);
        pa_stream_set_buffer_attr_callback(m_stream, wake, this);
        pa_stream_set_write_callback(
            m_stream,
            [](pa_stream*, std::size_t bytes, void* data) {
                static_cast<PulseStream*>(data)->write(bytes);
            },
            this);

        // One request plays while the next is on its way. PulseAudio's null sink is reached in 5.5
        // ms with that; PipeWire as the PulseAudio server keeps 17 ms, whatever is requested.
        constexpr auto serversChoice = static_cast<std::uint32_t>(-1);
        const auto quantum = static_cast<std::uint32_t>(m_quantumFrames * sizeof(Frame));
        const pa_buffer_attr buffering{.maxlength = serversChoice,
                                       .tlength = 2 * quantum,
                                       .prebuf = serversChoice,
                                       .minreq = quantum,
                                       .fragsize = serversChoice};
        pa_stream_connect_playback(m_stream, nullptr, &buffering, PA_STREAM_ADJUST_LATENCY, nullptr,
                                   nullptr);
    }

    void renderInto(std::span<Frame> out) noexcept
    {
        while (!out.empty()) {
            const auto frames = std::min(out.size(), blockFrames);
            m_mixer->render({.left = std::span(m_left).first(frames),
                             .right = std::span(m_right).first(frames)});
            for (std::size_t i = 0; i < frames; ++i)
                out[i] = {.left = m_left[i], .right = m_right[i]};
            out = out.subspan(frames);
        }
    }

    /// foreign calls: the library hands out memory shared with the server and queues it again. It
    /// takes memory from its own pool and sends a message; that is the only way it offers.
    void write(std::size_t bytes) noexcept
    {
        while (bytes > 0) {
            void* memory = nullptr;
            auto room = bytes;
            if (pa_stream_begin_write(m_stream, &memory, &room) < 0 || room < sizeof(Frame))
                return;
            const std::span out(static_cast<Frame*>(memory), room / sizeof(Frame));
            if (m_mixer)
                renderInto(out);
            else
                std::ranges::fill(out, Frame{});
            if (pa_stream_write(m_stream, memory, out.size_bytes(), nullptr, 0, PA_SEEK_RELATIVE) <
                0)
                return;
            bytes -= std::min(bytes, out.size_bytes());
        }
    }

    void wakeMainThread() const { eventfd_write(m_stateChanged, 1); }

    const std::uint32_t m_quantumFrames;
    const std::function<void()> m_changed;
    const int m_stateChanged; // An eventfd.
    QSocketNotifier m_notifier;
    pa_threaded_mainloop* m_loop = nullptr;
    pa_context* m_context = nullptr;

    // Under the lock.
    pa_stream* m_stream = nullptr;
    bool m_hasStarted = false; // The device has taken the first frames.
    Mixer* m_mixer = nullptr;
    std::array<float, blockFrames> m_left{};
    std::array<float, blockFrames> m_right{};
};

} // namespace

std::unique_ptr<ServerBackedOutput> makePulseOutput(std::uint32_t quantumFrames)
{
    return makeServerOutput(
        [quantumFrames](std::function<void()> changed) {
            auto stream = std::make_unique<PulseStream>(quantumFrames, std::move(changed));
            return stream->connect() ? std::move(stream) : nullptr;
        },
        makeQtTimer(), makeQtTimer());
}

} // namespace clavo
