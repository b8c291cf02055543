// SPDX-License-Identifier: MIT
#include "platform/procfs/Processes.h"

#include "text/ParseNumber.h"

#include <QThread>

#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

// The major device numbers of pseudo-terminals; each covers 256 terminals.
constexpr unsigned firstMajor = 136;
constexpr unsigned lastMajor = 143;
constexpr int terminalsOfMajor = 256;

/// The process names of the two halves of a terminal multiplexer.
struct Multiplexer {
    std::string_view client;
    std::string_view server;
};
constexpr Multiplexer multiplexers[]{{"tmux: client", "tmux: server"}, {"screen", "screen"}};

std::string_view takeWord(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const auto word = text.substr(0, text.find(' '));
    text.remove_prefix(word.size());
    return word;
}

std::optional<int> pseudoTerminal(unsigned device)
{
    const auto kind = major(device);
    if (kind < firstMajor || kind > lastMajor)
        return std::nullopt;
    return static_cast<int>(kind - firstMajor) * terminalsOfMajor + static_cast<int>(minor(device));
}

/// The server whose terminals this process shows; empty if it is no multiplexer's client.
std::string_view serverOf(const Process& process)
{
    const auto* const found =
        std::ranges::find(multiplexers, std::string_view(process.name), &Multiplexer::client);
    return found == std::end(multiplexers) ? std::string_view() : found->server;
}

struct Reading {
    std::vector<Process> processes;
    std::atomic<bool> isDone = false; // Makes the hand-over visible to a thread checker.
};

} // namespace

std::optional<Process> parseStat(std::string_view stat)
{
    const auto id = parseNumber<pid_t>(stat.substr(0, stat.find(' ')));
    // The name in brackets may contain anything, brackets too.
    const auto first = stat.find('(');
    const auto last = stat.rfind(')');
    if (!id || first == std::string_view::npos || last == std::string_view::npos || last < first)
        return std::nullopt;
    auto rest = stat.substr(last + 1);
    const auto state = takeWord(rest);
    const auto parent = parseNumber<pid_t>(takeWord(rest));
    takeWord(rest); // Its process group.
    const auto session = parseNumber<pid_t>(takeWord(rest));
    const auto device = parseNumber<int>(takeWord(rest));
    if (!parent || !session || !device || state == "Z")
        return std::nullopt;
    return Process{*id, *parent, std::string(stat.substr(first + 1, last - first - 1)),
                   pseudoTerminal(static_cast<unsigned>(*device)), *session};
}

std::vector<Process> runningProcesses(const fs::path& folder)
{
    std::vector<Process> processes;
    std::error_code error;
    auto entry = fs::directory_iterator(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (!parseNumber<pid_t>(entry->path().filename().native()))
            continue;
        std::string stat;
        std::getline(std::ifstream(entry->path() / "stat"), stat, '\0');
        if (const auto process = parseStat(stat)) // Otherwise it has ended.
            processes.push_back(*process);
    }
    return processes;
}

std::vector<int> terminalsBelow(pid_t process, std::span<const Process> all)
{
    std::optional<int> own;
    std::set<pid_t> family{process};
    std::set<int> terminals;
    std::set<std::string_view> servers;
    for (std::size_t known = 0; known != family.size();) {
        known = family.size();
        for (const auto& each : all) {
            if (each.id == process)
                own = each.terminal;
            else if (family.contains(each.parent) || servers.contains(each.name)) {
                family.insert(each.id);
                if (const auto server = serverOf(each); !server.empty())
                    servers.insert(server);
                if (each.terminal)
                    terminals.insert(*each.terminal);
            }
        }
    }
    if (own)
        terminals.erase(*own);
    return {terminals.begin(), terminals.end()};
}

pid_t leaderAt(int terminal, std::span<const Process> all)
{
    const auto leader = std::ranges::find_if(all, [&](const Process& each) {
        return each.terminal == terminal && each.session == each.id;
    });
    return leader == all.end() ? 0 : leader->id;
}

fs::path runningProgram()
{
    return programOfLink("/proc/self/exe");
}

fs::path programOfLink(const fs::path& link)
{
    constexpr std::string_view mark = " (deleted)";

    std::error_code error;
    auto program = fs::read_symlink(link, error);
    // The name of an existing file may end like that.
    if (program.native().ends_with(mark) && !fs::exists(program, error))
        program = program.native().substr(0, program.native().size() - mark.size());
    return program;
}

ProcessEnd::ProcessEnd(pid_t process, std::function<void()> ended)
    : m_process(static_cast<int>(::syscall(SYS_pidfd_open, process, 0))), m_ended(std::move(ended)),
      m_readable(QSocketNotifier::Read)
{
    if (!isWaiting())
        return;
    QObject::connect(&m_readable, &QSocketNotifier::activated, &m_readable,
                     [this] { m_readable.setEnabled(false); });
    // Queued, since the receiver may destroy the notifier.
    QObject::connect(
        &m_readable, &QSocketNotifier::activated, &m_readable,
        [this] { std::exchange(m_ended, nullptr)(); }, Qt::QueuedConnection);
    m_readable.setSocket(m_process.number());
    m_readable.setEnabled(true);
}

ProcessReader::ProcessReader(Receiver receiver) : m_receiver(std::move(receiver))
{
    for (auto* const timer : {&m_first, &m_second}) {
        timer->setSingleShot(true);
        timer->callOnTimeout([this] { readProcesses(); });
    }
}

ProcessReader::~ProcessReader()
{
    if (m_thread)
        m_thread->wait();
}

void ProcessReader::readProcesses()
{
    m_isAskedAgain = m_thread != nullptr;
    if (m_isAskedAgain)
        return;
    const auto reading = std::make_shared<Reading>();
    m_thread.reset(QThread::create([reading] {
        reading->processes = runningProcesses();
        reading->isDone = true;
    }));
    // The thread object lives on the main thread and signals there.
    QObject::connect(m_thread.get(), &QThread::finished, m_thread.get(), [this, reading] {
        if (reading->isDone)
            deliver(reading->processes);
    });
    m_thread->start(QThread::LowPriority);
}

void ProcessReader::readProcessesAfter(std::chrono::milliseconds first,
                                       std::chrono::milliseconds second)
{
    m_first.start(first);
    m_second.start(second);
}

void ProcessReader::deliver(const std::vector<Process>& processes)
{
    m_thread->wait();
    m_thread.release()->deleteLater(); // Its signal is the caller.
    if (std::exchange(m_isAskedAgain, false))
        readProcesses();
    m_receiver(processes);
}

} // namespace clavo
