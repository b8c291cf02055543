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
        noKeyboard,     // There is no device at all, or only such as are no keyboards.
        notInThisLogin, // Granted to the user since this session was opened.
    };

    virtual ~InputAccess() = default;

    /// Asks nobody and changes nothing.
    [[nodiscard]] virtual State state() const = 0;

    /// Whether this process may listen now.
    [[nodiscard]] bool isGranted() const { return state() == State::granted; }

    /// Asks the system, which may ask the user, for the permission. True if it is granted already;
    /// what the user decides is seen later.
    virtual bool request() = 0;

    /// Shows the user where the permission is granted. Does nothing where there is no such place.
    virtual void showSettings() = 0;

    /// What the user can type into a terminal where it is refused, a line each; empty where
    /// request() asks for it.
    [[nodiscard]] virtual std::string commands() const { return {}; }

    /// Called on the main thread when commands() changes.
    std::function<void()> changed;
};

} // namespace clavo
