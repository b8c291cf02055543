// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppearanceSettings.h"

#include <memory>

class QObject;

namespace clavo
{

/// The settings that the desktop portal hands on, whatever the desktop.
class PortalAppearanceSettings final : public AppearanceSettings
{
public:
    PortalAppearanceSettings();
    ~PortalAppearanceSettings() override;

    void watch(Receiver receiver) override;

private:
    std::unique_ptr<QObject> m_watch;
};

} // namespace clavo
