// SPDX-License-Identifier: MIT
#pragma once

#include "files/WholeFile.h"
#include "packs/SoundFile.h"
#include "packs/SoundPack.h"
#include "synth/AudioBuffer.h"
#include "synth/SoundBank.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace clavo
{

namespace PackLibrary
{

/// The maximum size of all samples of one bank, in bytes. A full keyboard of half-second recordings
/// takes a third of it.
inline constexpr std::size_t bankBudget = std::size_t{256} << 20U;

} // namespace PackLibrary

/// Decodes a pack's sounds into a bank, in steps of a few milliseconds.
///
/// Loads presses, then releases, each in the order of their scancodes, until the budget is spent. A
/// sound that cannot be loaded or has no room gives no entry; a sound without samples gives an
/// entry without variants. Reads every file once, even under several names, and holds one recording
/// at a time beside the finished variants.
class BankLoader
{
public:
    /// If `only` is given, of its scancodes alone. Reads nothing before the first step.
    BankLoader(SoundPack pack, const AudioFormat& format,
               const std::set<std::int64_t>* only = nullptr);
    BankLoader(const BankLoader&) = delete;
    BankLoader& operator=(const BankLoader&) = delete;
    ~BankLoader() = default;

    /// Loads a little more; false when the bank is complete.
    [[nodiscard]] bool step();

    /// After the last step. To be taken once.
    [[nodiscard]] SoundBank takeBank() { return std::move(m_bank); }

private:
    enum class State { loaded, unreadable, leftOut };
    struct Sound {
        State state = State::unreadable;
        SoundBank::Variants variants = {};
    };
    struct Entry {
        std::int64_t scancode;
        const std::string* name;
        bool isPress;
    };

    void addEntries(const SoundPack::SoundNames& names, bool isPress,
                    const std::set<std::int64_t>* only);
    void beginEntry();
    void endDecoding();
    void addVariant();
    void endEntry(const Sound& sound);
    [[nodiscard]] std::pair<std::shared_ptr<float[]>, std::span<float>>
    takeMemory(std::size_t count);

    SoundPack m_pack;
    AudioFormat m_format;
    std::vector<Entry> m_entries;
    std::size_t m_next = 0; // Of the entries.
    SoundBank m_bank;

    std::map<FileIdentity, Sound> m_sounds;
    Sound* m_sound = nullptr;                // The one being loaded; null between two.
    std::unique_ptr<SoundDecoder> m_decoder; // Null once it is decoded.
    std::vector<float> m_recording;          // What was decoded,
    std::size_t m_variant = 0;               // and the next of its variants.

    std::size_t m_room = PackLibrary::bankBudget / sizeof(float); // Samples that still fit.
    std::shared_ptr<float[]> m_block;                             // The latest block.
    std::span<float> m_free;                                      // The unused end of the block.
};

} // namespace clavo
