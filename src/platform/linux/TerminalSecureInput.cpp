// SPDX-License-Identifier: MIT
#include "platform/linux/TerminalSecureInput.h"

#include "platform/linux/ParseNumber.h"
#include "platform/linux/ProcessReader.h"
#include "platform/linux/Terminal.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// From the moment a terminal is made until a process belongs to it; the second look is for a
// machine that is busy.
constexpr auto firstLook = 200ms;
constexpr auto secondLook = 2000ms;

} // namespace

class TerminalSecureInput::Terminals final
{
public:
    Terminals(Unknown unknown, fs::path folder) : m_unknown(unknown), m_folder(std::move(folder))
    {
        m_watcher.addPath(QString::fromStdString(m_folder));
        m_firstLook.setSingleShot(true);
        m_secondLook.setSingleShot(true);
        m_firstLook.callOnTimeout([this] { m_reader.read(); });
        m_secondLook.callOnTimeout([this] { m_reader.read(); });
        QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, [this] {
            m_firstLook.start(firstLook);
            m_secondLook.start(secondLook);
        });
        m_reader.read();
    }

    void setFocus(pid_t process)
    {
        if (std::exchange(m_process, process) == process)
            return;
        choose();
        // A program may lose the keys and get them back for every field of its window.
        if (process != 0 && std::exchange(m_lastProgram, process) != process)
            m_reader.read();
    }

    [[nodiscard]] bool anyReadsWithoutEcho() const
    {
        return std::ranges::any_of(
            m_chosen, [](const auto& terminal) { return terminal->readsWithoutEcho(); });
    }

private:
    void take(const std::vector<Process>& processes)
    {
        m_processes = processes;
        if (m_unknown == Unknown::everyTerminal)
            look();
        choose();
    }

    /// Notes what the terminals do that were not there before.
    void look()
    {
        std::map<int, bool> showing;
        std::error_code error;
        auto entry = fs::directory_iterator(m_folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            // The folder has a file, too, whose opening makes another terminal.
            const auto number = parseNumber<int>(entry->path().filename().native());
            if (!number)
                continue;
            const auto known = m_showing.find(*number);
            showing[*number] = known == m_showing.end()
                                   ? !Terminal(fileOf(*number), 0).readsWithoutEcho()
                                   : known->second;
        }
        m_showing = std::move(showing);
    }

    void choose()
    {
        m_chosen.clear();
        if (m_process != 0) {
            for (const auto number : terminalsBelow(m_process, m_processes))
                add(number);
            return;
        }
        for (const auto& [number, isShowing] : m_showing) {
            if (isShowing)
                add(number);
        }
    }

    void add(int number)
    {
        m_chosen.push_back(
            std::make_unique<Terminal>(fileOf(number), leaderAt(number, m_processes)));
    }

    [[nodiscard]] std::string fileOf(int number) const { return m_folder / std::to_string(number); }

    Unknown m_unknown;
    fs::path m_folder;
    pid_t m_process = 0;
    pid_t m_lastProgram = 0; // The last process that was known.
    std::vector<Process> m_processes;
    std::map<int, bool> m_showing; // Terminals by whether they echoed when first seen.
    std::vector<std::unique_ptr<Terminal>> m_chosen; // Those that count now.
    QFileSystemWatcher m_watcher;
    QTimer m_firstLook;
    QTimer m_secondLook;
    ProcessReader m_reader{[this](const std::vector<Process>& processes) { take(processes); }};
};

TerminalSecureInput::TerminalSecureInput(Unknown unknown, fs::path folder)
    : m_terminals(std::make_unique<Terminals>(unknown, std::move(folder)))
{
}

TerminalSecureInput::~TerminalSecureInput() = default;

void TerminalSecureInput::setFocus(pid_t process)
{
    m_terminals->setFocus(process);
}

SecureReason TerminalSecureInput::reason() const
{
    return m_terminals->anyReadsWithoutEcho() ? SecureReason::silentTerminal : SecureReason::none;
}

} // namespace clavo
