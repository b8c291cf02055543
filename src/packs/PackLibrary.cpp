// SPDX-License-Identifier: MIT
#include "packs/PackLibrary.h"

#include "files/WholeFile.h"
#include "keyboard/KeySlot.h"
#include "log/Fatal.h"
#include "packs/PlaybackRate.h"
#include "packs/SoundFile.h"
#include "synth/SwitchSynth.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <system_error>
#include <tuple>
#include <utility>

namespace clavo::PackLibrary
{
namespace
{

using Variants = SoundBank::Variants;

constexpr std::int64_t synthesizedVariants = 5;

/// Sounds share blocks of this many samples: a bank is allocated and freed as a whole, and a few
/// large blocks are far faster than hundreds of small ones. An ordinary pack needs one block, of
/// which the system backs only the pages that are written.
constexpr std::size_t blockSamples = std::size_t{4} << 20U;

/// What `render` makes of each variant's number, without the empty ones.
template <typename Render> Variants variantsOf(const AudioFormat& format, const Render& render)
{
    Variants variants;
    for (std::int64_t variant = 0; variant < synthesizedVariants; ++variant) {
        if (auto sound = buffer(render(variant), format))
            variants.push_back(std::move(sound));
    }
    return variants;
}

/// Makes the sounds of one bank. Reads every file once, even under several names, and holds one
/// recording at a time beside the finished variants.
class BankSounds
{
public:
    BankSounds(const SoundPack& pack, const AudioFormat& format) : m_pack(pack), m_format(format) {}

    /// The sounds of these names; if `only` is given, of its scancodes alone.
    std::map<std::int64_t, Variants> load(const SoundPack::SoundNames& names,
                                          const std::set<std::int64_t>* only)
    {
        std::map<std::int64_t, Variants> sounds;
        for (const auto& [scancode, name] : names) {
            if (only != nullptr && !only->contains(scancode))
                continue;
            const Sound& sound = soundNamed(name);
            if (sound.state == State::loaded)
                sounds.emplace_hint(sounds.end(), scancode, sound.variants);
            else if (sound.state == State::leftOut)
                ++m_leftOut;
        }
        return sounds;
    }

    /// The number of scancodes for which there was no room.
    [[nodiscard]] std::size_t leftOut() const { return m_leftOut; }

private:
    enum class State { loaded, unreadable, leftOut };
    struct Sound {
        State state = State::unreadable;
        Variants variants = {};
    };

    const Sound& soundNamed(const std::string& name)
    {
        auto path = m_pack.folder;
        path += "/sounds/" + name + ".wav"; // As text; operator/ would accept an absolute name.
        const auto file = identityOf(path);
        if (!file)
            return m_missing;
        const auto [sound, isNew] = m_sounds.try_emplace(*file);
        if (isNew)
            sound->second = readSound(path);
        return sound->second;
    }

    /// After the first sound that does not fit, no other is decoded; this limits the time too.
    Sound readSound(const std::filesystem::path& file)
    {
        if (m_room == 0)
            return {.state = State::leftOut};
        const auto samples = loadSound(file, m_format);
        if (!samples)
            return {.state = State::unreadable};
        std::size_t needed = 0;
        for (const double rate : playbackRates)
            needed += replayedLength(samples->size(), rate);
        if (needed > m_room) {
            m_room = 0;
            return {.state = State::leftOut};
        }
        m_room -= needed;
        return {.state = State::loaded, .variants = replayedVariants(*samples)};
    }

    /// The variants of a recording in the order of their rates, without the empty ones.
    Variants replayedVariants(std::span<const float> recording)
    {
        Variants variants;
        for (const double rate : playbackRates) {
            const auto length = replayedLength(recording.size(), rate);
            if (length == 0)
                continue;
            const auto [block, replayed] = takeMemory(length);
            replay(recording, rate, replayed);
            variants.push_back(std::make_shared<const AudioBuffer>(block, replayed));
        }
        return variants;
    }

    /// Memory for `count` samples, and the block that it belongs to.
    std::pair<std::shared_ptr<float[]>, std::span<float>> takeMemory(std::size_t count)
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

    const SoundPack& m_pack;
    const AudioFormat& m_format;
    std::map<FileIdentity, Sound> m_sounds;
    Sound m_missing;                                 // For every name without a file.
    std::size_t m_room = bankBudget / sizeof(float); // Samples that still fit.
    std::size_t m_leftOut = 0;
    std::shared_ptr<float[]> m_block; // The latest block.
    std::span<float> m_free;          // The unused end of the block.
};

} // namespace

std::filesystem::path customFolder(const std::filesystem::path& applicationSupport)
{
    auto folder = applicationSupport / "Clavo" / "Packs";
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    return folder;
}

PackFolders folders(const std::filesystem::path& resources,
                    const std::filesystem::path& applicationSupport)
{
    return {.builtIn = resources.empty() ? resources : resources / "Packs",
            .custom = customFolder(applicationSupport)};
}

std::vector<SoundPack> allPacks(const PackFolders& folders, SoundPack::Part part)
{
    // Texts compare byte by byte, which in UTF-8 is the order of their code points.
    auto all = packs(folders.builtIn, false, part);
    std::ranges::stable_sort(all, {}, [](const SoundPack& pack) {
        return std::tuple<PackCategory, const std::string&>(pack.category, pack.name);
    });
    auto custom = packs(folders.custom, true, part);
    std::ranges::stable_sort(custom, {}, &SoundPack::name);
    std::ranges::move(custom, std::back_inserter(all));
    return all;
}

std::vector<SoundPack> packs(const std::filesystem::path& folder, bool isCustom,
                             SoundPack::Part part)
{
    std::vector<SoundPack> found;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (auto pack = SoundPack::load(entry->path(), isCustom, part))
            found.push_back(*std::move(pack));
    }
    return found;
}

SoundBank makeBank(const SoundPack& pack, const AudioFormat& format,
                   const std::set<std::int64_t>* only)
{
    BankSounds sounds(pack, format);
    SoundBank bank;
    bank.press = sounds.load(pack.press, only);
    bank.release = sounds.load(pack.release, only);
    bank.leftOut = sounds.leftOut();
    return bank;
}

AudioBufferPtr buffer(std::vector<float> samples, const AudioFormat& format)
{
    if (samples.size() > std::numeric_limits<std::uint32_t>::max())
        fatal("a sound has more samples than 32 bits count");
    if (samples.empty() || format.channels != 1)
        return nullptr;
    return std::make_shared<const AudioBuffer>(std::move(samples));
}

Variants synthVariants(const SwitchProfile& profile, bool release, const AudioFormat& format)
{
    return variantsOf(format, [&](std::int64_t variant) {
        return SwitchSynth::render(profile, KeySlot::row3, release, variant);
    });
}

Variants mouseVariants(bool release, const AudioFormat& format)
{
    return variantsOf(format, [release](std::int64_t variant) {
        return SwitchSynth::renderMouse(release, variant);
    });
}

} // namespace clavo::PackLibrary
