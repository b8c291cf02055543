// SPDX-License-Identifier: MIT
#pragma once

#include "audio/SoundEngine.h"

#include <chrono>
#include <functional>
#include <memory>

namespace clavo
{

/// Waits until the user grants the permission to listen: asks every two seconds for ten minutes.
///
/// The question goes to a fresh process, since a running one may keep its first answer for good. At
/// most one such process of a wait runs at a time, even one that takes longer than two seconds.
/// Thread: main.
class PermissionWait
{
public:
    /// Asks without blocking and gives the answer to the receiver later, on the main thread.
    using Ask = std::function<void(std::function<void(bool granted)> receiver)>;

    /// What a wait needs and what it leads to.
    struct Environment {
        SoundEngine::RunLater runLater;
        std::function<double()> uptime; // Seconds, any origin.
        std::function<bool()> isListening;
        Ask ask;
        std::function<void()> onGranted; // Called once a wait at most, which has ended by then.
    };

    explicit PermissionWait(Environment environment);

    /// Starts a wait. One that is under way is over, and an answer still on its way to it is
    /// ignored.
    void start();

    [[nodiscard]] bool isWaiting() const { return m_wait != nullptr; }

private:
    struct Wait {
        double deadline = 0; // Uptime, seconds.
        bool isAsking = false;
    };

    void scheduleTick();
    void tick();
    void receive(bool granted);

    Environment m_environment;
    std::shared_ptr<Wait>
        m_wait; // Tasks on their way hold it weakly: a wait that is over ends them.
};

} // namespace clavo
