// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"

namespace clavo
{

/// The permission where there is nothing to be permitted.
class GrantedInputAccess final : public InputAccess
{
public:
    [[nodiscard]] State state() const override { return State::granted; }
    bool request() override { return true; }
    void showSettings() override {}
};

} // namespace clavo
