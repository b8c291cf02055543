// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"
#include "input/Screens.h"
#include "platform/evdev/EvdevAccess.h"

#include <filesystem>
#include <memory>

namespace clavo
{

/// The tap of a desktop that is not X11: reads every keyboard and mouse of the kernel, also those
/// that a remapping program has made up.
///
/// Devices may come and go, and the right to read one may come later than the device. Where the
/// kernel has lost events of a device, and where the last device is gone, the tap counts as lost.
/// Keys that were held on a device that is gone count as released. The kernel keeps a pointer's
/// motion to itself while nobody has a use for it, so that a mouse that moves wakes nobody. Thread:
/// main, which runs a Qt event loop.
class EvdevEventTap final : public EventTap
{
public:
    /// The screens, which live longer than the tap, are those the pointer is kept on.
    explicit EvdevEventTap(Screens& screens, std::filesystem::path folder = evdev::deviceFolder);
    ~EvdevEventTap() override;

    /// False where no keyboard can be read.
    [[nodiscard]] bool create(EventMask mask, Receiver receiver) override;
    void enable() override;
    [[nodiscard]] std::string name() const override { return "/dev/input"; }
    void notifyNextMotion(std::function<void()> moved) override;
    void setPositionUsed(bool isUsed) override;

private:
    class Listener;
    std::unique_ptr<Listener> m_listener;
};

} // namespace clavo
