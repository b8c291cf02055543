// SPDX-License-Identifier: MIT
#include "platform/linux/TerminalSecureInput.h"

#include "platform/linux/ProcessReader.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <map>
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

/// The folder has a file, too, whose opening makes another terminal.
bool isNumber(std::string_view name)
{
    return name.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

// The file is not kept open: as long as somebody has it open, a terminal does not learn that the
// programs in it have ended.
bool readsWithoutEcho(const std::string& terminal)
{
    const int file = open(terminal.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return false;
    termios modes{};
    const bool isTerminal = tcgetattr(file, &modes) == 0;
    close(file);
    return isTerminal && (modes.c_lflag & ICANON) != 0 && (modes.c_lflag & ECHO) == 0;
}

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
        return std::ranges::any_of(m_chosen, readsWithoutEcho);
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
        std::map<std::string, bool> showing;
        std::error_code error;
        auto entry = fs::directory_iterator(m_folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            if (!isNumber(entry->path().filename().native()))
                continue;
            const auto file = entry->path().string();
            const auto known = m_showing.find(file);
            showing[file] = known == m_showing.end() ? !readsWithoutEcho(file) : known->second;
        }
        m_showing = std::move(showing);
    }

    void choose()
    {
        m_chosen.clear();
        if (m_process != 0) {
            for (const auto number : terminalsBelow(m_process, m_processes))
                m_chosen.push_back(m_folder / std::to_string(number));
            return;
        }
        for (const auto& [file, isShowing] : m_showing) {
            if (isShowing)
                m_chosen.push_back(file);
        }
    }

    Unknown m_unknown;
    fs::path m_folder;
    pid_t m_process = 0;
    pid_t m_lastProgram = 0; // The last process that was known.
    std::vector<Process> m_processes;
    std::map<std::string, bool> m_showing; // Terminals by whether they echoed when first seen.
    std::vector<std::string> m_chosen;     // Those that count now.
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
