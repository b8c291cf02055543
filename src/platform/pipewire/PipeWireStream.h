// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/ServerStream.h"

#include <cstdint>
#include <functional>
#include <memory>

struct pw_core;

namespace clavo
{

class PipeWireClient;

/// One connection to PipeWire with one stream. Owns: the core.
class PipeWireStream final : public ServerStream
{
public:
    PipeWireStream(PipeWireClient& client, pw_core& core, std::uint32_t quantumFrames,
                   std::function<void()> changed);
    ~PipeWireStream() override;

    void play(Mixer* mixer) override;
    void activate() override;
    void deactivate() override;
    [[nodiscard]] State state() const override;
    [[nodiscard]] OutputStatus status() const override;

private:
    struct Connection;
    std::unique_ptr<Connection> m_connection;
};

} // namespace clavo
