// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace clavo
{

/// The application's entry among the programs that the desktop starts at login. Thread: main.
class LoginItem
{
public:
    enum class Status {
        notRegistered,    // Not started at login, or switched off.
        enabled,          // Started at login.
        requiresApproval, // Registered, but not yet allowed by the user.
        notFound,         // Registered, but the program does not exist.
    };

    virtual ~LoginItem() = default;

    [[nodiscard]] virtual Status status() const = 0;
    // Make the status `enabled`, or another one. Return the system's error message, or nothing on
    // success.
    [[nodiscard]] virtual std::optional<std::string> registerItem() = 0;
    [[nodiscard]] virtual std::optional<std::string> unregisterItem() = 0;
};

} // namespace clavo
