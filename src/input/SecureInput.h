// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace clavo
{

/// Why input is secret.
enum class SecureReason {
    none,           // It is not: input may be heard.
    lockedSession,  // The session is locked or inactive.
    passwordField,  // The focused field hides what is typed.
    passwordPrompt, // The focused program is a password prompt.
    silentTerminal, // The focused terminal does not echo what is typed.
};

/// Reports whether a password or the like is being entered. Queried for every event, so reason()
/// costs little more than a load. Thread: main.
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

/// Secure while any of several sources is. The sources are read when one of them notifies, not when
/// the reason is queried.
class CombinedSecureInput final : public SecureInput
{
public:
    using Sources = std::vector<std::unique_ptr<ObservableSecureInput>>;

    explicit CombinedSecureInput(Sources sources) : m_sources(std::move(sources))
    {
        for (const auto& source : m_sources)
            source->watch([this] { readSources(); });
        readSources();
    }
    CombinedSecureInput(const CombinedSecureInput&) = delete;
    CombinedSecureInput& operator=(const CombinedSecureInput&) = delete;

    /// The reason of the first source that is secure.
    [[nodiscard]] SecureReason reason() const override { return m_reason; }

private:
    void readSources()
    {
        m_reason = SecureReason::none;
        for (const auto& source : m_sources) {
            if (m_reason == SecureReason::none)
                m_reason = source->reason();
        }
    }

    SecureReason m_reason = SecureReason::none;
    Sources m_sources;
};

} // namespace clavo
