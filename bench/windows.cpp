// SPDX-License-Identifier: MIT
//
// What the windows cost.
//
// bench_windows CLAVO: from a click on the icon in the tray until the panel's first frame is on the
// display, the first time and again; then the memory and the wake-ups of a program whose windows
// are closed against those before one was open.
//
// bench_windows --during COMMAND…: runs a command that starts a Clavo. Meanwhile the panel is open,
// and the pointer sweeps over its packs, which it draws anew all the time.
//
// Runs inside scripts/virtual-desktop.
#include "desktop/user/Hands.h"
#include "desktop/user/ProgramWindows.h"
#include "platform/x11/XServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <thread>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int openings = 20;
constexpr int settingsWidth = 460;
constexpr auto timeToOpen = 10s; // Far more than it takes.
// Until the statistics are written and the output has paused.
constexpr auto timeToRest = 22s;
constexpr auto wakeUpTime = 20s;

// Keys by what the kernel calls them.
constexpr std::uint32_t keyEscape = 1;
constexpr std::uint32_t keyControl = 29;
constexpr std::uint32_t keyComma = 51;

/// What one point of the display shows, to see when that changes.
class Point
{
public:
    explicit Point(QPoint place) : m_place(place) {}

    [[nodiscard]] std::uint32_t color() const
    {
        auto* const server = m_desktop.connection.get();
        const auto x = static_cast<std::int16_t>(m_place.x());
        const auto y = static_cast<std::int16_t>(m_place.y());
        const clavo::xcb::Owned<xcb_get_image_reply_t> image{xcb_get_image_reply(
            server,
            xcb_get_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, m_desktop.root, x, y, 1, 1, ~0U),
            nullptr)};
        std::uint32_t value = 0;
        if (image && xcb_get_image_data_length(image.get()) >= 4)
            std::copy_n(xcb_get_image_data(image.get()), sizeof value,
                        reinterpret_cast<std::uint8_t*>(&value));
        return value;
    }

private:
    QPoint m_place;
    clavo::xcb::Desktop m_desktop = clavo::xcb::connect({});
};

bool comesTrue(const std::function<bool()>& condition)
{
    const auto deadline = Clock::now() + timeToOpen;
    while (!condition()) {
        if (Clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(500us);
    }
    return true;
}

/// A tray for the icon, and somebody who uses the windows.
class Desktop
{
public:
    Desktop()
    {
        m_tray.start("trayer", {"--edge", "top", "--align", "right", "--widthtype", "request",
                                "--height", "24"});
    }
    ~Desktop()
    {
        m_tray.terminate();
        m_tray.waitForFinished();
    }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// Waits for the icon; false where there is none.
    [[nodiscard]] bool findIcon()
    {
        return comesTrue([this] {
            const auto icon = clavo::embeddedWindow("clavo");
            m_icon = icon.value_or(QRect());
            return m_icon.width() >= 16;
        });
    }

    /// From the click to the panel's first frame.
    [[nodiscard]] std::optional<Milliseconds> openPanel()
    {
        const auto icon = m_icon.center();
        const Point inThePanel(icon + QPoint(-100, 300));
        m_hands.movePointer(icon.x(), icon.y());
        std::this_thread::sleep_for(100ms);
        m_background = inThePanel.color();
        const auto start = Clock::now();
        m_hands.click(1);
        if (!comesTrue([&] { return inThePanel.color() != m_background; }))
            return {};
        const Milliseconds taken = Clock::now() - start;
        std::this_thread::sleep_for(300ms); // The keys go there a moment after its first frame.
        return taken;
    }
    /// Closes what has the keys.
    [[nodiscard]] bool close()
    {
        m_hands.strike(keyEscape);
        const bool isClosed = comesTrue([] { return !clavo::openWindow("clavo"); });
        std::this_thread::sleep_for(500ms); // It frees what it took, and the sound ends.
        return isClosed;
    }
    [[nodiscard]] bool openSettingsFromThePanel()
    {
        m_hands.press(keyControl);
        m_hands.strike(keyComma);
        m_hands.release(keyControl);
        const bool isOpen = comesTrue([] {
            const auto window = clavo::openWindow("clavo");
            return window && window->width() == settingsWidth;
        });
        std::this_thread::sleep_for(500ms); // Its first frame.
        return isOpen;
    }
    /// Moves the pointer over the packs of the open panel, once up or down.
    void sweep(bool downwards)
    {
        const auto panel = clavo::openWindow("clavo");
        if (!panel)
            return;
        constexpr int steps = 20;
        for (int i = 0; i < steps; ++i) {
            const int y = 190 + 8 * (downwards ? i : steps - i);
            m_hands.movePointer(panel->x() + 100, panel->y() + y);
            std::this_thread::sleep_for(16ms);
        }
    }

private:
    QProcess m_tray;
    clavo::Hands m_hands{std::getenv("DISPLAY")};
    QRect m_icon;
    std::uint32_t m_background = 0;
};

struct Cost {
    double privateMemory; // MiB that are its own and written to, without code that is mapped.
    double proportional;  // MiB
    double wakeUps;       // A second.
};

/// The sum of the values, in lines of the kind "Name: 12 kB", of those that begin with the name.
qulonglong sum(const QString& file, const QByteArray& name)
{
    QFile lines(file);
    if (!lines.open(QIODevice::ReadOnly))
        return 0;
    qulonglong total = 0;
    for (const auto& line : lines.readAll().split('\n')) {
        if (line.startsWith(name))
            total += line.simplified().split(' ').value(1).toULongLong();
    }
    return total;
}

/// How often each thread has gone to sleep, which is as often as it woke.
std::map<QString, qulonglong> sleeps(const QString& process)
{
    std::map<QString, qulonglong> counts;
    const QDir threads(process + "/task");
    for (const auto& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        counts[thread] = sum(threads.filePath(thread) + "/status", "voluntary_ctxt_switches:");
    return counts;
}

/// What the process costs while nobody uses it.
Cost costAtRest(qint64 processId)
{
    const auto process = QString("/proc/%1").arg(processId);
    std::this_thread::sleep_for(timeToRest);
    auto before = sleeps(process);
    std::this_thread::sleep_for(wakeUpTime);
    qulonglong woken = 0;
    for (const auto& [thread, count] : sleeps(process)) // A thread that has ended wakes nobody.
        woken += count - before[thread];
    const auto memory = process + "/smaps_rollup";
    return {.privateMemory = static_cast<double>(sum(memory, "Private_Dirty:")) / 1024,
            .proportional = static_cast<double>(sum(memory, "Pss:")) / 1024,
            .wakeUps =
                static_cast<double>(woken) / std::chrono::duration<double>(wakeUpTime).count()};
}

void print(const char* when, const Cost& cost)
{
    fmt::print("{:<24}{:.1f} MiB private, {:.1f} MiB proportional, {:.2f} wake-ups a second\n",
               when, cost.privateMemory, cost.proportional, cost.wakeUps);
}

int measure(const QString& program)
{
    const QTemporaryDir home;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", home.filePath("config"));
    environment.insert("XDG_DATA_HOME", home.filePath("data"));
    Desktop desktop;
    QProcess clavo;
    clavo.setProcessEnvironment(environment);
    clavo.start(program, {});
    const auto fail = [&](const char* what) {
        fmt::print(stderr, "bench_windows: {}\n", what);
        clavo.terminate();
        clavo.waitForFinished();
        return EXIT_FAILURE;
    };
    if (!desktop.findIcon())
        return fail("there is no icon in the tray");
    const auto before = costAtRest(clavo.processId());

    const auto first = desktop.openPanel();
    if (!first || !desktop.openSettingsFromThePanel() || !desktop.close())
        return fail("the windows do not open and close");
    std::vector<Milliseconds> again;
    for (int i = 0; i < openings; ++i) {
        const auto time = desktop.openPanel();
        if (!time || !desktop.close())
            return fail("the panel does not open and close again");
        again.push_back(*time);
    }
    const auto after = costAtRest(clavo.processId());
    clavo.terminate();
    clavo.waitForFinished();

    std::ranges::sort(again);
    fmt::print("{:<24}{:.1f} ms\n", "first click to frame", first->count());
    fmt::print("{:<24}median {:.1f} ms, slowest {:.1f} ms of {}\n", "later clicks",
               again[again.size() / 2].count(), again.back().count(), openings);
    print("never opened", before);
    print("both windows closed", after);
    print("difference", {.privateMemory = after.privateMemory - before.privateMemory,
                         .proportional = after.proportional - before.proportional,
                         .wakeUps = after.wakeUps - before.wakeUps});
    return EXIT_SUCCESS;
}

int runWithOpenPanel(const QStringList& command)
{
    Desktop desktop;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(command.first(), command.mid(1));
    if (!desktop.findIcon() || !desktop.openPanel()) {
        fmt::print(stderr, "bench_windows: the command starts no Clavo with an icon\n");
        process.terminate();
        process.waitForFinished();
        return EXIT_FAILURE;
    }
    for (bool downwards = true;
         !process.waitForFinished(0) && process.state() != QProcess::NotRunning;
         downwards = !downwards)
        desktop.sweep(downwards);
    return process.exitCode();
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() > 2 && arguments[1] == "--during")
        return runWithOpenPanel(arguments.mid(2));
    if (arguments.size() == 2)
        return measure(arguments[1]);
    fmt::print(stderr, "usage: bench_windows CLAVO | --during COMMAND...\n");
    return 2;
}
