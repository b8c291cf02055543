// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

#include <utility>
#include <vector>

namespace clavo
{

/// A tray whose hosts come and go by hand.
class FakeTrayHosts final : public TrayHosts
{
public:
    std::vector<std::uint32_t> docked; // The windows that asked to be embedded.

    TrayAppearance tray; // As the host describes it.

    void watch(Receiver receiver) override { m_receiver = std::move(receiver); }
    TrayAppearance appearance() override { return tray; }
    void dock(std::uint32_t window) override { docked.push_back(window); }

    [[nodiscard]] bool isWatched() const { return m_receiver != nullptr; }
    void turnTo(TrayHost host) { m_receiver(host); }

private:
    Receiver m_receiver;
};

} // namespace clavo
