// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/SecureWatcher.h"

#include <string_view>

#include <sys/types.h>

namespace clavo
{

/// Whether a program of this name is there for nothing but to ask for passwords. The name is as the
/// kernel has it, cut off after 15 characters.
[[nodiscard]] bool asksForPasswords(std::string_view program);

/// The program that has the keys: secret while it is one that asks for passwords. Many of these
/// draw their field themselves, so that nothing tells what it is.
class PromptSecureInput final : public SecureWatcher
{
public:
    /// The process that has the keys now; 0 if it is not known.
    void setFocus(pid_t process);
};

} // namespace clavo
