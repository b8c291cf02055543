// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/SecureWatcher.h"

#include <memory>
#include <utility>
#include <vector>

namespace clavo
{

/// Secure input as long as any of several watchers says so. They are looked at when one of them
/// tells of a change, and not when somebody asks.
class AnySecureInput final : public SecureInput
{
public:
    using Watchers = std::vector<std::unique_ptr<SecureWatcher>>;

    explicit AnySecureInput(Watchers watchers) : m_watchers(std::move(watchers))
    {
        for (const auto& watcher : m_watchers)
            watcher->changed = [this] { look(); };
        look();
    }
    AnySecureInput(const AnySecureInput&) = delete;
    AnySecureInput& operator=(const AnySecureInput&) = delete;

    /// The first watcher's that has one.
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
