// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppearanceSettings.h"

#include <utility>

namespace clavo
{

/// A desktop whose user changes the look by hand.
class FakeAppearanceSettings final : public AppearanceSettings
{
public:
    void watch(Receiver receiver) override { m_receiver = std::move(receiver); }

    void turnTo(const AppearancePreference& wish) { m_receiver(wish); }

private:
    Receiver m_receiver;
};

} // namespace clavo
