// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"
#include "platform/linux/ProcessEnd.h"

#include <optional>
#include <string>

#include <sys/types.h>

namespace clavo
{

/// A terminal that is asked again and again whether it reads whole lines and has switched the echo
/// off, which is how a password is asked for there.
///
/// To open it takes far longer than to ask. So it stays open, but not beyond the end of the process
/// that leads its session: the program that shows a terminal learns that the programs in it have
/// ended when nobody has it open any more. Where the leader is not known it is opened for every
/// question.
class Terminal
{
public:
    /// `leader` is 0 where it is not known.
    Terminal(std::string file, pid_t leader);

    /// False for what is no terminal. Takes less than a microsecond, and several where the terminal
    /// has to be opened for it.
    [[nodiscard]] bool readsWithoutEcho() const;

private:
    std::string m_file;
    std::optional<Descriptor> m_open;
    ProcessEnd m_leader;
};

} // namespace clavo
