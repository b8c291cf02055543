// SPDX-License-Identifier: MIT
#pragma once

#include "audio/realtime/Nonblocking.h"

#include <atomic>
#include <thread>

namespace clavo
{

/// An object the main thread lends to the audio thread and can take back at any time, without ever
/// making the audio thread wait.
///
/// Both sides write their own word before they read the other's, in the one order all threads agree
/// on: either the audio thread sees that the object is gone, or the main thread sees that it is in
/// use. Owns: nothing.
template <typename T> class Lent
{
    static_assert(std::atomic<T*>::is_always_lock_free);

public:
    /// Lends another object, or none at all. When the call returns, the audio thread has let go of
    /// the one lent before; it waits for a use under way, so for one block at most. Thread: main.
    void lend(T* object) noexcept
    {
        m_object.store(object);
        while (m_isInUse.load())
            std::this_thread::yield();
    }

    /// Calls `action` with the object lent, or with a null pointer. Thread: audio, one use at a
    /// time.
    template <typename Action> void use(const Action& action) noexcept CLAVO_NONBLOCKING
    {
        m_isInUse.store(true);
        action(m_object.load());
        m_isInUse.store(false);
    }

private:
    std::atomic<T*> m_object = nullptr;
    std::atomic<bool> m_isInUse = false;
};

} // namespace clavo
