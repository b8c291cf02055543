// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeEventTap.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSecureInput.h"
#include "input/InputMonitor.h"
#include "log/Log.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace clavo
{

/// A monitor over ports moved by hand, and what it delivers and logs.
class InputMonitorFixture : public testing::Test
{
protected:
    InputMonitorFixture()
    {
        logged.clear();
        log::setSink([](log::Level level, std::string_view line) {
            logged.emplace_back((level == log::Level::notice ? "" : "not notice: ") +
                                std::string(line));
        });
    }

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

    FakeEventTap tap;
    FakeSecureInput secureInput;
    FakeScreens screens;
    std::chrono::nanoseconds uptime{0};
    InputMonitor monitor{tap, secureInput, screens, [this] { return uptime; }};
    std::vector<InputMonitor::Event> events;
    inline static std::vector<std::string> logged; // The log's sink is a plain function.
};

} // namespace clavo
