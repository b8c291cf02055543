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
};

} // namespace clavo
