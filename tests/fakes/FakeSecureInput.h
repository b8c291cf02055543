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

    [[nodiscard]] bool isEnabled() const override { return on; }
};

} // namespace clavo
