// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/ServerStream.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace clavo
{

/// One connection to a PulseAudio server with one stream, on a thread of its own that lives as
/// long.
class PulseStream final : public ServerStream
{
public:
    /// Null when there is no server. No server is started.
    [[nodiscard]] static std::unique_ptr<ServerStream> open(std::uint32_t quantumFrames,
                                                            std::function<void()> changed);
    ~PulseStream() override;

    void play(Mixer* mixer) override;
    void activate() override;
    void deactivate() override;
    [[nodiscard]] State state() const override;
    [[nodiscard]] OutputStatus status() const override;

private:
    struct Connection;

    explicit PulseStream(std::unique_ptr<Connection> connection);

    std::unique_ptr<Connection> m_connection;
};

} // namespace clavo
