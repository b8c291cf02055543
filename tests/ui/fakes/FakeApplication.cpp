// SPDX-License-Identifier: MIT
#include "ui/fakes/FakeApplication.h"

#include "unit/app/AppStateFixture.h"
#include "unit/packs/PackFiles.h"

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
    std::vector<std::int64_t> days(14, 4200);
    days.back() = kind == FakeApplication::WithLargeNumbers ? 1'234'567 : 5284;
    const auto best = kind == FakeApplication::WithLargeNumbers ? 9999 : 92;
    return std::make_unique<StatsStore>(days, best, nothingIsSaved);
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
        permission = kind != WithoutPermission && kind != BeforeRelaunch;
        if (kind == BeforeRelaunch)
            permitTooSoon();
    }

    using AppStateFixture::state;

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
    void permitTooSoon()
    {
        const auto seconds = startedAt.time_since_epoch();
        stored["permissionRelaunch"] = std::chrono::duration<double>(seconds).count();
        state();
        time.advance(std::chrono::seconds(2));
        freshProcess(true);
    }
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

AppState* FakeApplication::state() const
{
    return &m_ports->state();
}

} // namespace clavo
