// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <filesystem>
#include <memory>

#include <sys/types.h>

namespace clavo
{

/// Secure while any terminal of the focused program reads without echo. Which of its terminals is
/// in front is not known.
///
/// The program's terminals are found in the background, when the focus goes to another program and
/// when a terminal appears or disappears. Their echo is read at every reason(), since nothing
/// reports that it changes. Thread: main, which runs a Qt event loop.
class TerminalSecureInput : public SecureInput
{
public:
    /// Which terminals to check when the focused program is unknown. everyTerminal includes only
    /// those that echoed when first seen: some programs consist of terminals, Emacs among them, and
    /// have some that never echo.
    enum class Unknown { noTerminal, everyTerminal };

    /// Sets the focused process; 0 if it is unknown, as it is initially.
    virtual void setFocus(pid_t process) = 0;
};

[[nodiscard]] std::unique_ptr<TerminalSecureInput>
makeTerminalSecureInput(TerminalSecureInput::Unknown unknown,
                        std::filesystem::path folder = "/dev/pts");

} // namespace clavo
