// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevAccess.h"

#include "platform/evdev/EvdevDevice.h"

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>
#include <system_error>
#include <vector>

namespace clavo::evdev
{
namespace
{

/// Whether the user has become a member of the devices' group, but this process has not.
bool isMemberOfNextLogin()
{
    // NOLINTBEGIN(concurrency-mt-unsafe): one thread asks.
    const auto* const group = ::getgrnam("input");
    const auto* const user = ::getpwuid(::getuid());
    // NOLINTEND(concurrency-mt-unsafe)
    if (!group || !user)
        return false;
    bool isMember = false;
    for (auto* const* name = group->gr_mem; *name != nullptr; ++name)
        isMember = isMember || std::string_view(*name) == user->pw_name;
    std::vector<gid_t> own(static_cast<std::size_t>(std::max(0, ::getgroups(0, nullptr))));
    ::getgroups(static_cast<int>(own.size()), own.data());
    return isMember && std::ranges::find(own, group->gr_gid) == own.end();
}

} // namespace

Access accessToKeyboards(const std::filesystem::path& folder)
{
    std::error_code error;
    bool isAnyRefused = false;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!isDeviceNode(entry->path()))
            continue;
        if (::access(entry->path().c_str(), R_OK) != 0)
            isAnyRefused = true;
        else if (const auto device = EvdevDevice::open(entry->path());
                 device && device->traits().hasTypingKeys)
            return Access::granted;
    }
    if (!isAnyRefused)
        return Access::noKeyboard;
    return isMemberOfNextLogin() ? Access::notInThisLogin : Access::refused;
}

bool isDeviceNode(const std::filesystem::path& node)
{
    return node.filename().native().starts_with("event");
}

} // namespace clavo::evdev
