// SPDX-License-Identifier: MIT
#include "latency/Measurement.h"
#include "latency/XTestKeyboard.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

int main(int argc, char* argv[])
try {
    using namespace clavo::latency;
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    const auto options = readOptions(arguments.subspan(1));
    if (!options) {
        std::fputs(usage, stderr);
        return 2;
    }
    auto keyboard = XTestKeyboard::open();
    if (!keyboard) {
        std::fputs("clavo-latency: there is no X server with the test extension\n", stderr);
        return EXIT_FAILURE;
    }
    return measure(*options, *keyboard);
} catch (const std::exception& exception) {
    std::fputs(exception.what(), stderr);
    return EXIT_FAILURE;
}
