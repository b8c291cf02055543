// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevInputAccess.h"

#include "log/Log.h"
#include "platform/evdev/InputRule.h"

#include <QProcess>

#include <utility>

namespace clavo
{
namespace
{

constexpr int dismissed = 126; // How pkexec ends when the user closes its dialogue.

/// What the grant program does, as commands to type.
std::string grantCommands()
{
    return std::string("echo '") + inputRule + "' | sudo tee " + inputRuleFile +
           "\nsudo udevadm control --reload && "
           "sudo udevadm trigger --subsystem-match=input --action=change";
}

class EvdevInputAccess final : public InputAccess
{
public:
    EvdevInputAccess(GrantPrograms programs, std::filesystem::path devices);
    ~EvdevInputAccess() override;

    [[nodiscard]] State state() const override;
    /// Asks the administrator when the user wishes it, one question at a time.
    bool request(Occasion occasion) override;
    void showSettings() override;
    [[nodiscard]] std::string commands() const override;
    void watch(std::function<void()> receiver) override { m_changed = std::move(receiver); }

private:
    [[nodiscard]] bool canAsk() const;
    [[nodiscard]] bool isAsking() const;
    void ask();
    void finish(int status);

    GrantPrograms m_programs;
    std::filesystem::path m_devices;
    std::unique_ptr<QProcess> m_question;
    std::function<void()> m_changed;
    bool m_hasFailed = false; // The last question failed and was not just dismissed.
};

EvdevInputAccess::EvdevInputAccess(GrantPrograms programs, std::filesystem::path devices)
    : m_programs(std::move(programs)), m_devices(std::move(devices))
{
}

EvdevInputAccess::~EvdevInputAccess()
{
    if (m_question)
        m_question->disconnect();
}

InputAccess::State EvdevInputAccess::state() const
{
    return evdev::accessToKeyboards(m_devices);
}

bool EvdevInputAccess::request(Occasion occasion)
{
    const auto now = state();
    if (occasion == Occasion::userRequest && now == State::refused && canAsk() && !isAsking())
        ask();
    return now == State::granted;
}

void EvdevInputAccess::showSettings()
{
    if (isAsking())
        return;
    if (const auto advice = adviceOn(state()); !advice.empty())
        log::error("{}", advice);
}

std::string EvdevInputAccess::commands() const
{
    return canAsk() && !m_hasFailed ? std::string() : grantCommands();
}

bool EvdevInputAccess::canAsk() const
{
    return !m_programs.pkexec.empty() && !m_programs.grant.empty();
}

bool EvdevInputAccess::isAsking() const
{
    return m_question && m_question->state() != QProcess::NotRunning;
}

void EvdevInputAccess::ask()
{
    m_question = std::make_unique<QProcess>();
    m_question->setProcessChannelMode(QProcess::ForwardedChannels);
    QObject::connect(m_question.get(), &QProcess::finished, m_question.get(),
                     [this](int status, QProcess::ExitStatus how) {
                         finish(how == QProcess::NormalExit ? status : -1);
                     });
    QObject::connect(m_question.get(), &QProcess::errorOccurred, m_question.get(),
                     [this](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart)
                             finish(-1);
                     });
    // pkexec's own dialogue on a terminal would stop a program in that terminal's background.
    m_question->start(
        QString::fromStdString(m_programs.pkexec.string()),
        {"--disable-internal-agent", QString::fromStdString(m_programs.grant.string())});
}

void EvdevInputAccess::finish(int status)
{
    m_hasFailed = status != 0 && status != dismissed;
    if (status == 0)
        log::notice("accès aux claviers accordé");
    else if (status == dismissed)
        log::notice("accès aux claviers : demande refermée sans réponse");
    else
        log::error("la demande d'accès aux claviers n'a pas abouti ({}) ; {}", status,
                   adviceOn(state()));
    if (m_changed)
        m_changed();
}

} // namespace

std::unique_ptr<InputAccess> makeEvdevInputAccess(GrantPrograms programs,
                                                  std::filesystem::path devices)
{
    return std::make_unique<EvdevInputAccess>(std::move(programs), std::move(devices));
}

std::string adviceOn(evdev::Access access)
{
    switch (access) {
    case evdev::Access::granted:
        return {};
    case evdev::Access::noKeyboard:
        return "aucun clavier dans /dev/input";
    case evdev::Access::notInThisLogin:
        return "accès aux claviers accordé au groupe input : il vaut à la prochaine ouverture de "
               "session";
    case evdev::Access::refused:
        break;
    }
    return std::string("accès aux claviers refusé. Ces deux commandes l'accordent à la session "
                       "ouverte, et à tous ses programmes :\n") +
           grantCommands();
}

} // namespace clavo
