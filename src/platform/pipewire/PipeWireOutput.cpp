// SPDX-License-Identifier: MIT
#include "platform/pipewire/PipeWireOutput.h"

#include "platform/linux/QtTimer.h"
#include "platform/pipewire/PipeWireClient.h"
#include "platform/pipewire/PipeWireStream.h"

#include <utility>

namespace clavo
{

PipeWireOutput::PipeWireOutput(std::uint32_t quantumFrames)
    : ServerOutput(
          [client = std::make_shared<PipeWireClient>(),
           quantumFrames](std::function<void()> changed) -> std::unique_ptr<ServerStream> {
              auto* const core = client->connect();
              if (!core)
                  return nullptr;
              return std::make_unique<PipeWireStream>(*client, *core, quantumFrames,
                                                      std::move(changed));
          },
          std::make_unique<QtTimer>(), std::make_unique<QtTimer>())
{
}

} // namespace clavo
