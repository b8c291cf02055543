// SPDX-License-Identifier: MIT
#include "platform/procfs/RunningProgram.h"

#include <string>
#include <string_view>
#include <system_error>

namespace clavo
{

std::filesystem::path runningProgram()
{
    return programOfLink("/proc/self/exe");
}

std::filesystem::path programOfLink(const std::filesystem::path& link)
{
    constexpr std::string_view mark = " (deleted)";

    std::error_code error;
    auto program = std::filesystem::read_symlink(link, error);
    // A file may really be called so.
    if (program.native().ends_with(mark) && !std::filesystem::exists(program, error))
        program = program.native().substr(0, program.native().size() - mark.size());
    return program;
}

} // namespace clavo
