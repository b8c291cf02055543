// SPDX-License-Identifier: MIT
//
// What a start costs: from the moment the program is started until it listens to the keyboard, with
// the settings of a first start and the default pack, against the start of the same program that
// only asks for the permission. Then what it keeps in memory. Runs inside scripts/virtual-desktop.
#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <thread>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

using namespace std::chrono_literals;

constexpr int starts = 15;

double median(std::vector<Milliseconds> times)
{
    std::ranges::sort(times);
    return times[times.size() / 2].count();
}

QProcessEnvironment firstStart(const QTemporaryDir& home)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", home.filePath("config"));
    environment.insert("XDG_DATA_HOME", home.filePath("data"));
    environment.insert("CLAVO_LOG", "stderr");
    return environment;
}

std::optional<Milliseconds> timeToAnswer(const QString& program)
{
    QProcess process;
    const auto start = Clock::now();
    process.start(program, {"--check-input-access"});
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return Clock::now() - start;
}

/// In kibibytes; what `name` says in the process's summary of its mappings.
qulonglong memory(const QProcess& process, const QByteArray& name)
{
    QFile file(QString("/proc/%1/smaps_rollup").arg(process.processId()));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const auto lines = file.readAll().split('\n');
    const auto line =
        std::ranges::find_if(lines, [&](const QByteArray& text) { return text.startsWith(name); });
    return line == lines.end() ? 0 : line->simplified().split(' ').value(1).toULongLong();
}

void printMemory(const QProcess& process)
{
    for (const char* name : {"Rss:", "Pss:", "Private_Dirty:"})
        fmt::print("{:<16}{:.1f} MiB\n", name, static_cast<double>(memory(process, name)) / 1024);
}

std::optional<Milliseconds> timeToListen(const QString& program, bool withMemory)
{
    const QTemporaryDir home;
    QProcess process;
    process.setProcessEnvironment(firstStart(home));
    process.setProcessChannelMode(QProcess::MergedChannels);
    const auto start = Clock::now();
    process.start(program, {"--background"}); // An open panel would count as memory.
    QByteArray log;
    while (!log.contains("écoute : true")) {
        if (!process.waitForReadyRead())
            return {};
        log += process.readAll();
    }
    const Milliseconds taken = Clock::now() - start;
    if (withMemory) {
        std::this_thread::sleep_for(2s); // Until the icon and the sound server have settled.
        printMemory(process);
    }
    process.terminate();
    process.waitForFinished();
    return taken;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    if (argc != 2) {
        fmt::print(stderr, "usage: bench_startup CLAVO\n");
        return 2;
    }
    const auto program = QString::fromLocal8Bit(argv[1]);
    std::vector<Milliseconds> answers;
    std::vector<Milliseconds> listening;
    for (int i = 0; i <= starts; ++i) {
        const auto answer = timeToAnswer(program);
        const auto listens = timeToListen(program, i == starts);
        if (!answer || !listens) {
            fmt::print(stderr, "bench_startup: {} does not start\n", argv[1]);
            return EXIT_FAILURE;
        }
        if (i == 0) { // Nothing was in the system's file cache.
            fmt::print("first of all: answer {:.1f} ms, listening {:.1f} ms\n", answer->count(),
                       listens->count());
            continue;
        }
        answers.push_back(*answer);
        listening.push_back(*listens);
    }
    fmt::print("median of {}: answer {:.1f} ms, listening {:.1f} ms, ratio {:.1f}\n", starts,
               median(answers), median(listening), median(listening) / median(answers));
    fmt::print("slowest: answer {:.1f} ms, listening {:.1f} ms\n",
               std::ranges::max(answers).count(), std::ranges::max(listening).count());
    return EXIT_SUCCESS;
}
