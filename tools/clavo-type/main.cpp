// SPDX-License-Identifier: MIT
#include "clavo-type/Keystrokes.h"
#include "clavo-type/Options.h"
#include "clavo-type/Progress.h"
#include "clavo-type/Recording.h"
#include "clavo-type/Rhythm.h"
#include "clavo-type/Speakers.h"
#include "log/Log.h"
#include "packs/PackLibrary.h"
#include "platform/Platform.h"
#include "text/Printable.h"

#include <QCoreApplication>

#include <fmt/format.h>

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace clavo
{
namespace
{

constexpr std::size_t longestText = 1 << 20; // Bytes; at 80 words a minute, 43 hours.

volatile std::sig_atomic_t interruption = 0; // The signal, or 0.

std::string readAll(std::istream& stream)
{
    std::string text(longestText + 1, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (stream.bad() || text.size() > longestText)
        throw std::runtime_error(stream.bad() ? "the text cannot be read"
                                              : "the text is longer than a mebibyte");
    return text;
}

std::string textOf(const TypingOptions& options)
{
    if (options.text)
        return *options.text;
    if (options.file.empty())
        return readAll(std::cin);
    std::ifstream file(options.file, std::ios::binary);
    if (!file || std::filesystem::is_directory(options.file))
        throw std::runtime_error(fmt::format("{}: cannot be read", options.file));
    return readAll(file);
}

std::vector<Keystroke> strokesOf(const TypingOptions& options)
{
    auto [strokes, skipped] = keystrokesOf(textOf(options));
    if (skipped > 0) {
        fmt::print(stderr, "clavo-type: {} left out, as a US keyboard has no key for {}\n",
                   skipped == 1 ? "1 character was" : fmt::format("{} characters were", skipped),
                   skipped == 1 ? "it" : "them");
    }
    if (strokes.empty())
        throw std::runtime_error("there is nothing to type");
    return std::move(strokes);
}

SoundBank bankOf(const std::string& id)
{
    const auto folders = packFolders();
    // Other packs are not loaded, as one of them may be broken.
    const auto packs = PackLibrary::allPacks(folders, SoundPack::Part::description);
    const auto found = std::ranges::find(packs, id, &SoundPack::id);
    if (found == packs.end()) {
        std::string known;
        for (const auto& other : packs)
            known += "\n  " + printable(other.id);
        throw std::runtime_error(fmt::format("there is no pack '{}'; there {}{}", printable(id),
                                             known.empty() ? "is none" : "are:", known));
    }
    const bool isCustom = found->folder.parent_path() == folders.custom;
    const auto pack = SoundPack::load(found->folder, isCustom);
    auto bank = pack ? PackLibrary::makeBank(*pack, AudioFormat{}) : SoundBank{};
    if (bank.press.empty())
        throw std::runtime_error(
            fmt::format("the pack '{}' has no sound that can be read", printable(id)));
    return bank;
}

void type(const TypingOptions& options)
{
    const auto strokes = strokesOf(options);
    const auto bank = bankOf(options.pack);
    const auto seed = options.seed ? *options.seed : std::random_device{}();
    const auto events = options.isHuman ? humanRhythm(strokes, options.wpm, seed)
                                        : evenRhythm(strokes, options.wpm);
    Progress progress(events.size(), std::cerr,
                      ::isatty(STDERR_FILENO) != 0 ? Progress::Style::terminal
                                                   : Progress::Style::lines);
    const auto report = [&](std::size_t done) {
        if (interruption != 0)
            throw std::runtime_error("interrupted");
        progress.reached(done);
    };
    // The rhythm and the choice of sounds use different random numbers.
    const auto soundSeed = ~seed;
    if (!options.output.empty()) {
        // Without SA_RESTART a signal also ends the wait for the reader of a pipe.
        struct sigaction action = {};
        action.sa_handler = [](int signal) { interruption = signal; };
        sigaction(SIGINT, &action, nullptr);
        sigaction(SIGTERM, &action, nullptr);
        record(events, bank, soundSeed, options.output, report);
        return;
    }
    const auto output = makeAudioOutput();
    play(events, bank, soundSeed, *output, report);
}

int run(int& argumentCount, char** arguments)
{
    log::setThreshold(log::Level::error);
    const std::span all(arguments, static_cast<std::size_t>(argumentCount));
    const auto wanted = readTypingOptions(all.subspan(1));
    if (const auto* const answer = std::get_if<ToolOptions::Answer>(&wanted))
        return answer->give();
    const QCoreApplication application(argumentCount, arguments);
    type(std::get<TypingOptions>(wanted));
    return EXIT_SUCCESS;
}

} // namespace
} // namespace clavo

int main(int argc, char* argv[])
try {
    return clavo::run(argc, argv);
} catch (const std::exception& error) {
    fmt::print(stderr, "clavo-type: {}\n", error.what());
    return EXIT_FAILURE;
}
