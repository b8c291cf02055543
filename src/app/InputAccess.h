// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// The permission to listen to the whole desktop's input.
class InputAccess
{
public:
    virtual ~InputAccess() = default;

    /// Whether this process may listen now. Asks nobody and changes nothing.
    [[nodiscard]] virtual bool isGranted() const = 0;

    /// Asks the system, which may ask the user, for the permission. True if it is granted already;
    /// what the user decides is seen later.
    virtual bool request() = 0;

    /// Shows the user where the permission is granted. Does nothing where there is no such place.
    virtual void showSettings() = 0;
};

} // namespace clavo
