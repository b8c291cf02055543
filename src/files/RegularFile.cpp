// SPDX-License-Identifier: MIT
#include "files/RegularFile.h"

#include "files/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace clavo
{
namespace
{

/// Whether the system would take the path for the text before its zero, and find another file.
bool isCutShort(const std::filesystem::path& path)
{
    return path.native().find('\0') != std::filesystem::path::string_type::npos;
}

} // namespace

std::optional<FileIdentity> identityOf(const std::filesystem::path& path)
{
    struct stat status = {};
    if (isCutShort(path) || ::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity{.device = static_cast<std::uint64_t>(status.st_dev),
                        .number = static_cast<std::uint64_t>(status.st_ino)};
}

std::optional<std::string> readRegularFile(const std::filesystem::path& path,
                                           std::uint64_t maximumSize)
{
    if (isCutShort(path))
        return std::nullopt;

    // Opening without blocking, and asking the open file what it is, leaves no moment in which a
    // pipe could take the file's place.
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

} // namespace clavo
