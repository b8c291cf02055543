// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <memory>
#include <utility>
#include <vector>

namespace clavo
{

/// Secure input as long as any of several watchers says so.
class AnySecureInput final : public SecureInput
{
public:
    using Watchers = std::vector<std::unique_ptr<SecureInput>>;

    explicit AnySecureInput(Watchers watchers) : m_watchers(std::move(watchers)) {}

    /// The first watcher's that has one.
    [[nodiscard]] SecureReason reason() const override
    {
        for (const auto& watcher : m_watchers) {
            if (const auto reason = watcher->reason(); reason != SecureReason::none)
                return reason;
        }
        return SecureReason::none;
    }

private:
    Watchers m_watchers;
};

} // namespace clavo
