// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <memory>
#include <string_view>

#include <sys/types.h>

namespace clavo
{

/// Whether the program of this name is a password prompt. The name is the kernel's, cut after 15
/// characters.
[[nodiscard]] bool asksForPasswords(std::string_view program);

/// Secure while the focused program is a password prompt. Many prompts draw their field themselves,
/// so that it is not recognizable as a password field.
class PromptSecureInput : public ObservableSecureInput
{
public:
    /// Sets the focused process; 0 if it is unknown, as it is initially.
    virtual void setFocus(pid_t process) = 0;
};

[[nodiscard]] std::unique_ptr<PromptSecureInput> makePromptSecureInput();

} // namespace clavo
