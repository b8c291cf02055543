// SPDX-License-Identifier: MIT
#pragma once

#include "input/HotKeyService.h"

namespace clavo
{

/// The shortcuts of a desktop that grants none: refuses all.
class NoHotKeyService final : public HotKeyService
{
public:
    [[nodiscard]] std::optional<HotKeyRef> registerHotKey(const HotKey&,
                                                          std::function<void()>) override
    {
        return std::nullopt;
    }

    void unregisterHotKey(HotKeyRef) override {}
};

} // namespace clavo
