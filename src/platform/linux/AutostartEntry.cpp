// SPDX-License-Identifier: MIT
#include "platform/linux/AutostartEntry.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/Environment.h"

#include <fmt/format.h>

#include <QSaveFile>

#include <unistd.h>

#include <string_view>
#include <system_error>
#include <utility>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using Status = LoginItem::Status;

constexpr auto fileName = "clavo.desktop";

template <typename Function> void forEachOf(std::string_view list, Function function)
{
    while (!list.empty()) {
        const auto end = list.find(':');
        function(fs::path(list.substr(0, end)));
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
}

/// Whether there is such a program, by its path or on the user's search path.
bool canBeStarted(const std::string& program)
{
    if (program.empty())
        return false;
    if (program.find('/') != std::string::npos)
        return access(program.c_str(), X_OK) == 0;
    bool found = false;
    forEachOf(environment("PATH"), [&](const fs::path& folder) {
        found = found || access((folder / program).c_str(), X_OK) == 0;
    });
    return found;
}

Status statusOf(const std::optional<DesktopEntry>& entry)
{
    if (!entry || entry->boolean("Hidden") == true ||
        entry->boolean("X-GNOME-Autostart-enabled") == false)
        return Status::notRegistered;
    const auto program = entry->text("TryExec");
    if ((program.empty() || canBeStarted(program)) &&
        canBeStarted(programOfExec(entry->text("Exec"))))
        return Status::enabled;
    return Status::notFound;
}

} // namespace

AutostartEntry::AutostartEntry(Folders folders, fs::path program)
    : m_folders(std::move(folders)), m_program(std::move(program))
{
}

Status AutostartEntry::status() const
{
    const auto users = DesktopEntry::read(m_folders.user / fileName);
    return users ? statusOf(users) : systemStatus();
}

Status AutostartEntry::systemStatus() const
{
    for (const auto& folder : m_folders.system) {
        if (const auto entry = DesktopEntry::read(folder / fileName))
            return statusOf(entry);
    }
    return Status::notRegistered;
}

std::optional<std::string> AutostartEntry::registerItem()
{
    if (systemStatus() == Status::enabled)
        return removeUserFile();
    const auto& program = m_program.native();
    return write(fmt::format("Exec={}\nTryExec={}\nIcon=app.clavo.Clavo\nTerminal=false\n"
                             "X-GNOME-Autostart-enabled=true\n",
                             escaped(quotedForExec(program)), escaped(program)));
}

std::optional<std::string> AutostartEntry::unregisterItem()
{
    if (systemStatus() == Status::notRegistered)
        return removeUserFile();
    return write("Hidden=true\n");
}

std::optional<std::string> AutostartEntry::write(const std::string& lines) const
{
    std::error_code error;
    fs::create_directories(m_folders.user, error);
    if (error)
        return error.message();
    // The desktop, reading at any time, meets the old file or the new.
    QSaveFile file(QString::fromStdString((m_folders.user / fileName).native()));
    const auto text = "[Desktop Entry]\nType=Application\nName=Clavo\n"
                      "Comment=Makes the keyboard sound like a mechanical one\n" +
                      lines;
    if (file.open(QIODevice::WriteOnly))
        file.write(text.data(), static_cast<qint64>(text.size()));
    if (!file.commit())
        return file.errorString().toStdString();
    return std::nullopt;
}

std::optional<std::string> AutostartEntry::removeUserFile() const
{
    std::error_code error;
    fs::remove(m_folders.user / fileName, error);
    return error ? std::optional(error.message()) : std::nullopt;
}

AutostartEntry::Folders autostartFolders(const fs::path& userConfiguration)
{
    constexpr auto below = "autostart";
    AutostartEntry::Folders folders{.user = userConfiguration / below, .system = {}};
    const auto named = environment("XDG_CONFIG_DIRS");
    forEachOf(named.empty() ? "/etc/xdg" : named, [&](const fs::path& folder) {
        if (folder.is_absolute())
            folders.system.push_back(folder / below);
    });
    return folders;
}

} // namespace clavo
