// SPDX-License-Identifier: MIT
#include "contracts/EventTapContract.h"
#include "desktop/evdev/EvdevTapRig.h"

namespace clavo
{

INSTANTIATE_TYPED_TEST_SUITE_P(Evdev, EventTapContract, EvdevTapRig);

} // namespace clavo
