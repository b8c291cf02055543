// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <utility>

namespace clavo
{

/// What makes input secret.
enum class SecureReason {
    none,           // Nothing: input may be heard.
    lockedSession,  // The session is locked, or somebody else's is at the screen.
    passwordField,  // The field that has the keys hides what is typed.
    passwordPrompt, // The program that has the keys does nothing but ask for passwords.
    silentTerminal, // The terminal that has the keys shows nothing of what is typed.
};

/// Tells whether a password or the like is being entered. Asked at every event, so the answer costs
/// little more than a load. Thread: main.
class SecureInput
{
public:
    virtual ~SecureInput() = default;

    [[nodiscard]] virtual SecureReason reason() const = 0;
    [[nodiscard]] bool isEnabled() const { return reason() != SecureReason::none; }
};

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
