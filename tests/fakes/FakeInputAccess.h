// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"

namespace clavo
{

/// A permission that the test grants or refuses.
class FakeInputAccess : public InputAccess
{
public:
    [[nodiscard]] State state() const override
    {
        ++looks;
        return granted ? State::granted : obstacle;
    }
    bool request() override
    {
        ++requests;
        return granted;
    }
    void showSettings() override { ++settingsShown; }
    [[nodiscard]] std::string commands() const override { return typed; }

    bool granted = true;
    State obstacle = State::refused; // While it is not granted.
    std::string typed;               // The commands.
    mutable int looks = 0;           // Calls of state().
    int requests = 0;
    int settingsShown = 0;
};

} // namespace clavo
