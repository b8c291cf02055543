// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

namespace clavo
{

/// A desktop without a tray.
class NoTrayHosts final : public TrayHosts
{
public:
    void watch(Receiver receiver) override { receiver(TrayHost::none); }
    void dock(std::uint32_t /*window*/) override {}
};

} // namespace clavo
