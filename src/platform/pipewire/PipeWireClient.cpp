// SPDX-License-Identifier: MIT
#include "platform/pipewire/PipeWireClient.h"

#include "platform/pipewire/RealtimeContext.h"

#include <QObject>

#include <pipewire/pipewire.h>

namespace clavo
{

PipeWireClient::PipeWireClient()
{
    pw_init(nullptr, nullptr);
    m_loop = pw_loop_new(nullptr);
    if (!m_loop)
        return;
    // The loop stays entered: what the data thread hands to it then waits for this thread instead
    // of being run on the other one.
    pw_loop_enter(m_loop);
    m_readable = std::make_unique<QSocketNotifier>(pw_loop_get_fd(m_loop), QSocketNotifier::Read);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(),
                     [this] { pw_loop_iterate(m_loop, 0); });
    m_context = newRealtimeContext(m_loop);
}

PipeWireClient::~PipeWireClient()
{
    if (m_context)
        pw_context_destroy(m_context);
    m_readable.reset();
    if (m_loop) {
        pw_loop_leave(m_loop);
        pw_loop_destroy(m_loop);
    }
    pw_deinit();
}

pw_core* PipeWireClient::connect()
{
    return m_context ? pw_context_connect(m_context, nullptr, 0) : nullptr;
}

} // namespace clavo
