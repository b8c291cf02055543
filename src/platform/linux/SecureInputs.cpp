// SPDX-License-Identifier: MIT
#include "platform/linux/SecureInputs.h"

#include "platform/atspi/AtspiSecureInput.h"
#include "platform/dbus/LogindSecureInput.h"
#include "platform/dbus/ScreenSaverSecureInput.h"
#include "platform/linux/AnySecureInput.h"
#include "platform/linux/LockerSecureInput.h"
#include "platform/linux/PromptSecureInput.h"
#include "platform/linux/QtTimer.h"
#include "platform/linux/TerminalSecureInput.h"
#include "platform/x11/X11ActiveWindow.h"

#include <utility>

namespace clavo
{
namespace
{

/// What the program that has the keys tells by being what it is.
class ProgramSecureInput final : public SecureInput
{
public:
    explicit ProgramSecureInput(TerminalSecureInput::Unknown unknown) : m_terminals(unknown) {}

    void setFocus(pid_t process)
    {
        m_prompt.setFocus(process);
        m_terminals.setFocus(process);
    }

    [[nodiscard]] SecureReason reason() const override
    {
        const auto reason = m_prompt.reason();
        return reason != SecureReason::none ? reason : m_terminals.reason();
    }

private:
    PromptSecureInput m_prompt;
    TerminalSecureInput m_terminals;
};

/// The program of the active window.
class X11ProgramSecureInput final : public SecureInput
{
public:
    [[nodiscard]] SecureReason reason() const override { return m_program.reason(); }

private:
    ProgramSecureInput m_program{TerminalSecureInput::Unknown::noTerminal};
    X11ActiveWindow m_window{[this](pid_t process) { m_program.setFocus(process); }};
};

/// The element that has the keys, and its program. Outside X11 nothing else tells which one that
/// is, and many a terminal does not tell it either.
class AccessibleSecureInput final : public SecureInput
{
public:
    [[nodiscard]] SecureReason reason() const override
    {
        const auto reason = m_element.reason();
        return reason != SecureReason::none ? reason : m_program.reason();
    }

private:
    ProgramSecureInput m_program{TerminalSecureInput::Unknown::everyTerminal};
    AtspiSecureInput m_element{std::make_unique<QtTimer>(),
                               [this](pid_t process) { m_program.setFocus(process); }};
};

} // namespace

std::unique_ptr<SecureInput> makeSecureInput(const SessionEnvironment& session)
{
    AnySecureInput::Watchers watchers;
    watchers.push_back(std::make_unique<LogindSecureInput>(std::make_unique<QtTimer>()));
    watchers.push_back(std::make_unique<ScreenSaverSecureInput>());
    watchers.push_back(std::make_unique<LockerSecureInput>(LockerSecureInput::installed()));
    if (isX11Session(session)) {
        watchers.push_back(std::make_unique<AtspiSecureInput>(std::make_unique<QtTimer>()));
        watchers.push_back(std::make_unique<X11ProgramSecureInput>());
    } else
        watchers.push_back(std::make_unique<AccessibleSecureInput>());
    return std::make_unique<AnySecureInput>(std::move(watchers));
}

} // namespace clavo
