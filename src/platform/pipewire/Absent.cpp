// SPDX-License-Identifier: MIT
#include "platform/pipewire/PipeWireOutput.h"

namespace clavo
{

std::unique_ptr<ServerBackedOutput> makePipeWireOutput(std::uint32_t)
{
    return nullptr;
}

} // namespace clavo
