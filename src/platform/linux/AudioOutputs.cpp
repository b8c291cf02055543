// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "audio/output/FallbackOutput.h"
#include "audio/output/ServerBackedOutput.h"
#include "log/Log.h"
#include "loop/QtTimer.h"
#include "platform/linux/Technologies.h"
#include "platform/none/SilentOutput.h"
#include "platform/pipewire/PipeWireOutput.h"
#include "platform/posix/Environment.h"
#include "platform/pulse/PulseOutput.h"
#include "text/ParseNumber.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

constexpr std::uint32_t defaultQuantum = 128;
constexpr std::uint32_t leastQuantum = 16;
constexpr std::uint32_t greatestQuantum = 8192;

std::uint32_t wantedQuantum()
{
    const auto text = environment("CLAVO_QUANTUM");
    if (text.empty())
        return defaultQuantum;
    const auto frames = parseNumber<std::uint32_t>(text);
    if (frames && *frames >= leastQuantum && *frames <= greatestQuantum)
        return *frames;
    log::notice("CLAVO_QUANTUM « {} » ignoré : il faut un nombre de {} à {}", text, leastQuantum,
                greatestQuantum);
    return defaultQuantum;
}

/// Whether the session's PulseAudio server is PulseAudio's own daemon. If PipeWire runs as well, it
/// then serves screen sharing only and has no devices.
bool hasPulseAudioDaemon()
{
    const std::filesystem::path folder = environment("XDG_RUNTIME_DIR");
    std::string process;
    std::string name;
    return std::ifstream(folder / "pulse" / "pid") >> process &&
           std::ifstream("/proc/" + process + "/comm") >> name && name == "pulseaudio";
}

} // namespace

std::unique_ptr<AudioOutput> makeAudioOutput()
{
    const auto choice = environment("CLAVO_AUDIO");
    if (choice == "none") {
        log::notice("sortie audio : aucune, à la demande de CLAVO_AUDIO");
        return makeSilentOutput();
    }
    if (!choice.empty() && choice != "pipewire" && choice != "pulse")
        log::notice("CLAVO_AUDIO « {} » ignoré : il faut pipewire, pulse ou none", choice);
    const auto quantum = wantedQuantum();
    std::vector<NamedOutput> candidates;
    if constexpr (built::pipewire) {
        if (choice != "pulse")
            candidates.push_back({"PipeWire", makePipeWireOutput(quantum)});
    }
    if constexpr (built::pulse) {
        if (choice != "pipewire")
            candidates.push_back({"PulseAudio", makePulseOutput(quantum)});
    }
    if (hasPulseAudioDaemon())
        std::ranges::reverse(candidates);
    return makeFallbackOutput(std::move(candidates), makeSilentOutput(), makeQtTimer());
}

} // namespace clavo
