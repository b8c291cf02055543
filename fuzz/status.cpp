// SPDX-License-Identifier: MIT
// What a running program reports of itself.
#include "app/Status.h"
#include "fuzz/Input.h"

#include <algorithm>
#include <cmath>

using namespace clavo;
using fuzz::require;

namespace
{

std::string takeText(fuzz::Input& input)
{
    std::string text(input.takeBelow(32), '\0');
    std::ranges::generate(text, [&] { return input.take<char>(); });
    return text;
}

Status takeStatus(fuzz::Input& input)
{
    Status status{.version = takeText(input), .tap = takeText(input)};
    status.isListening = input.takeBool();
    status.access = static_cast<InputAccess::State>(input.takeBelow(4));
    status.needsRelaunch = input.takeBool();
    if (input.takeBool())
        status.idle = std::chrono::seconds(input.take<std::int64_t>());
    status.secureReason = static_cast<SecureReason>(input.takeBelow(5));
    status.output = {.server = takeText(input),
                     .quantumFrames = input.take<std::uint32_t>(),
                     .sampleRate = input.take<std::uint32_t>()};
    status.isOutputRunning = input.takeBool();
    status.packName = takeText(input);
    status.packID = takeText(input);
    const auto volume = input.take<double>();
    status.settings.volume = std::isfinite(volume) ? volume : 0;
    status.settings.enabled = input.takeBool();
    status.missing = takeText(input);
    return status;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto lines = describe(fuzz::textOf(data, size));
    require(!lines || (lines->starts_with("Clavo ") && lines->ends_with('\n')),
            "a status is described in whole lines");

    fuzz::Input input(data, size);
    const auto json = jsonOf(takeStatus(input));
    require(json.ends_with("}\n"), "a status is one object and a line end");
    require(describe(json).has_value(), "every status can be described");
    return 0;
}
