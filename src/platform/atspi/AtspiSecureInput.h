// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/SecureWatcher.h"
#include "platform/linux/Timer.h"

#include <chrono>
#include <functional>
#include <memory>

#include <sys/types.h>

namespace clavo
{

/// The element that has the keys, as programs tell it on the accessibility bus: secret while it is
/// a password field or part of one.
///
/// Listens to changes of focus and to nothing else, starts no service and leaves the desktop's
/// accessibility settings alone. Programs are asked but never waited for: until one has told what
/// its element is, or has had the time to, input is secret. The bus may be absent, come later and
/// go.
class AtspiSecureInput final : public SecureWatcher
{
public:
    /// Called with the process of every program that gets the keys, and with 0 when it loses them.
    using FocusReceiver = std::function<void(pid_t)>;

    /// How long input stays secret for a program that does not answer.
    static constexpr std::chrono::milliseconds patience{500};

    explicit AtspiSecureInput(std::unique_ptr<Timer> timer, FocusReceiver receiver = {});
    ~AtspiSecureInput() override;

private:
    class Focus;

    std::unique_ptr<Focus> m_focus;
};

} // namespace clavo
