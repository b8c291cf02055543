// SPDX-License-Identifier: MIT
#pragma once

#include "packs/SoundPack.h"
#include "synth/AudioBuffer.h"
#include "synth/SoundBank.h"
#include "time/Timer.h"

#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <set>

namespace clavo
{

class BankLoader;

/// Loads a pack's bank without keeping the main thread from its input for long: at once if it takes
/// no longer than `atOnce`, and the rest in slices between which the main loop turns.
/// Thread: main.
class BankLoad
{
public:
    /// The end of a load. One of the two is called, once. It may start the next load.
    struct Receiver {
        std::function<void(SoundBank)> loaded;
        std::function<void(const std::exception&)> failed;
    };

    static constexpr std::chrono::milliseconds atOnce{100};
    static constexpr std::chrono::milliseconds slice{20};

    BankLoad(std::unique_ptr<Timer> timer, std::function<std::chrono::nanoseconds()> uptime);
    ~BankLoad();
    BankLoad(const BankLoad&) = delete;
    BankLoad& operator=(const BankLoad&) = delete;

    /// Loads a pack, or `only` its scancodes, instead of what is being loaded, whose receiver is
    /// dropped.
    void start(SoundPack pack, const AudioFormat& format, Receiver receiver,
               const std::set<std::int64_t>* only = nullptr);

private:
    void loadFor(std::chrono::nanoseconds time);

    std::unique_ptr<Timer> m_timer; // Of the next slice.
    std::function<std::chrono::nanoseconds()> m_uptime;
    std::unique_ptr<BankLoader> m_loader; // Null when nothing is being loaded.
    Receiver m_receiver;
};

} // namespace clavo
