// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"

namespace clavo
{

/// An output whose server may be missing; its owner decides when to reconnect.
///
/// start() runs it if the link is up; otherwise it only connects. When the link goes down, the
/// output stops by itself and runs again only after another start(). `configurationChanged` follows
/// every change of link() that was not made by a call, even while the output is paused.
/// Thread: main.
class ServerBackedOutput : public AudioOutput
{
public:
    enum class Link {
        none,    // Not connected: not yet asked, refused, or lost.
        pending, // Connecting, or connected to a server without a device.
        up,      // Whatever is rendered from now on is heard.
    };

    /// Requests a connection if there is none, and returns at once. If the server is known to be
    /// absent, the link stays `none`.
    virtual void connect() = 0;

    /// Stops and closes the connection.
    virtual void disconnect() = 0;

    [[nodiscard]] virtual Link link() const = 0;
};

} // namespace clavo
