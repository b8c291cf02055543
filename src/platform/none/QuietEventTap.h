// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"

namespace clavo
{

/// The event tap of a desktop that nobody touches: it is granted and never delivers.
class QuietEventTap final : public EventTap
{
public:
    [[nodiscard]] bool create(EventMask /*mask*/, Receiver /*receiver*/) override { return true; }
    void enable() override {}
    [[nodiscard]] std::string name() const override { return "nothing"; }
    void notifyNextMotion(std::function<void()> /*moved*/) override {}
    void setPositionUsed(bool /*isUsed*/) override {}
};

} // namespace clavo
