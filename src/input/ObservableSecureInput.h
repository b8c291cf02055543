// SPDX-License-Identifier: MIT
#pragma once

#include "input/SecureInput.h"

#include <functional>
#include <utility>

namespace clavo
{

/// A source of secure input that notifies when its state changes.
class ObservableSecureInput : public SecureInput
{
public:
    ObservableSecureInput(const ObservableSecureInput&) = delete;
    ObservableSecureInput& operator=(const ObservableSecureInput&) = delete;

    [[nodiscard]] SecureReason reason() const final { return m_reason; }

    /// Calls the receiver on the main thread whenever reason() has changed.
    void watch(std::function<void()> receiver) { m_receiver = std::move(receiver); }

protected:
    ObservableSecureInput() = default;

    void setReason(SecureReason reason)
    {
        if (std::exchange(m_reason, reason) != reason && m_receiver)
            m_receiver();
    }

private:
    SecureReason m_reason = SecureReason::none;
    std::function<void()> m_receiver;
};

} // namespace clavo
