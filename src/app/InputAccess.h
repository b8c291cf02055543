// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace clavo
{

/// The permission to listen to the input of the whole desktop.
class InputAccess
{
public:
    /// Whether this process may listen, and if not, why.
    enum class State {
        granted,
        refused,        // There are keyboards, and none of them may be read.
        noKeyboard,     // No input device is a keyboard.
        notInThisLogin, // Granted to the user after this session began.
    };

    /// What a request was caused by.
    enum class Occasion {
        start,       // The program has just started, perhaps at login.
        userRequest, // The user has asked for it.
    };

    virtual ~InputAccess() = default;

    /// Asks nothing of the user and changes nothing.
    [[nodiscard]] virtual State state() const = 0;

    /// Whether this process may listen now.
    [[nodiscard]] bool isGranted() const { return state() == State::granted; }

    /// Asks the system, which may ask the user, for the permission. True if it is granted already;
    /// the user's decision shows in state() later. A dialog that takes the focus, such as one for a
    /// password, opens only on userRequest.
    virtual bool request(Occasion occasion) = 0;

    /// Opens the system's settings for the permission, if there are any.
    virtual void showSettings() = 0;

    /// The commands, one per line, with which the user grants the permission in a terminal; empty
    /// when request() can ask the user for it.
    [[nodiscard]] virtual std::string commands() const { return {}; }

    /// Calls the receiver on the main thread when commands() changes and, as far as the system
    /// reports it, when state() may have changed.
    virtual void watch(std::function<void()> /*receiver*/) {}
};

} // namespace clavo
