// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// What makes input secret.
enum class SecureReason {
    none,           // Nothing: input may be heard.
    lockedSession,  // The session is locked, or somebody else's is at the screen.
    passwordField,  // The field that has the keys hides what is typed.
    passwordPrompt, // The program that has the keys does nothing but ask for passwords.
    silentTerminal, // The terminal that has the keys shows nothing of what is typed.
};

/// Tells whether a password or the like is being entered. Asked at every event, so the answer costs
/// little more than a load. Thread: main.
class SecureInput
{
public:
    virtual ~SecureInput() = default;

    [[nodiscard]] virtual SecureReason reason() const = 0;
    [[nodiscard]] bool isEnabled() const { return reason() != SecureReason::none; }
};

} // namespace clavo
