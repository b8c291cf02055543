// SPDX-License-Identifier: MIT
#include "app/BankLoad.h"

#include "packs/BankLoader.h"

#include <optional>
#include <utility>

namespace clavo
{

BankLoad::BankLoad(std::unique_ptr<Timer> timer, std::function<std::chrono::nanoseconds()> uptime)
    : m_timer(std::move(timer)), m_uptime(std::move(uptime))
{
}

BankLoad::~BankLoad() = default;

void BankLoad::start(SoundPack pack, const AudioFormat& format, Receiver receiver,
                     const std::set<std::int64_t>* only)
{
    m_timer->stop();
    m_loader = std::make_unique<BankLoader>(std::move(pack), format, only);
    m_receiver = std::move(receiver);
    loadFor(atOnce);
}

void BankLoad::loadFor(std::chrono::nanoseconds time)
{
    std::optional<SoundBank> bank;
    try {
        const auto end = m_uptime() + time;
        while (m_loader->step()) {
            if (m_uptime() < end)
                continue;
            m_timer->start(std::chrono::milliseconds(0), [this] { loadFor(slice); });
            return;
        }
        bank = m_loader->takeBank();
    } catch (const std::exception& exception) {
        m_loader.reset(); // First, as it may hold much memory.
        std::exchange(m_receiver, {}).failed(exception);
        return;
    }
    m_loader.reset();
    std::exchange(m_receiver, {}).loaded(*std::move(bank));
}

} // namespace clavo
