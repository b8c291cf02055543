// SPDX-License-Identifier: MIT
#pragma once

#include <pipewire/pipewire.h>

namespace clavo
{

/// A new context whose data thread asks for real-time priority. PipeWire before 1.4 has a separate
/// configuration for that; later versions ship none and warn when it is asked for. Null when no
/// configuration is installed.
inline pw_context* newRealtimeContext(pw_loop* loop)
{
    constexpr auto realtime = "client-rt.conf";
    auto* const content = pw_properties_new(nullptr, nullptr);
    const bool exists = pw_conf_load_conf(nullptr, realtime, content) >= 0;
    pw_properties_free(content);
    return pw_context_new(
        loop, exists ? pw_properties_new(PW_KEY_CONFIG_NAME, realtime, nullptr) : nullptr, 0);
}

} // namespace clavo
