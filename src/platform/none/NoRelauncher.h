// SPDX-License-Identifier: MIT
#pragma once

#include "app/Relauncher.h"

namespace clavo
{

/// Opens nothing.
class NoRelauncher final : public Relauncher
{
public:
    void openNewInstance(std::function<void()> completed) override { completed(); }
};

} // namespace clavo
