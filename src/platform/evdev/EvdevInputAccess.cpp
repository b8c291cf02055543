// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevInputAccess.h"

#include "log/Log.h"
#include "platform/evdev/EvdevDevice.h"
#include "platform/evdev/InputRule.h"
#include "platform/inotify/FolderWatch.h"

#include <QProcess>
#include <QString>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <functional>
#include <ios>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using State = InputAccess::State;

constexpr int dismissed = 126; // How pkexec ends when the user closes its dialogue.

/// What the grant program does, as commands to type.
std::string grantCommands()
{
    auto command = "printf '" + inputRule("%s") + "\\n'";
    for (const auto* const kind : inputKinds)
        command += std::string(" ") + kind;
    return command + " | sudo tee " + inputRuleFile +
           "\nsudo udevadm control --reload && "
           "sudo udevadm trigger --subsystem-match=input --action=change";
}

/// Whether the user has become a member of the devices' group, but this process has not.
bool isMemberOfNextLogin()
{
    // NOLINTBEGIN(concurrency-mt-unsafe): one thread asks.
    const auto* const group = ::getgrnam("input");
    const auto* const user = ::getpwuid(::getuid());
    // NOLINTEND(concurrency-mt-unsafe)
    if (!group || !user)
        return false;
    bool isMember = false;
    for (auto* const* name = group->gr_mem; *name != nullptr; ++name)
        isMember = isMember || std::string_view(*name) == user->pw_name;
    std::vector<gid_t> own(static_cast<std::size_t>(std::max(0, ::getgroups(0, nullptr))));
    ::getgroups(static_cast<int>(own.size()), own.data());
    return isMember && std::ranges::find(own, group->gr_gid) == own.end();
}

class EvdevInputAccess final : public InputAccess
{
public:
    EvdevInputAccess(GrantPrograms programs, std::filesystem::path devices,
                     std::filesystem::path descriptions)
        : m_programs(std::move(programs)), m_devices(std::move(devices)),
          m_descriptions(std::move(descriptions)),
          m_watch(m_devices, [this](const auto& names) { handleChanges(names); })
    {
    }
    ~EvdevInputAccess() override
    {
        if (m_question)
            m_question->disconnect();
    }
    EvdevInputAccess(const EvdevInputAccess&) = delete;
    EvdevInputAccess& operator=(const EvdevInputAccess&) = delete;

    [[nodiscard]] State state() const override
    {
        std::error_code error;
        bool isAnyRefused = false;
        for (std::filesystem::directory_iterator entry(m_devices, error), end;
             !error && entry != end; entry.increment(error)) {
            const auto& node = entry->path();
            if (!evdev::isDeviceNode(node))
                continue;
            if (::access(node.c_str(), R_OK) != 0)
                isAnyRefused = isAnyRefused || mayBeKeyboard(node);
            else if (const auto device = evdev::EvdevDevice::open(node);
                     device && device->traits().hasTypingKeys)
                return State::granted;
        }
        if (!isAnyRefused)
            return State::noKeyboard;
        return isMemberOfNextLogin() ? State::notInThisLogin : State::refused;
    }

    /// Asks the administrator if the user requests it, one question at a time.
    bool request(Occasion occasion) override
    {
        const auto now = state();
        if (occasion == Occasion::userRequest && now == State::refused && canAsk() && !isAsking())
            ask();
        return now == State::granted;
    }

    void showSettings() override
    {
        if (isAsking())
            return;
        if (const auto advice = adviceOn(state()); !advice.empty())
            log::error("{}", advice);
    }

    [[nodiscard]] std::string commands() const override
    {
        return canAsk() && !m_hasFailed ? std::string() : grantCommands();
    }

    void watch(std::function<void()> receiver) override
    {
        m_changed = std::move(receiver);
        if (const auto error = m_watch.start())
            log::error(
                "inotify refusé ({}) : un clavier branché ou un accès accordé après dix minutes "
                "passera inaperçu",
                error.message());
    }

private:
    /// Whether udev takes the device for a keyboard, so that a grant includes it: it has the first
    /// 31 keys. Devices without a description may be keyboards.
    [[nodiscard]] bool mayBeKeyboard(const std::filesystem::path& node) const
    {
        std::ifstream keys(m_descriptions / node.filename() / "device" / "capabilities" / "key");
        if (!keys)
            return true;
        std::uint64_t lowest = 0; // The words are hexadecimal, the lowest keys in the last one.
        for (std::uint64_t word = 0; keys >> std::hex >> word;)
            lowest = word;
        constexpr std::uint64_t firstKeys = 0xFFFFFFFE;
        return (lowest & firstKeys) == firstKeys;
    }

    [[nodiscard]] bool canAsk() const
    {
        return !m_programs.pkexec.empty() && !m_programs.grant.empty();
    }

    [[nodiscard]] bool isAsking() const
    {
        return m_question && m_question->state() != QProcess::NotRunning;
    }

    void ask()
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

    void handleChanges(std::span<const std::string> names) const
    {
        if (names.empty() || std::ranges::any_of(names, evdev::isDeviceNode))
            m_changed();
    }

    void finish(int status)
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

    GrantPrograms m_programs;
    std::filesystem::path m_devices;
    std::filesystem::path m_descriptions;
    FolderWatch m_watch;
    std::unique_ptr<QProcess> m_question;
    std::function<void()> m_changed;
    bool m_hasFailed = false; // The last question failed and was not just dismissed.
};

} // namespace

std::unique_ptr<InputAccess> makeEvdevInputAccess(GrantPrograms programs,
                                                  std::filesystem::path devices,
                                                  std::filesystem::path descriptions)
{
    return std::make_unique<EvdevInputAccess>(std::move(programs), std::move(devices),
                                              std::move(descriptions));
}

std::string adviceOn(InputAccess::State access)
{
    switch (access) {
    case State::granted:
        return {};
    case State::noKeyboard:
        return "aucun clavier dans /dev/input";
    case State::notInThisLogin:
        return "accès aux claviers accordé au groupe input : il vaut à la prochaine ouverture de "
               "session";
    case State::refused:
        break;
    }
    return std::string("accès aux claviers refusé. Ces deux commandes l'accordent à la session "
                       "ouverte, et à tous ses programmes, en lecture et en écriture :\n") +
           grantCommands();
}

} // namespace clavo
