// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AudioOutput.h"

namespace clavo
{

/// An output whose server may be absent, busy or gone, and which leaves it to others when to ask
/// again.
///
/// start() runs it if the link is up; otherwise it only connects. What runs stops by itself when
/// the link goes down, and runs again only after another start(). `configurationChanged` follows
/// every change of link() that no call has made. Thread: main.
class OutputCandidate : public AudioOutput
{
public:
    enum class Link {
        None,    // No server was asked, or it refused, or it is gone.
        Pending, // A server is asked, or has no device that plays.
        Up,      // What is rendered from now on will be heard.
    };

    /// Asks for a connection if there is none; returns at once. A server that is known to be absent
    /// leaves the link at None.
    virtual void connect() = 0;

    /// Stops and gives the connection up.
    virtual void disconnect() = 0;

    [[nodiscard]] virtual Link link() const = 0;
};

} // namespace clavo
