// SPDX-License-Identifier: MIT
#include "synth/SoundBank.h"

#include "keyboard/KeySlot.h"

#include <iterator>
#include <random>

namespace clavo
{
namespace
{

using Variants = SoundBank::Variants;

AudioBufferPtr drawn(const Variants& variants, const IndexDraw& draw)
{
    return variants.empty() ? nullptr : variants[draw(variants.size())];
}

std::vector<const Variants*> soundsOfSlot(const std::map<std::int64_t, Variants>& sounds,
                                          KeySlot slot)
{
    std::vector<const Variants*> found;
    for (const std::int64_t scancode : fallbackScancodes(slot)) {
        if (const auto entry = sounds.find(scancode); entry != sounds.end())
            found.push_back(&entry->second);
    }
    return found;
}

} // namespace

const IndexDraw& systemDraw()
{
    static const IndexDraw draw = [](std::size_t count) {
        // Named, because the default source may be a processor instruction of 20 µs.
        static std::random_device system("/dev/urandom");
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(system);
    };
    return draw;
}

AudioBufferPtr SoundBank::buffer(const KeyInfo& key, bool down, const IndexDraw& draw) const
{
    const auto& sounds = down ? press : release;
    if (const auto exact = sounds.find(key.scancode); exact != sounds.end())
        return drawn(exact->second, draw);

    const auto ofSlot = soundsOfSlot(sounds, key.slot);
    if (!ofSlot.empty())
        return drawn(*ofSlot[draw(ofSlot.size())], draw);

    if (!down || press.empty())
        return nullptr;
    const auto position = static_cast<std::ptrdiff_t>(draw(press.size()));
    return drawn(std::next(press.begin(), position)->second, draw);
}

} // namespace clavo
