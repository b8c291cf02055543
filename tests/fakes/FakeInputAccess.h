// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"

namespace clavo
{

/// A permission that the test grants or refuses.
class FakeInputAccess : public InputAccess
{
public:
    [[nodiscard]] bool isGranted() const override { return granted; }

    bool granted = true;
};

} // namespace clavo
