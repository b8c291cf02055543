// SPDX-License-Identifier: MIT
#include "input/GlobalHotKey.h"

#include "log/Fatal.h"

#include <utility>

namespace clavo
{
namespace
{

constexpr std::uint32_t signature = 0x434C5631; // 'CLV1'
constexpr std::uint32_t number = 1;

std::uint32_t unsigned32(std::int64_t value)
{
    if (!std::in_range<std::uint32_t>(value))
        fatal("a hot key's key code and modifiers must fit into 32 bits, unsigned");
    return static_cast<std::uint32_t>(value);
}

} // namespace

std::function<void()> GlobalHotKey::action;

GlobalHotKey::GlobalHotKey(HotKeyService& service, std::int64_t keyCode, std::int64_t modifiers,
                           std::function<void()> newAction)
    : m_service(service)
{
    action = std::move(newAction);
    const HotKey hotKey{.keyCode = unsigned32(keyCode),
                        .modifiers = unsigned32(modifiers),
                        .signature = signature,
                        .number = number};
    m_ref = m_service.registerHotKey(hotKey, runAction);
}

GlobalHotKey::~GlobalHotKey()
{
    if (m_ref)
        m_service.unregisterHotKey(*m_ref);
}

void GlobalHotKey::runAction()
{
    if (const auto current = action) // A copy: it may construct the next hot key.
        current();
}

} // namespace clavo
