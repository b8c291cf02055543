// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <memory>

namespace clavo
{

/// The desktop's screen saver, by the names that the desktops have given it: secret while one is
/// active. One that leaves the bus is not.
class ScreenSaverSecureInput final : public SecureInput
{
public:
    ScreenSaverSecureInput();
    ~ScreenSaverSecureInput() override;

    [[nodiscard]] SecureReason reason() const override;

private:
    class Watch;

    std::unique_ptr<Watch> m_watch;
};

} // namespace clavo
