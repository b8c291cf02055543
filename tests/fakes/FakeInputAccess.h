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
    bool request() override
    {
        ++requests;
        return granted;
    }
    void showSettings() override { ++settingsShown; }

    bool granted = true;
    int requests = 0;
    int settingsShown = 0;
};

} // namespace clavo
