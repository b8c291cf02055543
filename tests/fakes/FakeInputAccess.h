// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"

#include <functional>
#include <utility>
#include <vector>

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
    bool request(Occasion occasion) override
    {
        requests.push_back(occasion);
        return granted;
    }
    void showSettings() override { ++settingsShown; }
    [[nodiscard]] std::string commands() const override { return typed; }
    void watch(std::function<void()> receiver) override { changed = std::move(receiver); }

    bool granted = true;
    State obstacle = State::refused; // While it is not granted.
    std::string typed;               // The commands.
    mutable int looks = 0;           // Calls of state().
    std::function<void()> changed;   // What the watch has been given.
    std::vector<Occasion> requests;
    int settingsShown = 0;
};

} // namespace clavo
