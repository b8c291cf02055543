// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "log/Log.h"
#include "platform/linux/Environment.h"
#include "platform/linux/FallbackOutput.h"
#include "platform/linux/ParseNumber.h"
#include "platform/linux/QtTimer.h"
#include "platform/none/SilentOutput.h"
#include "platform/pipewire/PipeWireOutput.h"
#include "platform/pulse/PulseOutput.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

constexpr std::uint32_t defaultQuantum = 128;
constexpr std::uint32_t leastQuantum = 16;
constexpr std::uint32_t greatestQuantum = 8192;

std::uint32_t quantumWish()
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

/// Whether the session's PulseAudio is the daemon itself. PipeWire often runs beside it then, but
/// for screen sharing only: it has no devices.
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
    const auto quantum = quantumWish();
    const auto pipeWire = [&] {
        return FallbackOutput::Candidate{"PipeWire", std::make_unique<PipeWireOutput>(quantum)};
    };
    const auto pulse = [&] {
        return FallbackOutput::Candidate{"PulseAudio", std::make_unique<PulseOutput>(quantum)};
    };

    std::vector<FallbackOutput::Candidate> candidates;
    const auto choice = environment("CLAVO_AUDIO");
    if (choice == "none") {
        log::notice("sortie audio : aucune, à la demande de CLAVO_AUDIO");
        return std::make_unique<SilentOutput>();
    }
    if (choice == "pipewire") {
        candidates.push_back(pipeWire());
    } else if (choice == "pulse") {
        candidates.push_back(pulse());
    } else {
        if (!choice.empty())
            log::notice("CLAVO_AUDIO « {} » ignoré : il faut pipewire, pulse ou none", choice);
        candidates.push_back(pipeWire());
        candidates.push_back(pulse());
        if (hasPulseAudioDaemon())
            std::swap(candidates.front(), candidates.back());
    }
    return std::make_unique<FallbackOutput>(std::move(candidates), std::make_unique<SilentOutput>(),
                                            std::make_unique<QtTimer>());
}

} // namespace clavo
