// SPDX-License-Identifier: MIT
#include "latency/Deadlines.h"

#include <pipewire/impl.h>

#include <pipewire/extensions/profiler.h>
#include <spa/param/profiler.h>
#include <spa/pod/iter.h>
#include <spa/pod/parser.h>

#include <algorithm>
#include <string_view>

namespace clavo::latency
{
namespace
{

// How far a node came in a period, as the server numbers it.
constexpr int triggered = 1;
constexpr int awake = 2;

} // namespace

void Deadlines::watch(pw_core* core)
{
    // The client's half of the profiler's protocol.
    pw_context_load_module(pw_core_get_context(core), PW_EXTENSION_MODULE_PROFILER, nullptr,
                           nullptr);
    m_registry = pw_core_get_registry(core, PW_VERSION_REGISTRY, 0);
    static const pw_registry_events events = [] {
        pw_registry_events wanted = {};
        wanted.version = PW_VERSION_REGISTRY_EVENTS;
        wanted.global = [](void* self, std::uint32_t id, std::uint32_t, const char* type,
                           std::uint32_t, const spa_dict*) {
            if (std::string_view(type) == PW_TYPE_INTERFACE_Profiler)
                static_cast<Deadlines*>(self)->bind(id);
        };
        return wanted;
    }();
    pw_registry_add_listener(m_registry, &m_registryListener, &events, this);
}

void Deadlines::bind(std::uint32_t id)
{
    m_profiler = static_cast<pw_proxy*>(
        pw_registry_bind(m_registry, id, PW_TYPE_INTERFACE_Profiler, PW_VERSION_PROFILER, 0));
    if (m_profiler == nullptr)
        return;
    static constexpr pw_profiler_events events = {
        .version = PW_VERSION_PROFILER_EVENTS,
        .profile = [](void* self,
                      const spa_pod* profile) { static_cast<Deadlines*>(self)->count(profile); },
    };
    pw_proxy_add_object_listener(m_profiler, &m_profilerListener, &events, this);
}

void Deadlines::count(const spa_pod* profile)
{
    // Walked by hand, as the library's macros for it are C.
    const auto* const end = reinterpret_cast<const std::byte*>(profile) + SPA_POD_SIZE(profile);
    const auto* object = static_cast<const spa_pod*>(SPA_POD_BODY_CONST(profile));
    for (; reinterpret_cast<const std::byte*>(object) < end;
         object = static_cast<const spa_pod*>(spa_pod_next(object))) {
        if (!spa_pod_is_object_type(object, SPA_TYPE_OBJECT_Profiler))
            continue;
        const spa_pod_prop* property = nullptr;
        SPA_POD_OBJECT_FOREACH(reinterpret_cast<const spa_pod_object*>(object), property)
        {
            if (property->key == SPA_PROFILER_followerBlock)
                countFollower(&property->value);
        }
    }
}

/// Counts by the record of a node's part in one period. A node that was never triggered waited for
/// another.
void Deadlines::countFollower(const spa_pod* follower)
{
    std::int32_t id = 0;
    const char* name = nullptr;
    std::int64_t previousSignal = 0;
    std::int64_t signal = 0;
    std::int64_t woken = 0;
    std::int64_t finished = 0;
    std::int32_t status = 0;
    const int result = spa_pod_parse_struct(
        follower, SPA_POD_Int(&id), SPA_POD_String(&name), SPA_POD_Long(&previousSignal),
        SPA_POD_Long(&signal), SPA_POD_Long(&woken), SPA_POD_Long(&finished), SPA_POD_Int(&status));
    if (result < 0 || name == nullptr || (status != triggered && status != awake))
        return;
    auto missed = std::ranges::find(m_missed, name, &Missed::node);
    if (missed == m_missed.end())
        missed = m_missed.insert(missed, Missed{.node = name});
    ++(status == triggered ? missed->asleep : missed->atWork);
}

void Deadlines::stop()
{
    if (m_profiler != nullptr)
        pw_proxy_destroy(m_profiler);
    if (m_registry != nullptr)
        pw_proxy_destroy(reinterpret_cast<pw_proxy*>(m_registry));
}

} // namespace clavo::latency
