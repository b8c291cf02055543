// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

struct pw_context;
struct pw_core;
struct pw_loop;

namespace clavo
{

/// What this process needs to be a client of PipeWire, whether or not there is a server: a loop
/// inside the Qt main loop, so that all of PipeWire's events arrive on the main thread, and a
/// context with the real-time data thread, both made when they are first needed.
class PipeWireClient
{
public:
    PipeWireClient();
    ~PipeWireClient();
    PipeWireClient(const PipeWireClient&) = delete;
    PipeWireClient& operator=(const PipeWireClient&) = delete;

    /// A new connection, or null when there is no server. The caller disconnects it.
    [[nodiscard]] pw_core* connect();

    /// Once there is a connection.
    [[nodiscard]] pw_loop* loop() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace clavo
