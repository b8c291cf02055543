// SPDX-License-Identifier: MIT
#include "platform/xdg/AutostartEntry.h"

#include "app/CommandLine.h"
#include "files/WholeFile.h"
#include "platform/posix/Environment.h"
#include "platform/xdg/DesktopEntry.h"

#include <fmt/format.h>

#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string>
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

/// Whether the program exists, by its path or on the search path.
bool canBeStarted(const std::string& program)
{
    const auto isProgram = [](const fs::path& file) { return access(file.c_str(), X_OK) == 0; };
    if (program.empty())
        return false;
    if (program.find('/') != std::string::npos)
        return isProgram(program);
    return std::ranges::any_of(foldersIn(environment("PATH")),
                               [&](const fs::path& folder) { return isProgram(folder / program); });
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

class AutostartEntry final : public LoginItem
{
public:
    AutostartEntry(AutostartFolders folders, fs::path program)
        : m_folders(std::move(folders)), m_program(std::move(program))
    {
    }

    [[nodiscard]] Status status() const override
    {
        const auto users = DesktopEntry::read(m_folders.user / fileName);
        return users ? statusOf(users) : systemStatus();
    }

    [[nodiscard]] std::optional<std::string> registerItem() override
    {
        if (systemStatus() == Status::enabled)
            return removeUserFile();
        const auto& program = m_program.native();
        return writeUserFile(fmt::format("Exec={} {}\nTryExec={}\nIcon=app.clavo.Clavo\n"
                                         "Terminal=false\nX-GNOME-Autostart-enabled=true\n",
                                         escaped(quotedForExec(program)), backgroundOption,
                                         escaped(program)));
    }

    [[nodiscard]] std::optional<std::string> unregisterItem() override
    {
        if (systemStatus() == Status::notRegistered)
            return removeUserFile();
        return writeUserFile("Hidden=true\n");
    }

private:
    [[nodiscard]] Status systemStatus() const
    {
        for (const auto& folder : m_folders.system) {
            if (const auto entry = DesktopEntry::read(folder / fileName))
                return statusOf(entry);
        }
        return Status::notRegistered;
    }

    [[nodiscard]] std::optional<std::string> writeUserFile(const std::string& lines) const
    {
        std::error_code error;
        fs::create_directories(m_folders.user, error);
        if (error)
            return error.message();
        error = replaceFile(m_folders.user / fileName,
                            "[Desktop Entry]\nType=Application\nName=Clavo\n"
                            "Comment=Makes the keyboard sound like a mechanical one\n" +
                                lines);
        return error ? std::optional(error.message()) : std::nullopt;
    }

    [[nodiscard]] std::optional<std::string> removeUserFile() const
    {
        std::error_code error;
        fs::remove(m_folders.user / fileName, error);
        return error ? std::optional(error.message()) : std::nullopt;
    }

    AutostartFolders m_folders;
    fs::path m_program;
};

} // namespace

std::unique_ptr<LoginItem> makeAutostartEntry(AutostartFolders folders, fs::path program)
{
    return std::make_unique<AutostartEntry>(std::move(folders), std::move(program));
}

AutostartFolders autostartFolders(const fs::path& userConfiguration)
{
    constexpr auto below = "autostart";
    AutostartFolders folders{.user = userConfiguration / below, .system = {}};
    const auto named = environment("XDG_CONFIG_DIRS");
    for (const auto& folder : foldersIn(named.empty() ? "/etc/xdg" : named)) {
        if (folder.is_absolute())
            folders.system.push_back(folder / below);
    }
    return folders;
}

} // namespace clavo
