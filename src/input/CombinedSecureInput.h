// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <memory>
#include <utility>
#include <vector>

namespace clavo
{

/// Secure input as long as any of several watchers says so. They are read when one of them
/// notifies, and not when the reason is asked for.
class CombinedSecureInput final : public SecureInput
{
public:
    using Watchers = std::vector<std::unique_ptr<ObservableSecureInput>>;

    explicit CombinedSecureInput(Watchers watchers) : m_watchers(std::move(watchers))
    {
        for (const auto& watcher : m_watchers)
            watcher->watch([this] { look(); });
        look();
    }
    CombinedSecureInput(const CombinedSecureInput&) = delete;
    CombinedSecureInput& operator=(const CombinedSecureInput&) = delete;

    /// That of the first watcher that has one.
    [[nodiscard]] SecureReason reason() const override { return m_reason; }

private:
    void look()
    {
        m_reason = SecureReason::none;
        for (const auto& watcher : m_watchers) {
            if (m_reason == SecureReason::none)
                m_reason = watcher->reason();
        }
    }

    SecureReason m_reason = SecureReason::none;
    Watchers m_watchers;
};

} // namespace clavo
