// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"

#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

class QThread;

namespace clavo
{

/// A running process.
struct Process {
    pid_t id = 0;
    pid_t parent = 0;
    std::string name;            // Of its program, cut after 15 characters.
    std::optional<int> terminal; // Its pseudo-terminal: n of /dev/pts/n.
    pid_t session = 0;           // The process that leads its session.

    bool operator==(const Process&) const = default;
};

/// Reads the content of a process's file `stat`. Nothing if it is malformed, or if the process has
/// ended and is only kept for its parent.
[[nodiscard]] std::optional<Process> parseStat(std::string_view stat);

/// All processes in a folder such as /proc. Takes some milliseconds. Thread: any.
[[nodiscard]] std::vector<Process> runningProcesses(const std::filesystem::path& folder = "/proc");

/// The pseudo-terminals of the process's descendants, each once and in order, except the one that
/// the process itself was started from. The terminals in a multiplexer (tmux, screen) belong to its
/// server, which is no descendant; if a client is one, all terminals of the server are included.
[[nodiscard]] std::vector<int> terminalsBelow(pid_t process, std::span<const Process> all);

/// The leader of the session on the pseudo-terminal; 0 if there is none.
[[nodiscard]] pid_t leaderAt(int terminal, std::span<const Process> all);

/// The file of the running program, or the file that an update put in its place. Empty if the
/// system does not report it.
[[nodiscard]] std::filesystem::path runningProgram();

/// The target of a link in the process folder, which appends " (deleted)" if the file is gone.
[[nodiscard]] std::filesystem::path programOfLink(const std::filesystem::path& link);

/// Waits for the end of any process. Thread: main, which runs a Qt event loop.
class ProcessEnd
{
public:
    /// Calls the receiver once, from the main loop, when the process has ended; the receiver may
    /// destroy this. If the process is already gone or cannot be opened, isWaiting() is false.
    ProcessEnd(pid_t process, std::function<void()> ended);

    [[nodiscard]] bool isWaiting() const { return m_process.number() >= 0; }

private:
    Descriptor m_process; // Readable when it has ended.
    std::function<void()> m_ended;
    QSocketNotifier m_readable;
};

/// Reads the running processes in the background and reports them on the main thread. Thread: main,
/// which runs a Qt event loop.
class ProcessReader
{
public:
    using Receiver = std::function<void(const std::vector<Process>&)>;

    explicit ProcessReader(Receiver receiver);
    /// Takes some milliseconds during a reading.
    ~ProcessReader();
    ProcessReader(const ProcessReader&) = delete;
    ProcessReader& operator=(const ProcessReader&) = delete;

    /// Calls the receiver once with the processes that run now or later.
    void readProcesses();
    /// Reads them after each of two delays, counted from the last call. What has just begun is seen
    /// after the first one, or on a busy machine after the second one.
    void readProcessesAfter(std::chrono::milliseconds first, std::chrono::milliseconds second);

private:
    void deliver(const std::vector<Process>& processes);

    Receiver m_receiver;
    QTimer m_first;
    QTimer m_second;
    std::unique_ptr<QThread> m_thread; // Null between readings.
    bool m_isAskedAgain = false;       // Since the present reading began.
};

} // namespace clavo
