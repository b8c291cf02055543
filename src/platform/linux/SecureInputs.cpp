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

#include <optional>
#include <utility>

namespace clavo
{
namespace
{

/// The watchers of a session behind one flag, and the terminals of the program that has the keys,
/// which tell nothing and are asked.
class SessionSecureInput final : public SecureInput
{
public:
    explicit SessionSecureInput(bool isX11)
        : m_terminals(isX11 ? TerminalSecureInput::Unknown::noTerminal
                            : TerminalSecureInput::Unknown::everyTerminal)
    {
        AnySecureInput::Watchers watchers;
        watchers.push_back(std::make_unique<LogindSecureInput>(std::make_unique<QtTimer>()));
        watchers.push_back(std::make_unique<ScreenSaverSecureInput>());
        watchers.push_back(std::make_unique<LockerSecureInput>(LockerSecureInput::installed()));
        auto prompt = std::make_unique<PromptSecureInput>();
        const auto setFocus = [this, prompt = prompt.get()](pid_t process) {
            prompt->setFocus(process);
            m_terminals.setFocus(process);
        };
        // Outside X11 nothing but the element that has the keys tells which program has them, and
        // many a terminal does not tell it either.
        watchers.push_back(std::make_unique<AtspiSecureInput>(
            std::make_unique<QtTimer>(),
            isX11 ? AtspiSecureInput::FocusReceiver() : AtspiSecureInput::FocusReceiver(setFocus)));
        watchers.push_back(std::move(prompt));
        m_watchers.emplace(std::move(watchers));
        if (isX11)
            m_activeWindow.emplace(setFocus);
    }

    [[nodiscard]] SecureReason reason() const override
    {
        const auto told = m_watchers->reason();
        return told != SecureReason::none ? told : m_terminals.reason();
    }

private:
    TerminalSecureInput m_terminals;
    std::optional<AnySecureInput> m_watchers;
    std::optional<X11ActiveWindow> m_activeWindow;
};

} // namespace

std::unique_ptr<SecureInput> makeSecureInput(const SessionEnvironment& session)
{
    return std::make_unique<SessionSecureInput>(isX11Session(session));
}

} // namespace clavo
