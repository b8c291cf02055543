// SPDX-License-Identifier: MIT
#pragma once

#include "app/Relauncher.h"

#include <filesystem>

namespace clavo
{

/// Starts the program as a process of its own, which asks this one to make way for it and outlives
/// it. A failure is one log line.
class ProcessRelauncher final : public Relauncher
{
public:
    explicit ProcessRelauncher(std::filesystem::path program);

    void openNewInstance(std::function<void()> completed) override;

private:
    std::filesystem::path m_program;
};

} // namespace clavo
