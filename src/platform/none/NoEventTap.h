// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"

namespace clavo
{

/// The event tap of a platform that shows nobody's input: refuses to be created.
class NoEventTap final : public EventTap
{
public:
    [[nodiscard]] bool create(EventMask mask, Receiver receiver) override;
    void enable() override;
    [[nodiscard]] std::string name() const override { return "nothing"; }
    void notifyNextMotion(std::function<void()> moved) override;
    void setPositionUsed(bool /*isUsed*/) override {}
};

} // namespace clavo
