// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

namespace clavo
{

/// Secure input where nothing can tell: always off.
class NoSecureInput final : public SecureInput
{
public:
    [[nodiscard]] bool isEnabled() const override { return false; }
};

} // namespace clavo
