// SPDX-License-Identifier: MIT
#include "clavo-grant-input/InputGrant.h"

#include "files/WholeFile.h"
#include "platform/evdev/InputRule.h"

#include <spawn.h>
#include <sys/wait.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <vector>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

constexpr auto purpose = "# Clavo: keyboards, mice and touchpads can be read and written by the "
                         "programs of whoever sits\n"
                         "# at the machine.\n"
                         "# clavo-grant-input --revoke takes this back.\n";

constexpr std::uint64_t greatestRuleFile = 65'536;

constexpr std::array commandPlaces{"usr/bin/udevadm", "bin/udevadm", "sbin/udevadm"};

constexpr auto noUdev = "there is no udevadm, so udev is not what gives out devices here";

fs::path ruleFileBelow(const fs::path& root)
{
    return root / fs::path(inputRuleFile).relative_path();
}

std::optional<fs::path> findUdevadm(const fs::path& root)
{
    std::error_code ignored;
    for (const auto* const place : commandPlaces) {
        if (fs::is_regular_file(root / place, ignored))
            return root / place;
    }
    return std::nullopt;
}

bool run(std::vector<std::string> command)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (auto& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    std::string path = "PATH=/usr/sbin:/usr/bin:/sbin:/bin";
    std::array<char*, 2> environment{path.data(), nullptr};
    pid_t process = 0;
    if (::posix_spawn(&process, arguments.front(), nullptr, nullptr, arguments.data(),
                      environment.data()) != 0)
        return false;
    int status = 0;
    while (::waitpid(process, &status, 0) < 0) {
        if (errno != EINTR)
            return false;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// The text of the rule's file.
std::string ruleText()
{
    std::string text = purpose;
    for (const auto* const kind : inputKinds)
        text += inputRule(kind) + "\n";
    return text;
}

bool reload(const fs::path& udevadm)
{
    return run({udevadm, "control", "--reload"});
}

/// Makes udev handle all input devices as if they had just been connected.
bool trigger(const fs::path& udevadm)
{
    return run({udevadm, "trigger", "--subsystem-match=input", "--action=change", "--settle"});
}

/// udev gives single users rights, but does not revoke them.
void removeRights(const fs::path& devices)
{
    std::error_code error;
    for (fs::directory_iterator entry(devices, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().filename().native().starts_with("event"))
            ::lremovexattr(entry->path().c_str(), "system.posix_acl_access");
    }
}

std::string failure(std::string_view what, const fs::path& file)
{
    return std::string(what) + " " + file.string() + "; this takes root, as pkexec gives it";
}

} // namespace

std::optional<std::string> grantInput(const fs::path& root)
{
    const auto udevadm = findUdevadm(root);
    if (!udevadm)
        return noUdev;
    const auto file = ruleFileBelow(root);
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    if (fs::is_symlink(file, error)) // Root writes to no other place.
        fs::remove(file, error);
    const auto previous = readRegularFile(file, greatestRuleFile);
    if (replaceFile(file, ruleText()))
        return failure("cannot write", file);
    fs::permissions(file,
                    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
                        fs::perms::others_read,
                    error);
    const auto isReloaded = reload(*udevadm);
    if (previous && *previous != ruleText())
        removeRights(root / "dev" / "input"); // An older rule gave them for more devices.
    if (!isReloaded || !trigger(*udevadm))
        return "udev could not be asked to follow the rule; it does from the next start of the "
               "machine";
    return std::nullopt;
}

std::optional<std::string> revokeInput(const fs::path& root)
{
    const auto file = ruleFileBelow(root);
    std::error_code error;
    fs::remove(file, error);
    if (error)
        return failure("cannot remove", file);
    const auto udevadm = findUdevadm(root);
    const auto isReloaded = udevadm && reload(*udevadm);
    removeRights(root / "dev" / "input");
    if (!isReloaded || !trigger(*udevadm))
        return "the rule is gone, but udev could not be asked to follow; devices that other rules "
               "give out come back when they are plugged in again";
    return std::nullopt;
}

} // namespace clavo
