// SPDX-License-Identifier: MIT
#include "ui/fakes/FakeApplication.h"

#include "unit/app/AppStateFixture.h"
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
    const StatsSurroundings nothingIsSaved{.runLater = [](auto, const auto&) {},
                                           .runInBackground = [](const auto&) {}};
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

class FakeApplication::Ports : private AppStateFixture
{
public:
    explicit Ports(Kind kind)
    {
        if (kind != WithoutPacks)
            addPacks();
        if (kind == WithLongNames)
            addLongNames();
        permission = isPermitted(kind);
        if (kind == BeforeRelaunch)
            needRelaunch();
        m_language.emplace(state().defaults());
        if (kind == BeforeLogin)
            access->obstacle = InputAccess::State::notInThisLogin;
        else if (kind == WithoutKeyboard)
            access->obstacle = InputAccess::State::noKeyboard;
        else if (kind == WithCommands)
            access->typed = "echo 'SUBSYSTEM==\"input\", TAG+=\"uaccess\"' | sudo tee "
                            "/etc/udev/rules.d/70-input.rules\n"
                            "sudo udevadm control --reload && sudo udevadm trigger "
                            "--subsystem-match=input --action=change";
    }

    using AppStateFixture::state;
    LanguageSetting& language() { return *m_language; }

private:
    void TestBody() override {} // It is no test.

    static void addPack(const std::filesystem::path& folder, std::string_view id,
                        std::string_view name, std::string_view category)
    {
        writeFile(folder / id / "pack.json", manifestText("", "", id, name, category));
    }
    void addPacks() const
    {
        addPack(builtInPacks(), "cherrymx-red-abs", "Cherry MX Red (ABS)", "linear");
        addPack(builtInPacks(), "nk-cream", "NK Cream", "linear");
        addPack(builtInPacks(), "cherrymx-brown-pbt", "Cherry MX Brown (PBT)", "tactile");
        addPack(builtInPacks(), "cherrymx-blue-abs", "Cherry MX Blue (ABS)", "clicky");
        addPack(builtInPacks(), "topre-purple-hybrid-pbt", "Topre Purple (PBT)", "special");
    }
    void addLongNames() const
    {
        addPack(customPacks(), "long", "A name as long as somebody makes it at home in the rain",
                "linear");
        addPack(customPacks(), "short", "§", "linear");
        addPack(builtInPacks(), "cherrymx-red-abs",
                "The red ones, as they were recorded on a long afternoon in autumn", "linear");
    }
    std::optional<LanguageSetting> m_language;
};

FakeApplication::FakeApplication()
    : m_ports(std::make_unique<Ports>(m_kind)), m_stats(statsOf(m_kind))
{
}

FakeApplication::~FakeApplication() = default;

void FakeApplication::setKind(Kind kind)
{
    // The former ones last until nobody shows them any more.
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
