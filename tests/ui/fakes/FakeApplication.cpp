// SPDX-License-Identifier: MIT
#include "ui/fakes/FakeApplication.h"

#include "fakes/FakePlatform.h"
#include "log/Log.h"
#include "unit/packs/PackFiles.h"

#include <optional>
#include <string_view>
#include <utility>

namespace clavo
{
namespace
{

std::unique_ptr<StatsStore> statsOf(FakeApplication::Kind kind)
{
    const StatsSurroundings nothingIsSaved{.runInBackground = [](const auto&) {}};
    if (kind == FakeApplication::WithoutPacks)
        return std::make_unique<StatsStore>(std::vector<std::int64_t>(), 0, nothingIsSaved);
    std::vector<std::int64_t> days{3120, 4875, 2210, 6340, 5120, 0,    1480,
                                   4410, 5975, 6820, 40,   3260, 4930, 5284};
    if (kind == FakeApplication::WithLargeNumbers)
        days.back() = 1'234'567;
    const auto best = kind == FakeApplication::WithLargeNumbers ? 9999 : 92;
    return std::make_unique<StatsStore>(days, best, nothingIsSaved);
}

bool isPermitted(FakeApplication::Kind kind)
{
    switch (kind) {
    case FakeApplication::WithoutPermission:
    case FakeApplication::WithCommands:
    case FakeApplication::BeforeLogin:
    case FakeApplication::WithoutKeyboard:
        return false;
    default:
        return true;
    }
}

} // namespace

class FakeApplication::Ports
{
public:
    explicit Ports(Kind kind)
    {
        log::setSink([](log::Level, std::string_view) {});
        if (kind != WithoutPacks)
            addPacks();
        if (kind == WithLongNames)
            addLongNames();
        auto& access = *m_platform.access;
        access.granted = isPermitted(kind);
        if (kind == BeforeLogin)
            access.obstacle = InputAccess::State::notInThisLogin;
        else if (kind == WithoutKeyboard)
            access.obstacle = InputAccess::State::noKeyboard;
        else if (kind == BeforeRelaunch)
            m_platform.refuseAfterRelaunch();
        else if (kind == WithCommands)
            access.typed = "echo 'SUBSYSTEM==\"input\", TAG+=\"uaccess\"' | sudo tee "
                           "/etc/udev/rules.d/70-input.rules\n"
                           "sudo udevadm control --reload && sudo udevadm trigger "
                           "--subsystem-match=input --action=change";
        m_state.emplace(m_platform.services, m_platform.surroundings());
        if (kind == BeforeRelaunch)
            m_platform.grantInFreshProcess();
    }

    AppState& state() { return *m_state; }
    LanguageSetting& language() { return m_language; }

private:
    static void addPack(const std::filesystem::path& folder, std::string_view id,
                        std::string_view name, std::string_view category)
    {
        writeFile(folder / id / "pack.json", manifestText("", "", id, name, category));
    }
    void addPacks() const
    {
        addPack(m_platform.builtInPacks(), "cherrymx-red-abs", "Cherry MX Red (ABS)", "linear");
        addPack(m_platform.builtInPacks(), "nk-cream", "NK Cream", "linear");
        addPack(m_platform.builtInPacks(), "cherrymx-brown-pbt", "Cherry MX Brown (PBT)",
                "tactile");
        addPack(m_platform.builtInPacks(), "cherrymx-blue-abs", "Cherry MX Blue (ABS)", "clicky");
        addPack(m_platform.builtInPacks(), "topre-purple-hybrid-pbt", "Topre Purple (PBT)",
                "special");
    }
    void addLongNames() const
    {
        addPack(m_platform.customPacks(), "long",
                "A name as long as somebody makes it at home in the rain", "linear");
        addPack(m_platform.customPacks(), "short", "§", "linear");
        addPack(m_platform.builtInPacks(), "cherrymx-red-abs",
                "The red ones, as they were recorded on a long afternoon in autumn", "linear");
    }

    FakePlatform m_platform;
    LanguageSetting m_language{*m_platform.defaults};
    std::optional<AppState> m_state;
};

FakeApplication::FakeApplication()
    : m_ports(std::make_unique<Ports>(m_kind)), m_stats(statsOf(m_kind))
{
}

FakeApplication::~FakeApplication() = default;

void FakeApplication::setKind(Kind kind)
{
    // The former ones last until no view shows them any more.
    const auto ports = std::exchange(m_ports, std::make_unique<Ports>(kind));
    const auto stats = std::exchange(m_stats, statsOf(kind));
    m_kind = kind;
    emit changed();
}

void FakeApplication::chooseLanguage(int index)
{
    m_ports->language().setIndex(index);
}

AppState* FakeApplication::state() const
{
    return &m_ports->state();
}

LanguageSetting* FakeApplication::language() const
{
    return &m_ports->language();
}

} // namespace clavo
