// SPDX-License-Identifier: MIT
#include "platform/linux/ProcessTree.h"

#include "platform/linux/ParseNumber.h"

#include <sys/sysmacros.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <system_error>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

// The major device numbers of pseudo-terminals; each has 256 of the numbers that come first.
constexpr unsigned firstMajor = 136;
constexpr unsigned lastMajor = 143;
constexpr int terminalsOfMajor = 256;

/// What the two halves of a terminal multiplexer are called.
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

/// The server that shows its terminals in this process; empty where it is no multiplexer's client.
std::string_view serverOf(const Process& process)
{
    const auto* const found =
        std::ranges::find(multiplexers, std::string_view(process.name), &Multiplexer::client);
    return found == std::end(multiplexers) ? std::string_view() : found->server;
}

} // namespace

std::optional<Process> parseStat(std::string_view stat)
{
    const auto id = parseNumber<pid_t>(stat.substr(0, stat.find(' ')));
    // The name in brackets is the program's choice and may hold anything, brackets too.
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
        if (const auto process = parseStat(stat)) // Else it has ended.
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

} // namespace clavo
