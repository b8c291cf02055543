// SPDX-License-Identifier: MIT
#include "files/WholeFile.h"

#include "files/Descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

constexpr std::string_view temporaryPrefix = ".clavo-new-";

bool writeAll(int file, std::string_view content)
{
    while (!content.empty()) {
        const auto count = ::write(file, content.data(), content.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool renameOver(const std::string& from, const fs::path& to)
{
    if (std::rename(from.c_str(), to.c_str()) == 0)
        return true;
    return errno == EISDIR && ::rmdir(to.c_str()) == 0 &&
           std::rename(from.c_str(), to.c_str()) == 0;
}

} // namespace

bool replaceFile(const fs::path& file, std::string_view content)
{
    const auto folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    auto temporary = (folder / temporaryPrefix).native() + "XXXXXX";
    const Descriptor next(::mkostemp(temporary.data(), O_CLOEXEC));
    if (next.number() < 0)
        return false;
    if (!writeAll(next.number(), content) || ::fsync(next.number()) != 0 ||
        !renameOver(temporary, file)) {
        ::unlink(temporary.c_str());
        return false;
    }
    // The new name has to reach the disk too. Where a file system cannot promise that, the file is
    // still whole.
    const Descriptor names(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (names.number() >= 0)
        static_cast<void>(::fsync(names.number()));
    return true;
}

void removeAbandoned(const fs::path& folder)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().filename().native().starts_with(temporaryPrefix))
            fs::remove(entry->path(), ignored);
    }
}

} // namespace clavo
