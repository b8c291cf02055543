// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace clavo
{

/// The permission to listen to the whole desktop's input.
class InputAccess
{
public:
    /// What keeps this process from listening, or that nothing does.
    enum class State {
        granted,
        refused,        // The devices are there and none of the keyboards may be read.
        noKeyboard,     // None of the devices, if there are any, is a keyboard.
        notInThisLogin, // Granted to the user since this session was opened.
    };

    /// Why the permission is asked for.
    enum class Occasion {
        start,       // The program has just started, perhaps at login.
        userRequest, // The user has asked for it.
    };

    virtual ~InputAccess() = default;

    /// Neither asks the user nor changes anything.
    [[nodiscard]] virtual State state() const = 0;

    /// Whether this process may listen now.
    [[nodiscard]] bool isGranted() const { return state() == State::granted; }

    /// Asks the system, which may ask the user, for the permission. True if it is granted already;
    /// what the user decides is seen later. A dialogue that takes the focus, for example one for
    /// a password, opens at the user's request only.
    virtual bool request(Occasion occasion) = 0;

    /// Shows the user where the permission is granted. Does nothing when there is no such place.
    virtual void showSettings() = 0;

    /// What the user can type into a terminal when it is refused, a line each; empty when
    /// request() asks the user for it.
    [[nodiscard]] virtual std::string commands() const { return {}; }

    /// Calls the receiver on the main thread when commands() changes.
    virtual void watch(std::function<void()> /*receiver*/) {}
};

} // namespace clavo
