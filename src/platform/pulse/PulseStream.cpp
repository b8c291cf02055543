// SPDX-License-Identifier: MIT
#include "platform/pulse/PulseStream.h"

#include "audio/realtime/Mixer.h"

#include <QSocketNotifier>

#include <pulse/pulseaudio.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <mutex>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::uint32_t sampleRate = 44100;
constexpr std::size_t blockFrames = 1024;

struct Frame {
    float left = 0;
    float right = 0;
};

/// The lock of the library's thread: whoever holds it is alone with the context and the stream.
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

/// Nobody waits for the outcome of what is asked of the server.
void forget(pa_operation* operation)
{
    if (operation)
        pa_operation_unref(operation);
}

} // namespace

struct PulseStream::Connection {
    Connection(std::uint32_t quantum, std::function<void()> onChange)
        : quantumFrames(quantum), changed(std::move(onChange)),
          stateChanged(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
          notifier(stateChanged, QSocketNotifier::Read)
    {
        QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [this] {
            eventfd_t count = 0;
            eventfd_read(stateChanged, &count);
            changed();
        });
    }

    ~Connection()
    {
        if (loop)
            pa_threaded_mainloop_stop(loop);
        if (stream) {
            pa_stream_disconnect(stream);
            pa_stream_unref(stream);
        }
        if (context) {
            pa_context_disconnect(context);
            pa_context_unref(context);
        }
        if (loop)
            pa_threaded_mainloop_free(loop);
        close(stateChanged);
    }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] bool connect();

    // Thread: the library's, with its lock held.
    void openStream();
    void renderInto(std::span<Frame> out) noexcept;
    void write(std::size_t bytes) noexcept;
    void tellMainThread() const { eventfd_write(stateChanged, 1); }

    const std::uint32_t quantumFrames;
    const std::function<void()> changed;
    const int stateChanged; // An eventfd.
    QSocketNotifier notifier;
    pa_threaded_mainloop* loop = nullptr;
    pa_context* context = nullptr;

    // Under the lock.
    pa_stream* stream = nullptr;
    bool hasStarted = false; // The device has taken the first frames.
    Mixer* mixer = nullptr;
    std::array<float, blockFrames> left{};
    std::array<float, blockFrames> right{};
};

bool PulseStream::Connection::connect()
{
    loop = pa_threaded_mainloop_new();
    if (!loop)
        return false;
    auto* const properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ID, "clavo");
    context = pa_context_new_with_proplist(pa_threaded_mainloop_get_api(loop), "Clavo", properties);
    pa_proplist_free(properties);
    if (!context)
        return false;
    pa_context_set_state_callback(
        context,
        [](pa_context* of, void* data) {
            auto& self = *static_cast<Connection*>(data);
            if (pa_context_get_state(of) == PA_CONTEXT_READY)
                self.openStream();
            else if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(of)))
                self.tellMainThread();
        },
        this);
    return pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) >= 0 &&
           pa_threaded_mainloop_start(loop) >= 0;
}

void PulseStream::Connection::openStream()
{
    const pa_sample_spec format{.format = PA_SAMPLE_FLOAT32NE, .rate = sampleRate, .channels = 2};
    // No media role: the session would share the remembered volume with every program of that role.
    stream = pa_stream_new(context, "Clavo", &format, nullptr);
    if (!stream) {
        pa_context_disconnect(context);
        return;
    }
    const auto tell = [](pa_stream*, void* data) {
        static_cast<Connection*>(data)->tellMainThread();
    };
    pa_stream_set_state_callback(stream, tell, this);
    pa_stream_set_started_callback(
        stream,
        [](pa_stream*, void* data) {
            auto& self = *static_cast<Connection*>(data);
            self.hasStarted = true;
            self.tellMainThread();
        },
        this);
    pa_stream_set_moved_callback(stream, tell, this);
    pa_stream_set_suspended_callback(stream, tell, this);
    pa_stream_set_buffer_attr_callback(stream, tell, this);
    pa_stream_set_write_callback(
        stream,
        [](pa_stream*, std::size_t bytes, void* data) {
            static_cast<Connection*>(data)->write(bytes);
        },
        this);

    // One request plays while the next is on its way. PulseAudio's null sink is reached in 5.5 ms
    // with that; PipeWire in PulseAudio's place holds 17 ms, whatever is asked for.
    constexpr auto serversChoice = static_cast<std::uint32_t>(-1);
    const auto quantum = static_cast<std::uint32_t>(quantumFrames * sizeof(Frame));
    const pa_buffer_attr wish{.maxlength = serversChoice,
                              .tlength = 2 * quantum,
                              .prebuf = serversChoice,
                              .minreq = quantum,
                              .fragsize = serversChoice};
    pa_stream_connect_playback(stream, nullptr, &wish, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr);
}

void PulseStream::Connection::renderInto(std::span<Frame> out) noexcept
{
    while (!out.empty()) {
        const auto frames = std::min(out.size(), blockFrames);
        mixer->render(
            {.left = std::span(left).first(frames), .right = std::span(right).first(frames)});
        for (std::size_t i = 0; i < frames; ++i)
            out[i] = {.left = left[i], .right = right[i]};
        out = out.subspan(frames);
    }
}

/// foreign calls: the library hands out memory shared with the server and queues it again. It takes
/// memory from its own pool and sends a message; that is the only way it offers.
void PulseStream::Connection::write(std::size_t bytes) noexcept
{
    while (bytes > 0) {
        void* memory = nullptr;
        auto room = bytes;
        if (pa_stream_begin_write(stream, &memory, &room) < 0 || room < sizeof(Frame))
            return;
        const std::span out(static_cast<Frame*>(memory), room / sizeof(Frame));
        if (mixer)
            renderInto(out);
        else
            std::ranges::fill(out, Frame{});
        if (pa_stream_write(stream, memory, out.size_bytes(), nullptr, 0, PA_SEEK_RELATIVE) < 0)
            return;
        bytes -= std::min(bytes, out.size_bytes());
    }
}

std::unique_ptr<ServerStream> PulseStream::open(std::uint32_t quantumFrames,
                                                std::function<void()> changed)
{
    auto connection = std::make_unique<Connection>(quantumFrames, std::move(changed));
    if (!connection->connect())
        return nullptr;
    return std::unique_ptr<ServerStream>(new PulseStream(std::move(connection)));
}

PulseStream::PulseStream(std::unique_ptr<Connection> connection)
    : m_connection(std::move(connection))
{
}

PulseStream::~PulseStream() = default;

void PulseStream::play(Mixer* mixer)
{
    const Lock lock(m_connection->loop); // A callback under way ends first.
    m_connection->mixer = mixer;
}

void PulseStream::activate()
{
    const Lock lock(m_connection->loop);
    forget(pa_stream_cork(m_connection->stream, 0, nullptr, nullptr));
}

void PulseStream::deactivate()
{
    const Lock lock(m_connection->loop);
    forget(pa_stream_cork(m_connection->stream, 1, nullptr, nullptr));
}

ServerStream::State PulseStream::state() const
{
    const Lock lock(m_connection->loop);
    auto* const stream = m_connection->stream;
    if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(m_connection->context)) ||
        (stream && !PA_STREAM_IS_GOOD(pa_stream_get_state(stream))))
        return State::Broken;
    const bool plays = m_connection->hasStarted && pa_stream_is_suspended(stream) == 0;
    return plays ? State::Streaming : State::Waiting;
}

OutputStatus PulseStream::status() const
{
    const Lock lock(m_connection->loop);
    const auto* const granted = pa_stream_get_buffer_attr(m_connection->stream);
    return {.server = "PulseAudio",
            .quantumFrames =
                granted ? granted->minreq / static_cast<std::uint32_t>(sizeof(Frame)) : 0,
            .sampleRate = sampleRate};
}

} // namespace clavo
