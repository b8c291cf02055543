// SPDX-License-Identifier: MIT
#pragma once

#include "app/LoginItem.h"

#include <utility>

namespace clavo
{

/// A login item in memory, which refuses to change while `error` is set.
class FakeLoginItem : public LoginItem
{
public:
    [[nodiscard]] Status status() const override { return current; }
    [[nodiscard]] std::optional<std::string> registerItem() override
    {
        ++registrations;
        return change(Status::enabled);
    }
    [[nodiscard]] std::optional<std::string> unregisterItem() override
    {
        ++unregistrations;
        return change(Status::notRegistered);
    }

    Status current = Status::notRegistered;
    std::optional<std::string> error;
    int registrations = 0;
    int unregistrations = 0;

private:
    std::optional<std::string> change(Status wanted)
    {
        if (!error)
            current = wanted;
        return error;
    }
};

} // namespace clavo
