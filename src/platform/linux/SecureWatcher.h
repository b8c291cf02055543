// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <functional>
#include <utility>

namespace clavo
{

/// One of the things that make input secret, which tells by itself when it does and no longer does.
class SecureWatcher : public SecureInput
{
public:
    SecureWatcher(const SecureWatcher&) = delete;
    SecureWatcher& operator=(const SecureWatcher&) = delete;

    [[nodiscard]] SecureReason reason() const final { return m_reason; }

    /// Called on the main thread whenever reason() has changed.
    std::function<void()> changed;

protected:
    SecureWatcher() = default;

    void setReason(SecureReason reason)
    {
        if (std::exchange(m_reason, reason) != reason && changed)
            changed();
    }

private:
    SecureReason m_reason = SecureReason::none;
};

} // namespace clavo
