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
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

// From the moment a terminal is made until a process belongs to it; the second look is for a
// machine that is busy.
constexpr auto firstLook = 200ms;
constexpr auto secondLook = 2000ms;

const QString folder = QStringLiteral("/dev/pts");

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
    Terminals()
    {
        m_firstLook.setSingleShot(true);
        m_secondLook.setSingleShot(true);
        m_firstLook.callOnTimeout([this] { find(); });
        m_secondLook.callOnTimeout([this] { find(); });
        QObject::connect(&m_folder, &QFileSystemWatcher::directoryChanged, [this] {
            m_firstLook.start(firstLook);
            m_secondLook.start(secondLook);
        });
    }

    void setFocus(pid_t process)
    {
        if (std::exchange(m_process, process) == process)
            return;
        m_files.clear();
        find();
    }

    [[nodiscard]] bool anyReadsWithoutEcho() const
    {
        return std::ranges::any_of(m_files, readsWithoutEcho);
    }

private:
    void find()
    {
        if (m_process != 0)
            m_reader.read();
    }

    void take(const std::vector<Process>& processes)
    {
        m_files.clear();
        if (m_process == 0)
            return;
        for (const auto number : terminalsBelow(m_process, processes))
            m_files.push_back(folder.toStdString() + "/" + std::to_string(number));
    }

    pid_t m_process = 0;
    std::vector<std::string> m_files;
    QFileSystemWatcher m_folder{{folder}};
    QTimer m_firstLook;
    QTimer m_secondLook;
    ProcessReader m_reader{[this](const std::vector<Process>& processes) { take(processes); }};
};

TerminalSecureInput::TerminalSecureInput() : m_terminals(std::make_unique<Terminals>()) {}

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
