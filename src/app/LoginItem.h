// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace clavo
{

/// The application among those that the desktop starts when the user logs in. Thread: main.
class LoginItem
{
public:
    enum class Status {
        notRegistered,    // Not started at login, or switched off.
        enabled,          // Started at login.
        requiresApproval, // Registered, but the user has yet to allow it.
        notFound,         // Registered, but there is no such program to start.
    };

    virtual ~LoginItem() = default;

    [[nodiscard]] virtual Status status() const = 0;
    /// These two change the status to enabled, or to anything else. They return what went wrong, in
    /// the system's words, and nothing on success.
    [[nodiscard]] virtual std::optional<std::string> registerItem() = 0;
    [[nodiscard]] virtual std::optional<std::string> unregisterItem() = 0;
};

/// Makes the login item what is wished, if it is not so already. A failure is one log line.
void setLaunchAtLogin(LoginItem& item, bool launchAtLogin);

} // namespace clavo
