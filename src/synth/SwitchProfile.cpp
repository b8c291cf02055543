// SPDX-License-Identifier: MIT
#include "synth/SwitchProfile.h"

namespace clavo
{

const SwitchProfile& scrollTickProfile()
{
    static const SwitchProfile profile{
        .body = 1400,
        .modes = {{.ratio = 1.0, .gain = 0.5, .decay = 0.002}},
        .click = 0.6,
        .clickTone = 4000,
        .clavo = 0,
        .clavoCutoff = 2000,
        .jacket = 0,
        .bump = 0,
        .rattle = 0,
        .length = 0.02,
        .releaseGain = 0.45,
        .drive = 1.2,
    };
    return profile;
}

} // namespace clavo
