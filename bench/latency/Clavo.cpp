// SPDX-License-Identifier: MIT
#include "latency/Clavo.h"

#include "synth/AudioBuffer.h"

#include <sndfile.hh>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <csignal>
#include <fstream>
#include <numbers>
#include <string_view>
#include <thread>
#include <vector>

namespace clavo::latency
{
namespace
{

namespace fs = std::filesystem;

constexpr int rate = samplesPerSecond;
constexpr int lastScancode = 88;

std::vector<float> sound(Pack pack)
{
    std::vector<float> samples(pack == Pack::click ? 882 : 40);
    const auto length = static_cast<float>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto place = static_cast<float>(i) / length;
        if (pack == Pack::click)
            samples[i] = 0.9F * std::exp(-4 * place);
        else
            samples[i] = 0.02F * (1 - std::cos(2 * std::numbers::pi_v<float> * place));
    }
    return samples;
}

void writePack(const fs::path& folder, Pack pack)
{
    fs::create_directories(folder / "sounds");
    std::ofstream manifest(folder / "pack.json");
    manifest << R"({"id": "latency", "name": "Latency", "detail": "", "category": "custom", )"
             << R"("release": {}, "press": {)";
    for (int scancode = 1; scancode <= lastScancode; ++scancode)
        manifest << (scancode > 1 ? ", " : "") << '"' << scancode << R"(": "sound")";
    manifest << "}}\n";

    const auto samples = sound(pack);
    SndfileHandle wav((folder / "sounds" / "sound.wav").c_str(), SFM_WRITE,
                      SF_FORMAT_WAV | SF_FORMAT_FLOAT, 1, rate);
    wav.write(samples.data(), static_cast<sf_count_t>(samples.size()));
}

/// The caller's environment, but for the names that are given again.
std::vector<std::string> environmentWith(std::vector<std::string> given)
{
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view line = *entry;
        const auto name = line.substr(0, line.find('=') + 1);
        bool isGiven = false;
        for (const auto& own : given)
            isGiven = isGiven || own.starts_with(name);
        if (!isGiven)
            given.emplace_back(line);
    }
    return given;
}

} // namespace

std::unique_ptr<Clavo> Clavo::start(const ClavoSetup& setup)
{
    std::unique_ptr<Clavo> clavo(new Clavo);
    auto folder = (fs::temp_directory_path() / "clavo-latency-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr)
        return nullptr;
    clavo->m_folder = folder;
    const auto config = clavo->m_folder / "config";
    const auto data = clavo->m_folder / "data";
    if (setup.pack != Pack::shipped) {
        writePack(data / "Clavo" / "Packs" / "latency", setup.pack);
        fs::create_directories(config / "Clavo");
        std::ofstream(config / "Clavo" / "settings.json")
            << R"({"packID": "custom:latency", "volume": 1.0, "keyUpSounds": false, )"
            << R"("spatial": false})" << '\n';
    }

    std::vector<std::string> given{"XDG_CONFIG_HOME=" + config.string(),
                                   "XDG_DATA_HOME=" + data.string(), "CLAVO_LOG=stderr"};
    if (!setup.audio.empty())
        given.push_back("CLAVO_AUDIO=" + setup.audio);
    if (setup.quantum)
        given.push_back("CLAVO_QUANTUM=" + std::to_string(*setup.quantum));
    auto environment = environmentWith(std::move(given));
    std::vector<char*> variables;
    variables.reserve(environment.size() + 1);
    for (auto& line : environment)
        variables.push_back(line.data());
    variables.push_back(nullptr);
    auto program = setup.program.string();
    std::string inBackground = "--background"; // An open panel would take the keys and draw.
    char* const arguments[] = {program.data(), inBackground.data(), nullptr};
    if (posix_spawn(&clavo->m_process, program.c_str(), nullptr, nullptr, arguments,
                    variables.data()) != 0)
        return nullptr;
    return clavo;
}

Clavo::~Clavo()
{
    if (isRunning()) {
        kill(m_process, SIGTERM);
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (isRunning()) {
            if (std::chrono::steady_clock::now() > deadline)
                kill(m_process, SIGKILL);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
    std::error_code error;
    fs::remove_all(m_folder, error);
}

bool Clavo::isRunning()
{
    if (m_process > 0 && waitpid(m_process, nullptr, WNOHANG) == m_process)
        m_process = -1;
    return m_process > 0;
}

Memory Clavo::memory() const
{
    Memory memory;
    std::ifstream file("/proc/" + std::to_string(m_process) + "/smaps_rollup");
    std::string line;
    std::getline(file, line);
    for (std::string name; file >> name; std::getline(file, line)) {
        if (name == "Rss:")
            file >> memory.resident;
        else if (name == "Pss:")
            file >> memory.proportional;
    }
    return memory;
}

} // namespace clavo::latency
