// SPDX-License-Identifier: MIT
#include "platform/linux/EvdevInputAccess.h"

#include "log/Log.h"
#include "platform/linux/InputRule.h"

#include <QProcess>

#include <utility>

namespace clavo
{
namespace
{

constexpr int dismissed = 126; // How pkexec ends when the user closes its dialogue.

/// What our grant program does, to be typed.
std::string grantCommands()
{
    return std::string("echo '") + inputRule + "' | sudo tee " + inputRuleFile +
           "\nsudo udevadm control --reload && "
           "sudo udevadm trigger --subsystem-match=input --action=change";
}

} // namespace

EvdevInputAccess::EvdevInputAccess(Programs programs, std::filesystem::path devices)
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

bool EvdevInputAccess::request()
{
    const auto now = state();
    if (now == State::refused && canAsk() && !isAsking())
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
    // Its own dialogue on a terminal would stop a program that runs in the background there.
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
    if (changed)
        changed();
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
