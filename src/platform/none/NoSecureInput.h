// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

namespace clavo
{

/// Secure input where nothing can tell: always off.
class NoSecureInput final : public SecureInput
{
public:
    [[nodiscard]] SecureReason reason() const override { return SecureReason::none; }
};

} // namespace clavo
