// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <filesystem>
#include <memory>

#include <sys/types.h>

namespace clavo
{

/// The terminals of the program that has the keys: secret while any of them reads without echo. A
/// window does not tell which of its terminals is in front.
///
/// Which terminals these are is found out in the background, when the keys go to another program
/// and when a terminal comes or goes. What they do at the moment is asked at every call: it changes
/// without a notice.
class TerminalSecureInput final : public SecureInput
{
public:
    /// Whose terminals count where it is not known which program has the keys: nobody's, or those
    /// of all programs. Of the latter one counts only if it showed what was typed when it was first
    /// seen: programs that are made up of terminals, Emacs among them, have some that never do.
    enum class Unknown { noTerminal, everyTerminal };

    explicit TerminalSecureInput(Unknown unknown, std::filesystem::path folder = "/dev/pts");
    ~TerminalSecureInput() override;

    /// The process that has the keys now; 0 if it is not known, as in the beginning.
    void setFocus(pid_t process);

    [[nodiscard]] SecureReason reason() const override;

private:
    class Terminals;

    std::unique_ptr<Terminals> m_terminals;
};

} // namespace clavo
