// SPDX-License-Identifier: MIT
#include "platform/procfs/TerminalSecureInput.h"

#include "platform/procfs/Processes.h"
#include "platform/procfs/Terminal.h"
#include "text/ParseNumber.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>

#include <algorithm>
#include <chrono>
#include <map>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// From the creation of a terminal until a process belongs to it.
constexpr auto usualDelay = 200ms;
constexpr auto longDelay = 2000ms;

class FocusedTerminals final : public TerminalSecureInput
{
public:
    FocusedTerminals(Unknown unknown, fs::path folder)
        : m_unknown(unknown), m_folder(std::move(folder))
    {
        m_watcher.addPath(QString::fromStdString(m_folder));
        QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged,
                         [this] { m_reader.readProcessesAfter(usualDelay, longDelay); });
        m_reader.readProcesses();
    }

    void setFocus(pid_t process) override
    {
        if (std::exchange(m_process, process) == process)
            return;
        chooseTerminals();
        // A program may lose the focus and get it back for every field of its window.
        if (process != 0 && std::exchange(m_lastProgram, process) != process)
            m_reader.readProcesses();
    }

    [[nodiscard]] SecureReason reason() const override
    {
        const bool anyIsSilent = std::ranges::any_of(
            m_chosen, [](const auto& terminal) { return terminal->readsWithoutEcho(); });
        return anyIsSilent ? SecureReason::silentTerminal : SecureReason::none;
    }

private:
    void setProcesses(const std::vector<Process>& processes)
    {
        m_processes = processes;
        if (m_unknown == Unknown::everyTerminal)
            noteNewTerminals();
        chooseTerminals();
    }

    /// Records whether each new terminal echoes.
    void noteNewTerminals()
    {
        std::map<int, bool> echoing;
        std::error_code error;
        auto entry = fs::directory_iterator(m_folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            // The folder also has a file whose opening creates a terminal.
            const auto number = parseNumber<int>(entry->path().filename().native());
            if (!number)
                continue;
            const auto known = m_echoing.find(*number);
            echoing[*number] = known == m_echoing.end()
                                   ? !Terminal(fileOf(*number), 0).readsWithoutEcho()
                                   : known->second;
        }
        m_echoing = std::move(echoing);
    }

    void chooseTerminals()
    {
        m_chosen.clear();
        if (m_process != 0) {
            for (const auto number : terminalsBelow(m_process, m_processes))
                addTerminal(number);
            return;
        }
        for (const auto& [number, isEchoing] : m_echoing) {
            if (isEchoing)
                addTerminal(number);
        }
    }

    void addTerminal(int number)
    {
        m_chosen.push_back(
            std::make_unique<Terminal>(fileOf(number), leaderAt(number, m_processes)));
    }

    [[nodiscard]] std::string fileOf(int number) const { return m_folder / std::to_string(number); }

    Unknown m_unknown;
    fs::path m_folder;
    pid_t m_process = 0;
    pid_t m_lastProgram = 0; // The last known process.
    std::vector<Process> m_processes;
    std::map<int, bool> m_echoing; // Whether each terminal echoed when first seen.
    std::vector<std::unique_ptr<Terminal>> m_chosen; // The terminals to check.
    QFileSystemWatcher m_watcher;
    ProcessReader m_reader{
        [this](const std::vector<Process>& processes) { setProcesses(processes); }};
};

} // namespace

std::unique_ptr<TerminalSecureInput> makeTerminalSecureInput(TerminalSecureInput::Unknown unknown,
                                                             fs::path folder)
{
    return std::make_unique<FocusedTerminals>(unknown, std::move(folder));
}

} // namespace clavo
