// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

#include <memory>

namespace clavo
{

/// Hosts of two kinds as one: those of the second kind count while there is none of the first.
///
/// The second are not asked before the first have answered, so that a desktop with both is not
/// given an icon of the wrong kind first.
class PreferredTrayHosts final : public TrayHosts
{
public:
    PreferredTrayHosts(std::unique_ptr<TrayHosts> first, std::unique_ptr<TrayHosts> second);

    void watch(Receiver receiver) override;
    TrayAppearance appearance() override;
    void dock(std::uint32_t window) override;

private:
    [[nodiscard]] TrayHosts& present() const;

    Receiver m_receiver;
    TrayHost m_ofFirst = TrayHost::none;
    TrayHost m_ofSecond = TrayHost::none;
    bool m_secondIsWatched = false;
    std::unique_ptr<TrayHosts> m_first;
    std::unique_ptr<TrayHosts> m_second;
};

} // namespace clavo
