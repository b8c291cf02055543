// SPDX-License-Identifier: MIT
#include "tray/PreferredTrayHosts.h"

#include <cstdint>
#include <utility>

namespace clavo
{
namespace
{

class PreferredTrayHosts final : public TrayHosts
{
public:
    PreferredTrayHosts(std::unique_ptr<TrayHosts> first, std::unique_ptr<TrayHosts> second)
        : m_first(std::move(first)), m_second(std::move(second))
    {
    }

    void watch(Receiver receiver) override
    {
        m_receiver = std::move(receiver);
        m_first->watch([this](TrayHost host) {
            m_firstHost = host;
            if (host != TrayHost::none || m_secondIsWatched)
                return m_receiver(host == TrayHost::none ? m_secondHost : host);
            m_secondIsWatched = true;
            m_second->watch([this](TrayHost other) {
                m_secondHost = other;
                if (m_firstHost == TrayHost::none)
                    m_receiver(other);
            });
        });
    }

    TrayAppearance appearance() override { return present().appearance(); }
    void dock(std::uint32_t window) override { present().dock(window); }

private:
    [[nodiscard]] TrayHosts& present() const
    {
        return m_firstHost == TrayHost::none ? *m_second : *m_first;
    }

    Receiver m_receiver;
    TrayHost m_firstHost = TrayHost::none;
    TrayHost m_secondHost = TrayHost::none;
    bool m_secondIsWatched = false;
    std::unique_ptr<TrayHosts> m_first;
    std::unique_ptr<TrayHosts> m_second;
};

} // namespace

std::unique_ptr<TrayHosts> makePreferredTrayHosts(std::unique_ptr<TrayHosts> first,
                                                  std::unique_ptr<TrayHosts> second)
{
    return std::make_unique<PreferredTrayHosts>(std::move(first), std::move(second));
}

} // namespace clavo
