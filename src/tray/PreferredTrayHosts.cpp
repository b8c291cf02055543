// SPDX-License-Identifier: MIT
#include "tray/PreferredTrayHosts.h"

#include <utility>

namespace clavo
{

PreferredTrayHosts::PreferredTrayHosts(std::unique_ptr<TrayHosts> first,
                                       std::unique_ptr<TrayHosts> second)
    : m_first(std::move(first)), m_second(std::move(second))
{
}

void PreferredTrayHosts::watch(Receiver receiver)
{
    m_receiver = std::move(receiver);
    m_first->watch([this](TrayHost host) {
        m_ofFirst = host;
        if (m_ofFirst != TrayHost::none || m_secondIsWatched)
            return m_receiver(m_ofFirst == TrayHost::none ? m_ofSecond : m_ofFirst);
        m_secondIsWatched = true;
        m_second->watch([this](TrayHost other) {
            m_ofSecond = other;
            if (m_ofFirst == TrayHost::none)
                m_receiver(m_ofSecond);
        });
    });
}

void PreferredTrayHosts::dock(std::uint32_t window)
{
    present().dock(window);
}

TrayAppearance PreferredTrayHosts::appearance()
{
    return present().appearance();
}

TrayHosts& PreferredTrayHosts::present() const
{
    return m_ofFirst == TrayHost::none ? *m_second : *m_first;
}

} // namespace clavo
