// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevEventTap.h"
#include "platform/evdev/EvdevInputAccess.h"

namespace clavo
{

std::unique_ptr<EventTap> makeEvdevEventTap(Screens&, std::filesystem::path)
{
    return nullptr;
}

std::unique_ptr<InputAccess> makeEvdevInputAccess(GrantPrograms, std::filesystem::path)
{
    return nullptr;
}

} // namespace clavo
