// SPDX-License-Identifier: MIT
#include "files/WholeFile.h"

#include "files/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
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
constexpr int mostLinks = 40; // The kernel's limit.

/// Whether the path contains a zero byte, at which system calls would end it.
bool isCutShort(const fs::path& path)
{
    return path.native().find('\0') != fs::path::string_type::npos;
}

bool writeAll(int file, std::string_view content)
{
    while (!content.empty()) {
        const auto count = ::write(file, content.data(), content.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool flush(int file)
{
#ifdef F_FULLFSYNC // On systems with it, fsync() leaves the data in the disk's cache.
    if (::fcntl(file, F_FULLFSYNC) == 0)
        return true;
#endif
    return ::fsync(file) == 0;
}

bool renameOver(const std::string& from, const fs::path& to)
{
    if (std::rename(from.c_str(), to.c_str()) == 0)
        return true;
    return errno == EISDIR && ::rmdir(to.c_str()) == 0 &&
           std::rename(from.c_str(), to.c_str()) == 0;
}

/// The file to replace: the target of a link, or the link itself if the target is not a regular
/// file.
fs::path replacedFile(const fs::path& file)
{
    std::error_code error;
    auto target = file;
    for (int links = 0; fs::is_symlink(target, error); ++links) {
        if (links == mostLinks)
            return file;
        target = target.parent_path() / fs::read_symlink(target, error);
    }
    const auto type = fs::status(target, error).type();
    return type == fs::file_type::regular || type == fs::file_type::not_found ? target : file;
}

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

} // namespace

std::optional<FileIdentity> identityOf(const fs::path& path)
{
    struct stat status = {};
    if (isCutShort(path) || ::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity{.device = static_cast<std::uint64_t>(status.st_dev),
                        .number = static_cast<std::uint64_t>(status.st_ino)};
}

std::optional<std::string> readRegularFile(const fs::path& path, std::uint64_t maximumSize)
{
    if (isCutShort(path))
        return std::nullopt;

    // Opened without blocking and then examined by its descriptor, so that a pipe cannot replace
    // the file between a check and the opening.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat status = {};
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (size > maximumSize)
        return std::nullopt;

    std::string content(size, '\0');
    std::size_t filled = 0;
    while (filled < size) {
        const auto count = ::read(file.number(), content.data() + filled, size - filled);
        if (count <= 0)
            return std::nullopt;
        filled += static_cast<std::size_t>(count);
    }
    return content;
}

std::error_code replaceFile(const fs::path& file, std::string_view content, Durability durability)
{
    const auto target = replacedFile(file);
    const auto folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    auto temporary = (folder / temporaryPrefix).native() + "XXXXXX";
    const Descriptor next(::mkostemp(temporary.data(), O_CLOEXEC));
    if (next.number() < 0)
        return lastError();
    const bool isDurable = durability == Durability::power;
    if (!writeAll(next.number(), content) || (isDurable && !flush(next.number())) ||
        !renameOver(temporary, target)) {
        const auto error = lastError();
        ::unlink(temporary.c_str());
        return error;
    }
    if (isDurable) {
        // The new name has to reach the disk too. The file is complete even if this fails.
        const Descriptor names(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (names.number() >= 0)
            static_cast<void>(flush(names.number()));
    }
    return {};
}

std::error_code setAside(const fs::path& file)
{
    const auto target = replacedFile(file);
    const auto first = target.native() + ".broken";
    fs::path aside = first;
    std::error_code error;
    for (int number = 2; fs::exists(fs::symlink_status(aside, error)); ++number)
        aside = first + '-' + std::to_string(number);
    fs::rename(target, aside, error);
    return error;
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
