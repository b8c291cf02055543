// SPDX-License-Identifier: MIT
#include "platform/none/NoEventTap.h"

namespace clavo
{

bool NoEventTap::create(EventMask, Receiver)
{
    return false;
}

void NoEventTap::enable() {}

void NoEventTap::notifyNextMotion(std::function<void()>) {}

} // namespace clavo
