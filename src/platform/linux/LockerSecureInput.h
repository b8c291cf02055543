// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/SecureWatcher.h"

#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace clavo
{

/// The programs that lock the screen and tell nobody: secret while one of them runs.
///
/// The kernel tells when the file of one is opened, which is how a program starts, and when its
/// process ends.
class LockerSecureInput final : public SecureWatcher
{
public:
    /// The files of those that are installed, in the folders that programs are looked for in.
    [[nodiscard]] static std::vector<std::filesystem::path> installed();

    explicit LockerSecureInput(std::span<const std::filesystem::path> files);
    ~LockerSecureInput() override;

private:
    class Lockers;

    std::unique_ptr<Lockers> m_lockers;
};

} // namespace clavo
