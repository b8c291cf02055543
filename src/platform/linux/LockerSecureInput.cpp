// SPDX-License-Identifier: MIT
#include "platform/linux/LockerSecureInput.h"

#include "files/Descriptor.h"
#include "platform/linux/Environment.h"
#include "platform/linux/ProcessEnd.h"
#include "platform/linux/ProcessReader.h"

#include <QSocketNotifier>
#include <QTimer>

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <functional>
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

// From the opening of the file until a process has the program's name; the second look is for a
// machine that is busy.
constexpr auto firstLook = 50ms;
constexpr auto secondLook = 1000ms;

constexpr std::size_t longestName = 15; // Of a process.

/// The user who logged in to have the process run, in digits. Some lockers run as another user than
/// the one they lock out.
std::string loginUser(const std::string& process)
{
    std::string user;
    std::getline(std::ifstream("/proc/" + process + "/loginuid"), user);
    return user;
}

} // namespace

std::vector<fs::path> LockerSecureInput::installed()
{
    std::vector<fs::path> files;
    auto folders = environment("PATH");
    while (!folders.empty()) {
        const fs::path folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.native().size() + 1, folders.size()));
        for (const auto* const name : names) {
            std::error_code error;
            if (folder.is_absolute() && fs::is_regular_file(folder / name, error))
                files.push_back(folder / name);
        }
    }
    return files;
}

class LockerSecureInput::Lockers final
{
public:
    Lockers(std::span<const fs::path> files, std::function<void(bool anyRuns)> receiver)
        : m_receiver(std::move(receiver))
    {
        for (const auto& file : files) {
            inotify_add_watch(m_opened.number(), file.c_str(), IN_OPEN);
            m_names.push_back(file.filename().string().substr(0, longestName));
        }
        if (files.empty())
            return;
        m_firstLook.setSingleShot(true);
        m_secondLook.setSingleShot(true);
        m_firstLook.callOnTimeout([this] { m_reader.read(); });
        m_secondLook.callOnTimeout([this] { m_reader.read(); });
        QObject::connect(&m_readable, &QSocketNotifier::activated, [this] {
            std::array<char, 4096> events{};
            while (read(m_opened.number(), events.data(), events.size()) > 0)
                ;
            m_firstLook.start(firstLook);
            m_secondLook.start(secondLook);
        });
        m_reader.read();
    }

private:
    void take(const std::vector<Process>& processes)
    {
        for (const auto& process : processes) {
            if (std::ranges::find(m_names, process.name) != m_names.end())
                follow(process.id);
        }
    }

    void follow(pid_t process)
    {
        if (m_running.contains(process) || loginUser(std::to_string(process)) != loginUser("self"))
            return;
        const auto end = m_running.try_emplace(process, process, [this, process] {
            forget(process);
            m_reader.read(); // It may have left the lock to a child.
        });
        if (end.first->second.isWaiting())
            m_receiver(true);
        else
            forget(process);
    }

    void forget(pid_t process)
    {
        m_running.erase(process);
        m_receiver(!m_running.empty());
    }

    std::function<void(bool anyRuns)> m_receiver;
    std::vector<std::string> m_names; // Of the processes.
    Descriptor m_opened{inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
    QSocketNotifier m_readable{m_opened.number(), QSocketNotifier::Read};
    QTimer m_firstLook;
    QTimer m_secondLook;
    std::map<pid_t, ProcessEnd> m_running;
    ProcessReader m_reader{[this](const std::vector<Process>& processes) { take(processes); }};
};

LockerSecureInput::LockerSecureInput(std::span<const fs::path> files)
    : m_lockers(std::make_unique<Lockers>(files, [this](bool anyRuns) {
          setReason(anyRuns ? SecureReason::lockedSession : SecureReason::none);
      }))
{
}

LockerSecureInput::~LockerSecureInput() = default;

} // namespace clavo
