// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

namespace clavo
{

/// Secure input switched by hand.
class FakeSecureInput final : public SecureInput
{
public:
    bool on = false;

    [[nodiscard]] SecureReason reason() const override
    {
        return on ? SecureReason::passwordField : SecureReason::none;
    }
};

} // namespace clavo
