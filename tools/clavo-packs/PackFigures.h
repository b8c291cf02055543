// SPDX-License-Identifier: MIT
#pragma once

#include "clavo-packs/PackRendering.h"
#include "clavo-packs/SoundFigures.h"
#include "keyboard/KeySlot.h"

#include <map>

namespace clavo
{

/// The figures of a pack: the median of each figure over the keys of all rows, and the large keys
/// relative to it.
struct PackFigures {
    struct LargeKey {
        double level = 0;    // The peak of a press in dB above that of the rows,
        double centroid = 0; // and its centroid as a share of theirs.
    };

    double loudness = 0; // Of typingOf() in LUFS.
    double peak = 0;     // The highest of all samples.
    SoundFigures press;
    SoundFigures release;
    double releaseLevel = 0;   // A release as it is played, in dB above its key's press.
    double centroidSpread = 0; // Of presses within a row: the standard deviation over the mean,
    double levelSpread = 0;    // and the standard deviation in dB.
    std::map<KeySlot, LargeKey> largeKeys;
};

[[nodiscard]] PackFigures figuresOf(const RenderedPack& pack);

} // namespace clavo
