// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/SecureWatcher.h"

#include <memory>

namespace clavo
{

/// The desktop's screen saver, by the names that the desktops have given it: secret while one is
/// active. One that leaves the bus is not.
class ScreenSaverSecureInput final : public SecureWatcher
{
public:
    ScreenSaverSecureInput();
    ~ScreenSaverSecureInput() override;

private:
    class Watch;

    std::unique_ptr<Watch> m_watch;
};

} // namespace clavo
