// SPDX-License-Identifier: MIT
#pragma once

#include "app/LoginItem.h"

namespace clavo
{

/// The login item of a desktop that starts nothing at login.
class NoLoginItem final : public LoginItem
{
public:
    [[nodiscard]] Status status() const override { return Status::notRegistered; }
    [[nodiscard]] std::optional<std::string> registerItem() override { return "not supported"; }
    [[nodiscard]] std::optional<std::string> unregisterItem() override { return std::nullopt; }
};

} // namespace clavo
