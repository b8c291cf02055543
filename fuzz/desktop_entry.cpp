// SPDX-License-Identifier: MIT
// A desktop entry, and the program's own one that starts it at login.
#include "fakes/TemporaryFolder.h"
#include "fuzz/Input.h"
#include "platform/xdg/AutostartEntry.h"
#include "platform/xdg/DesktopEntry.h"

using namespace clavo;
using fuzz::require;

namespace
{

DesktopEntry entryWith(const std::string& line)
{
    return DesktopEntry::parse("[Desktop Entry]\n" + line + "\n");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TemporaryFolder folder;
    const auto text = fuzz::textOf(data, size);
    const auto entry = DesktopEntry::parse(text);
    for (const auto* const key : {"Exec", "TryExec", "Hidden", "Name"}) {
        require(entry.text(key).size() <= size, "an escape is longer than what it stands for");
        require(programOfExec(entry.text(key)).size() <= size, "so is a quoted program");
        require(!entry.boolean(key) || entry.boolean(key) == (entry.text(key) == "true"),
                "a Boolean is one of two words");
    }
    require(entryWith("Name=" + escaped(text)).text("Name") == text, "any text can be a value");
    const auto command = entryWith("Exec=" + escaped(quotedForExec(text)) + " --background");
    require(programOfExec(command.text("Exec")) == text, "any program can be a command");

    ::setenv("XDG_CONFIG_DIRS", text.c_str(), /*overwrite=*/1);
    for (const auto& each : autostartFolders(folder.path()).system)
        require(each.is_absolute() && each.filename() == "autostart", "a folder has a whole path");

    const auto file = folder.path() / "clavo.desktop";
    fuzz::write(file, text);
    const AutostartFolders users{.user = folder.path(), .system = {folder.path() / "none"}};
    const AutostartFolders systems{.user = folder.path() / "none", .system = {folder.path()}};
    const auto status = makeAutostartEntry(users, "/bin/sh")->status();
    require(status == makeAutostartEntry(systems, "/bin/sh")->status(),
            "an entry counts the same in both places");
    require(status != LoginItem::Status::enabled || entry.boolean("Hidden") != true,
            "a hidden entry starts nothing");
    if (size % 16 != 0) // The disk is slow.
        return 0;
    const auto item = makeAutostartEntry(users, "/bin/sh");
    require(!item->registerItem() && item->status() == LoginItem::Status::enabled, "registered");
    require(!item->unregisterItem() && item->status() == LoginItem::Status::notRegistered, "not");
    return 0;
}
