// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Nonblocking.h"

#include <atomic>
#include <thread>

namespace clavo
{

/// A pointer that the main thread publishes to the audio thread and can withdraw at any time,
/// without ever making the audio thread wait.
///
/// The handshake is Dekker's: each side writes its own word before it reads the other's, both
/// sequentially consistent. Either the audio thread reads the new pointer, or the main thread sees
/// the access to the old one and waits for its end. Owns: nothing.
template <typename T> class SharedWithAudio
{
    static_assert(std::atomic<T*>::is_always_lock_free);

public:
    /// Replaces the published object; null withdraws it. When the call returns, the audio thread no
    /// longer accesses the former object. Waits for an access under way, one block at most.
    /// Thread: main.
    void publish(T* object) noexcept
    {
        m_object.store(object);
        while (m_isAccessed.load())
            std::this_thread::yield();
    }

    /// Calls `action` with the published object, or with null. Thread: audio, one access at a time.
    template <typename Action> void access(const Action& action) noexcept CLAVO_NONBLOCKING
    {
        m_isAccessed.store(true);
        action(m_object.load());
        m_isAccessed.store(false);
    }

private:
    std::atomic<T*> m_object = nullptr;
    std::atomic<bool> m_isAccessed = false;
};

} // namespace clavo
