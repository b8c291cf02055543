// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"

namespace clavo
{

/// An output whose server may be missing; its owner decides when to reconnect.
///
/// start() runs it if the link is up; otherwise it only connects. What runs stops by itself when
/// the link goes down, and runs again only after another start(). `configurationChanged` follows
/// every change of link() that no call has made, while the output is paused too. Thread: main.
class ServerBackedOutput : public AudioOutput
{
public:
    enum class Link {
        none,    // No server was asked, or it refused, or it is gone.
        pending, // A server is asked, or has no device that plays.
        up,      // What is rendered from now on will be heard.
    };

    /// Asks for a connection if there is none; returns at once. A server that is known to be absent
    /// leaves the link at `none`.
    virtual void connect() = 0;

    /// Stops and gives the connection up.
    virtual void disconnect() = 0;

    [[nodiscard]] virtual Link link() const = 0;
};

} // namespace clavo
