// SPDX-License-Identifier: MIT
#pragma once

#include "app/Instance.h"

namespace clavo
{

/// A session whose processes do not know of each other.
class NoInstance final : public Instance
{
public:
    [[nodiscard]] Standing claim() override { return Standing::unknown; }
    [[nodiscard]] Standing replace() override { return Standing::unknown; }
    [[nodiscard]] Delivery send(Request /*request*/) override { return Delivery::nobodyRuns; }
    [[nodiscard]] Answer askStatus() override { return {}; }
    void receive(Receiver /*receiver*/, Reporter /*reporter*/) override {}
};

} // namespace clavo
