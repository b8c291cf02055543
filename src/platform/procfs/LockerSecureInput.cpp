// SPDX-License-Identifier: MIT
#include "platform/procfs/LockerSecureInput.h"

#include "files/Descriptor.h"
#include "platform/posix/Environment.h"
#include "platform/procfs/Processes.h"

#include <QSocketNotifier>

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr std::array names{"gtklock", "hyprlock",    "i3lock",  "physlock", "slock", "swaylock",
                           "waylock", "xsecurelock", "xtrlock", "alock",    "xlock"};

// From the opening of the file until a process has the program's name.
constexpr auto usualDelay = 50ms;
constexpr auto longDelay = 1000ms;

constexpr std::size_t longestName = 15; // Of a process.

/// The user whose login the process belongs to, in digits. Some lockers run as another user than
/// the one they lock out.
std::string loginUser(const std::string& process)
{
    std::string user;
    std::getline(std::ifstream("/proc/" + process + "/loginuid"), user);
    return user;
}

class LockerSecureInput final : public ObservableSecureInput
{
public:
    explicit LockerSecureInput(std::span<const fs::path> files)
    {
        for (const auto& file : files) {
            inotify_add_watch(m_opened.number(), file.c_str(), IN_OPEN);
            m_names.push_back(file.filename().string().substr(0, longestName));
        }
        if (files.empty())
            return;
        QObject::connect(&m_readable, &QSocketNotifier::activated, [this] {
            std::array<char, 4096> events{};
            while (read(m_opened.number(), events.data(), events.size()) > 0)
                ;
            m_reader.readProcessesAfter(usualDelay, longDelay);
        });
        m_reader.readProcesses();
    }

private:
    void watchLockers(const std::vector<Process>& processes)
    {
        for (const auto& process : processes) {
            if (std::ranges::find(m_names, process.name) != m_names.end())
                watchLocker(process.id);
        }
    }

    void watchLocker(pid_t process)
    {
        if (m_running.contains(process) || loginUser(std::to_string(process)) != loginUser("self"))
            return;
        const auto end = m_running.try_emplace(process, process, [this, process] {
            forgetLocker(process);
            m_reader.readProcesses(); // A child may have taken over the lock.
        });
        if (end.first->second.isWaiting())
            setReason(SecureReason::lockedSession);
        else
            forgetLocker(process);
    }

    void forgetLocker(pid_t process)
    {
        m_running.erase(process);
        setReason(m_running.empty() ? SecureReason::none : SecureReason::lockedSession);
    }

    std::vector<std::string> m_names; // Of the processes.
    Descriptor m_opened{inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
    QSocketNotifier m_readable{m_opened.number(), QSocketNotifier::Read};
    std::map<pid_t, ProcessEnd> m_running;
    ProcessReader m_reader{
        [this](const std::vector<Process>& processes) { watchLockers(processes); }};
};

} // namespace

std::vector<fs::path> installedLockers()
{
    std::vector<fs::path> files;
    for (const auto& folder : foldersIn(environment("PATH"))) {
        for (const auto* const name : names) {
            std::error_code error;
            if (folder.is_absolute() && fs::is_regular_file(folder / name, error))
                files.push_back(folder / name);
        }
    }
    return files;
}

std::unique_ptr<ObservableSecureInput> makeLockerSecureInput(std::span<const fs::path> files)
{
    return std::make_unique<LockerSecureInput>(files);
}

} // namespace clavo
