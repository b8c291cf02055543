// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <string_view>

#include <sys/types.h>

namespace clavo
{

/// Whether a program of this name is there for nothing but to ask for passwords. The name is as the
/// kernel has it, cut off after 15 characters.
[[nodiscard]] bool asksForPasswords(std::string_view program);

/// The program that has the keys: secret while it is one that asks for passwords. Many of these
/// draw their field themselves, so that nothing tells what it is.
class PromptSecureInput final : public SecureInput
{
public:
    /// The process that has the keys now; 0 if it is not known.
    void setFocus(pid_t process);

    [[nodiscard]] SecureReason reason() const override
    {
        return m_asks ? SecureReason::passwordPrompt : SecureReason::none;
    }

private:
    bool m_asks = false;
};

} // namespace clavo
