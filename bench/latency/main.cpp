// SPDX-License-Identifier: MIT
#include "latency/Measurement.h"
#include "latency/XTestKeyboard.h"

#include <stdexcept>

int main(int argc, char* argv[])
{
    using namespace clavo::latency;
    return measure({argv, static_cast<std::size_t>(argc)}, []() -> std::unique_ptr<Keyboard> {
        if (auto keyboard = XTestKeyboard::open())
            return keyboard;
        throw std::runtime_error("there is no X server with the test extension");
    });
}
