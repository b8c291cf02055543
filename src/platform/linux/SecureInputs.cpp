// SPDX-License-Identifier: MIT
#include "platform/linux/SecureInputs.h"

#include "input/SecureInput.h"
#include "loop/QtTimer.h"
#include "platform/atspi/AtspiSecureInput.h"
#include "platform/dbus/LogindSecureInput.h"
#include "platform/dbus/ScreenSaverSecureInput.h"
#include "platform/procfs/LockerSecureInput.h"
#include "platform/procfs/PromptSecureInput.h"
#include "platform/procfs/TerminalSecureInput.h"
#include "platform/x11/X11ActiveWindow.h"

#include <sys/types.h>

#include <optional>
#include <utility>

namespace clavo
{
namespace
{

/// The session's watchers behind one flag, and the terminals of the focused program, which are
/// asked since nothing reports their changes.
class SessionSecureInput final : public SecureInput
{
public:
    explicit SessionSecureInput(bool isX11)
        : m_terminals(makeTerminalSecureInput(isX11 ? TerminalSecureInput::Unknown::noTerminal
                                                    : TerminalSecureInput::Unknown::everyTerminal))
    {
        CombinedSecureInput::Sources watchers;
        const auto add = [&](std::unique_ptr<ObservableSecureInput> watcher) {
            if (watcher) // Else the program is built without it.
                watchers.push_back(std::move(watcher));
        };
        add(makeLogindSecureInput(makeQtTimer()));
        add(makeScreenSaverSecureInput());
        add(makeLockerSecureInput(installedLockers()));
        auto prompt = std::make_unique<PromptSecureInput>();
        const auto setFocus = [this, prompt = prompt.get()](pid_t process) {
            prompt->setFocus(process);
            m_terminals->setFocus(process);
        };
        // Without X11 only the focused accessible element identifies the focused process; many
        // terminals expose none.
        add(makeAtspiSecureInput(makeQtTimer(), isX11 ? atspi::FocusReceiver() : setFocus));
        add(std::move(prompt));
        m_watchers.emplace(std::move(watchers));
        if (isX11)
            m_activeWindow = makeX11ActiveWindow(setFocus);
    }

    [[nodiscard]] SecureReason reason() const override
    {
        const auto reported = m_watchers->reason();
        return reported != SecureReason::none ? reported : m_terminals->reason();
    }

private:
    std::unique_ptr<TerminalSecureInput> m_terminals;
    std::optional<CombinedSecureInput> m_watchers;
    std::unique_ptr<X11ActiveWindow> m_activeWindow;
};

} // namespace

std::unique_ptr<SecureInput> makeSecureInput(const Session& session)
{
    return std::make_unique<SessionSecureInput>(session.isX11());
}

} // namespace clavo
