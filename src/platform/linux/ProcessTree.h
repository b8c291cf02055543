// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace clavo
{

/// A running process as the kernel lists it.
struct Process {
    pid_t id = 0;
    pid_t parent = 0;
    std::string name;            // Of its program, cut off after 15 characters.
    std::optional<int> terminal; // The pseudo-terminal it belongs to: n of /dev/pts/n.
    pid_t session = 0;           // The process that leads its session.

    bool operator==(const Process&) const = default;
};

/// Reads the content of a process's file `stat`; nothing where it is not understood, and of a
/// process that has ended and is only kept for its parent.
[[nodiscard]] std::optional<Process> parseStat(std::string_view stat);

/// All processes in a folder such as /proc. Takes some milliseconds. Thread: any.
[[nodiscard]] std::vector<Process> runningProcesses(const std::filesystem::path& folder = "/proc");

/// The pseudo-terminals of the process's descendants, each once and in order, but for the one that
/// the process itself was started from. Those that a multiplexer among them (tmux, screen) shows
/// belong to its server, which is no descendant; all of the server's count.
[[nodiscard]] std::vector<int> terminalsBelow(pid_t process, std::span<const Process> all);

/// The process that leads the session whose pseudo-terminal it is; 0 where there is none.
[[nodiscard]] pid_t leaderAt(int terminal, std::span<const Process> all);

} // namespace clavo
