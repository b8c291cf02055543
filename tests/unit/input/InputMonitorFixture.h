// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/CollectedLog.h"
#include "fakes/FakeEventTap.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSecureInput.h"
#include "input/InputMonitor.h"

#include <gmock/gmock.h>

#include <vector>

namespace clavo
{

/// A monitor over ports moved by hand, and what it delivers and logs.
class InputMonitorFixture : public testing::Test
{
protected:
    void listen()
    {
        receiveEvents();
        ASSERT_TRUE(monitor.start());
    }

    void receiveEvents()
    {
        monitor.onEvent = [this](const InputMonitor::Event& event) { events.push_back(event); };
    }

    void key(std::uint32_t type, std::int64_t code)
    {
        tap.deliver({.type = type, .keyCode = code});
    }
    void pointer(std::uint32_t type, double x) { tap.deliver({.type = type, .x = x}); }

    CollectedLog logged;
    FakeEventTap tap;
    FakeSecureInput secureInput;
    FakeScreens screens;
    std::chrono::nanoseconds uptime{0};
    InputMonitor monitor{tap, secureInput, screens, [this] { return uptime; }};
    std::vector<InputMonitor::Event> events;
};

} // namespace clavo
