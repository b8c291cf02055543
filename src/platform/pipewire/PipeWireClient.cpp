// SPDX-License-Identifier: MIT
#include "platform/pipewire/PipeWireClient.h"

#include <QSocketNotifier>

#include <pipewire/pipewire.h>

namespace clavo
{
namespace
{

/// The context of the real-time configuration, whose data thread asks for real-time priority; where
/// it is not installed, of the plain one. Null when there is neither.
pw_context* makeContext(pw_loop* loop)
{
    if (auto* const context = pw_context_new(
            loop, pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr), 0))
        return context;
    return pw_context_new(loop, nullptr, 0);
}

} // namespace

struct PipeWireClient::Parts {
    Parts()
    {
        pw_init(nullptr, nullptr);
        loop = pw_loop_new(nullptr);
        if (!loop)
            return;
        // The loop stays entered: what the data thread hands to it then waits for this thread
        // instead of being run on the other one.
        pw_loop_enter(loop);
        readable = std::make_unique<QSocketNotifier>(pw_loop_get_fd(loop), QSocketNotifier::Read);
        QObject::connect(readable.get(), &QSocketNotifier::activated, readable.get(),
                         [this] { pw_loop_iterate(loop, 0); });
        context = makeContext(loop);
    }

    ~Parts()
    {
        if (context)
            pw_context_destroy(context);
        readable.reset();
        if (loop) {
            pw_loop_leave(loop);
            pw_loop_destroy(loop);
        }
        pw_deinit();
    }

    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    pw_loop* loop = nullptr;
    pw_context* context = nullptr;
    std::unique_ptr<QSocketNotifier> readable;
};

PipeWireClient::PipeWireClient() = default;
PipeWireClient::~PipeWireClient() = default;

pw_core* PipeWireClient::connect()
{
    if (!m_parts)
        m_parts = std::make_unique<Parts>();
    return m_parts->context ? pw_context_connect(m_parts->context, nullptr, 0) : nullptr;
}

pw_loop* PipeWireClient::loop() const
{
    return m_parts->loop;
}

} // namespace clavo
