// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"
#include "platform/procfs/Processes.h"

#include <optional>
#include <string>

#include <sys/types.h>

namespace clavo
{

/// A terminal that is asked repeatedly whether it reads whole lines without echo, as it does for a
/// password.
///
/// Opening it takes far longer than asking, so it stays open, but not beyond the end of its
/// session's leader: the program that shows a terminal notices the end of the programs in it only
/// when no process has it open. If the leader is unknown it is opened for every question.
class Terminal
{
public:
    /// `leader` is 0 if it is unknown.
    Terminal(std::string file, pid_t leader);

    /// False if the file is no terminal. Takes less than a microsecond, or several if the terminal
    /// has to be opened.
    [[nodiscard]] bool readsWithoutEcho() const;

private:
    std::string m_file;
    std::optional<Descriptor> m_open;
    ProcessEnd m_leader;
};

} // namespace clavo
