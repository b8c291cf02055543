// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>

#include <memory>

struct pw_context;
struct pw_core;
struct pw_loop;

namespace clavo
{

/// What this process needs to be a client of PipeWire, whether or not there is a server: a loop
/// inside the Qt main loop, so that all of PipeWire's events arrive on the main thread, and a
/// context with the real-time data thread.
class PipeWireClient
{
public:
    PipeWireClient();
    ~PipeWireClient();
    PipeWireClient(const PipeWireClient&) = delete;
    PipeWireClient& operator=(const PipeWireClient&) = delete;

    /// A new connection, or null when there is no server. The caller disconnects it.
    [[nodiscard]] pw_core* connect();

    /// Null only when there can be no connection.
    [[nodiscard]] pw_loop* loop() const { return m_loop; }

private:
    pw_loop* m_loop = nullptr;
    pw_context* m_context = nullptr;
    std::unique_ptr<QSocketNotifier> m_readable;
};

} // namespace clavo
