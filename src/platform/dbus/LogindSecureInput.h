// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/SecureWatcher.h"
#include "platform/linux/Timer.h"

#include <chrono>
#include <memory>

namespace clavo
{

/// The session as logind sees it: secret while it is locked or another one is at the screen.
///
/// Where logind is absent nothing is secret; it may come later.
class LogindSecureInput final : public SecureWatcher
{
public:
    /// How long an order to lock is believed that no lock follows. Not every locker tells logind
    /// when it has locked, and none of those when it has unlocked.
    static constexpr std::chrono::milliseconds timeToLock{10'000};

    explicit LogindSecureInput(std::unique_ptr<Timer> timer);
    ~LogindSecureInput() override;

private:
    class Session;

    std::unique_ptr<Session> m_session;
};

} // namespace clavo
