// SPDX-License-Identifier: MIT
#include "packs/RegularFile.h"

#include <fstream>
#include <system_error>

namespace clavo
{

std::optional<std::string> readRegularFile(const std::filesystem::path& path,
                                           std::uint64_t maximumSize)
{
    // The system would take such a name for the text before its zero, and read another file.
    if (path.native().find('\0') != std::filesystem::path::string_type::npos)
        return std::nullopt;

    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return std::nullopt;
    const std::uint64_t size = std::filesystem::file_size(path, error);
    if (error || size > maximumSize)
        return std::nullopt;

    std::ifstream file(path, std::ios::binary);
    std::string content(size, '\0');
    if (!file.read(content.data(), static_cast<std::streamsize>(size)))
        return std::nullopt;
    return content;
}

} // namespace clavo
