// SPDX-License-Identifier: MIT
//
// What a key costs the main thread: from the moment the main loop wakes for it until play() has
// returned. Runs the real tap, state, engine and output inside scripts/virtual-desktop; the keys
// come from XTEST.
#include "app/AppState.h"
#include "platform/Platform.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <fmt/format.h>
#include <xcb/xtest.h>

#include <dlfcn.h>
#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

constexpr std::size_t keyCount = 500;

thread_local Clock::time_point loopAwake; // When this thread's poll() last returned.

/// The real tap with a stopwatch around the receiver.
class TimedTap : public clavo::EventTap
{
public:
    explicit TimedTap(std::unique_ptr<clavo::EventTap> tap) : m_tap(std::move(tap)) {}

    [[nodiscard]] bool create(clavo::EventMask mask, Receiver receiver) override
    {
        return m_tap->create(mask, [this, receiver](const clavo::RawEvent& event) {
            const auto delivered = Clock::now();
            receiver(event);
            const auto done = Clock::now();
            if (event.type == clavo::RawEventType::keyDown) {
                handling.push_back(done - delivered);
                whole.push_back(done - loopAwake);
            }
        });
    }
    void enable() override { m_tap->enable(); }
    [[nodiscard]] std::string name() const override { return m_tap->name(); }
    void notifyNextMotion(std::function<void()> moved) override
    {
        m_tap->notifyNextMotion(std::move(moved));
    }
    void setPositionUsed(bool isUsed) override { m_tap->setPositionUsed(isUsed); }

    std::vector<Microseconds> handling; // Event decoded → play() returned.
    std::vector<Microseconds> whole;    // Main loop awake → play() returned.

private:
    std::unique_ptr<clavo::EventTap> m_tap;
};

void wait(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void type(xcb_connection_t* display, std::uint8_t kind)
{
    constexpr std::uint8_t keycodeA = 38;
    xcb_test_fake_input(display, kind, keycodeA, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(display);
}

void print(const char* what, std::vector<Microseconds> times)
{
    std::ranges::sort(times);
    fmt::print("{:<40} median {:6.1f} µs   99 % {:6.1f} µs   max {:6.1f} µs\n", what,
               times[times.size() / 2].count(), times[times.size() * 99 / 100].count(),
               times.back().count());
}

} // namespace

/// Stands before the C library's, which the main loop waits in; no main loop tells when it woke.
extern "C" int poll(pollfd* descriptors, nfds_t count, int timeout)
{
    using Poll = int (*)(pollfd*, nfds_t, int);
    static const auto wait = reinterpret_cast<Poll>(dlsym(RTLD_NEXT, "poll"));
    const int ready = wait(descriptors, count, timeout);
    loopAwake = Clock::now();
    return ready;
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    auto platform = clavo::makePlatform();
    auto timed = std::make_unique<TimedTap>(std::move(platform.eventTap));
    auto* const tap = timed.get();
    platform.eventTap = std::move(timed);
    auto surroundings = clavo::AppState::Surroundings::real(platform.executable);
    const clavo::AppState state(platform, std::move(surroundings));
    auto* const display = xcb_connect(nullptr, nullptr);
    if (!state.hasPermission() || xcb_connection_has_error(display) != 0) {
        fmt::print(stderr, "main_thread: no X11 desktop; run it inside scripts/virtual-desktop\n");
        return EXIT_FAILURE;
    }

    wait(std::chrono::milliseconds(500));
    std::mt19937 random(1);
    std::uniform_int_distribution<int> pause(20, 60);
    for (std::size_t key = 0; key < keyCount; ++key) {
        type(display, XCB_KEY_PRESS);
        wait(std::chrono::milliseconds(pause(random)));
        type(display, XCB_KEY_RELEASE);
        wait(std::chrono::milliseconds(pause(random)));
    }
    xcb_disconnect(display);

    fmt::print("{} of {} presses\n", tap->whole.size(), keyCount);
    if (tap->whole.size() != keyCount)
        return EXIT_FAILURE;
    print("event decoded → play() returned", tap->handling);
    print("poll() returned → play() returned", tap->whole);
    return EXIT_SUCCESS;
}
