// SPDX-License-Identifier: MIT
#include "packs/BankLoader.h"

#include "packs/PlaybackRate.h"

#include <algorithm>

namespace clavo
{
namespace
{

/// Sounds share blocks of this many samples: a bank is allocated and freed as a whole, and a few
/// large blocks are far faster than hundreds of small ones. An ordinary pack needs one block, of
/// which the system backs only the pages that are written.
constexpr std::size_t blockSamples = std::size_t{4} << 20U;

} // namespace

BankLoader::BankLoader(SoundPack pack, const AudioFormat& format,
                       const std::set<std::int64_t>* only)
    : m_pack(std::move(pack)), m_format(format)
{
    addEntries(m_pack.press, /*isPress=*/true, only);
    addEntries(m_pack.release, /*isPress=*/false, only);
}

void BankLoader::addEntries(const SoundPack::SoundNames& names, bool isPress,
                            const std::set<std::int64_t>* only)
{
    for (const auto& [scancode, name] : names) {
        if (only == nullptr || only->contains(scancode))
            m_entries.push_back({.scancode = scancode, .name = &name, .isPress = isPress});
    }
}

bool BankLoader::step()
{
    if (m_decoder) {
        if (!m_decoder->step())
            endDecoding();
    } else if (m_sound != nullptr) {
        addVariant();
    } else if (m_next < m_entries.size()) {
        beginEntry();
    }
    return m_next < m_entries.size();
}

void BankLoader::beginEntry()
{
    auto path = m_pack.folder;
    // As text; operator/ would accept an absolute name.
    path += "/sounds/" + *m_entries[m_next].name + ".wav";
    const auto file = identityOf(path);
    if (!file) {
        endEntry({});
        return;
    }
    const auto [found, isNew] = m_sounds.try_emplace(*file);
    auto& sound = found->second;
    // After the first sound that does not fit, no other is decoded; this limits the time too.
    if (isNew && m_room == 0)
        sound.state = State::leftOut;
    if (!isNew || m_room == 0) {
        endEntry(sound);
        return;
    }
    m_sound = &sound;
    m_decoder = makeSoundDecoder(std::move(path), m_format);
}

void BankLoader::endDecoding()
{
    auto samples = m_decoder->takeSamples();
    m_decoder.reset();
    if (!samples) {
        endEntry(*m_sound);
        return;
    }
    std::size_t needed = 0;
    for (const double rate : playbackRates)
        needed += replayedLength(samples->size(), rate);
    if (needed > m_room) {
        m_room = 0;
        m_sound->state = State::leftOut;
        endEntry(*m_sound);
        return;
    }
    m_room -= needed;
    m_recording = *std::move(samples);
    m_variant = 0;
}

/// Adds the next variant, in the order of their rates, unless it is empty.
void BankLoader::addVariant()
{
    const double rate = playbackRates[m_variant];
    if (const auto length = replayedLength(m_recording.size(), rate); length > 0) {
        const auto [block, replayed] = takeMemory(length);
        replay(m_recording, rate, replayed);
        m_sound->variants.push_back(std::make_shared<const AudioBuffer>(block, replayed));
    }
    if (++m_variant < playbackRates.size())
        return;
    m_recording = {};
    m_sound->state = State::loaded;
    endEntry(*m_sound);
}

void BankLoader::endEntry(const Sound& sound)
{
    const auto& entry = m_entries[m_next];
    auto& sounds = entry.isPress ? m_bank.press : m_bank.release;
    if (sound.state == State::loaded)
        sounds.emplace_hint(sounds.end(), entry.scancode, sound.variants);
    else if (sound.state == State::leftOut)
        ++m_bank.leftOut;
    ++m_next;
    m_sound = nullptr;
}

/// Memory for `count` samples, and the block that it belongs to.
std::pair<std::shared_ptr<float[]>, std::span<float>> BankLoader::takeMemory(std::size_t count)
{
    if (count > m_free.size()) {
        const auto size = std::max(count, blockSamples);
        std::shared_ptr<float[]> block = std::make_unique_for_overwrite<float[]>(size);
        const std::span<float> samples(block.get(), size);
        if (size == count)
            return {std::move(block), samples};
        m_block = std::move(block);
        m_free = samples;
    }
    const auto taken = m_free.first(count);
    m_free = m_free.subspan(count);
    return {m_block, taken};
}

} // namespace clavo
