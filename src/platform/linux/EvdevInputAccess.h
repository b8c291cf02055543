// SPDX-License-Identifier: MIT
#pragma once

#include "app/InputAccess.h"
#include "platform/evdev/EvdevAccess.h"

#include <filesystem>
#include <memory>
#include <string>

class QProcess;

namespace clavo
{

/// The permission to read the kernel's input devices. An administrator gives it: polkit asks for
/// one and runs our grant program as root. Where there is no polkit, or it has nobody to ask, what
/// to type instead goes to the log.
class EvdevInputAccess final : public InputAccess
{
public:
    /// The programs that ask and that grant; an empty path where one of them is not there.
    struct Programs {
        std::filesystem::path pkexec;
        std::filesystem::path grant;
    };

    explicit EvdevInputAccess(Programs programs,
                              std::filesystem::path devices = evdev::deviceFolder);
    ~EvdevInputAccess() override;

    [[nodiscard]] State state() const override;
    /// Asks one question at a time.
    bool request() override;
    void showSettings() override;
    [[nodiscard]] std::string commands() const override;

private:
    [[nodiscard]] bool canAsk() const;
    [[nodiscard]] bool isAsking() const;
    void ask();
    void finish(int status);

    Programs m_programs;
    std::filesystem::path m_devices;
    std::unique_ptr<QProcess> m_question;
    bool m_hasFailed = false; // The last question was not put to anybody, or came to nothing.
};

/// What the user can do about an access that is missing, a line each; empty where it is granted.
[[nodiscard]] std::string adviceOn(evdev::Access access);

} // namespace clavo
