// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"
#include "platform/evdev/EvdevAccess.h"

#include <string>

namespace clavo
{

/// The permission to read the kernel's input devices. An administrator gives it; what to type for
/// that goes to the log.
class EvdevInputAccess final : public InputAccess
{
public:
    [[nodiscard]] bool isGranted() const override;
    bool request() override { return isGranted(); }
    void showSettings() override;
};

/// What the user can do about an access that is missing, a line each; empty where it is granted.
[[nodiscard]] std::string adviceOn(evdev::Access access);

} // namespace clavo
