// SPDX-License-Identifier: MIT
#pragma once

namespace clavo
{

/// Tells whether a password or the like is being entered. Asked at every event, so the answer costs
/// no more than a load. Thread: main.
class SecureInput
{
public:
    virtual ~SecureInput() = default;

    [[nodiscard]] virtual bool isEnabled() const = 0;
};

} // namespace clavo
