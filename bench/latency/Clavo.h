// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace clavo::latency
{

/// What the program under test plays.
enum class Pack {
    shipped, // Its default pack with the default settings.
    click,   // Presses only, loud from the first sample, gone within 20 ms.
    pulse,   // Presses only, smooth pulses of one height so quiet that all voices may add up.
};

struct ClavoSetup {
    std::filesystem::path program;
    Pack pack = Pack::shipped;
    std::string audio;               // Output to use; the program's choice when empty.
    std::optional<unsigned> quantum; // Wish in frames; the program's default without one.
};

/// In kibibytes.
struct Memory {
    std::size_t resident = 0;
    std::size_t proportional = 0;
};

/// A running Clavo with settings, packs and log of its own. The destructor ends it.
class Clavo
{
public:
    static std::unique_ptr<Clavo> start(const ClavoSetup& setup);

    Clavo(const Clavo&) = delete;
    Clavo& operator=(const Clavo&) = delete;
    ~Clavo();

    [[nodiscard]] bool isRunning();
    [[nodiscard]] Memory memory() const;

private:
    Clavo() = default;

    std::filesystem::path m_folder;
    pid_t m_process = -1;
};

} // namespace clavo::latency
