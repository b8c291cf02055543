// SPDX-License-Identifier: MIT
#include "unit/app/AppStateFixture.h"
#include "unit/packs/PackFiles.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

#include <sys/resource.h>
#include <unistd.h>

#include <fstream>

namespace clavo
{
namespace
{

using testing::Contains;
using testing::Key;
using testing::Not;
using testing::StartsWith;

/// While it lives, this process gets only so much more memory.
class MemoryLimit
{
public:
    explicit MemoryLimit(rlim_t bytes)
    {
        rlim_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        EXPECT_EQ(::getrlimit(RLIMIT_AS, &m_previous), 0);
        const rlimit limit{.rlim_cur = pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + bytes,
                           .rlim_max = m_previous.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_AS, &limit), 0);
    }
    ~MemoryLimit() { ::setrlimit(RLIMIT_AS, &m_previous); }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

private:
    rlimit m_previous{};
};

/// The memory is enough for all but the sounds of the pack "long".
class AppStateMemoryTest : public AppStateFixture
{
protected:
    static constexpr rlim_t memory = rlim_t{64} << 20U;
    static constexpr std::int64_t keyA = 0; // Virtual key code; scancode 30.

    AppStateMemoryTest()
    {
        writePack("cherrymx-red-abs", {{30, 0.5F}});
        const auto folder = builtInPacks() / "long";
        writeFile(folder / "pack.json", manifestText(R"("30": "a")", "", "long", "long"));
        writeLongSound(folder / "sounds" / "a.wav");
    }
};

TEST_F(AppStateMemoryTest, PackThatCannotBeLoadedLeavesTheSelectedOne)
{
    state().setSpatial(false);
    state().setVolume(1);
    const QSignalSpy selections(&state(), &AppState::packIDChanged);
    {
        const MemoryLimit limit(memory);
        state().setPackID("long");
    }

    EXPECT_THAT(logged.lines().back(), StartsWith("pack long impossible à charger : "));
    EXPECT_EQ(state().packID(), "cherrymx-red-abs");
    EXPECT_EQ(state().selectedPackName(), "cherrymx-red-abs");
    EXPECT_EQ(selections.count(), 0);
    EXPECT_THAT(defaults->written, Not(Contains(Key("packID"))));
    press(keyA);
    EXPECT_GT(heard()[0], 0.0F);
}

TEST_F(AppStateMemoryTest, PackThatFailsWhileTheMainLoopTurnsLeavesTheSelectedOne)
{
    state();
    const QSignalSpy selections(&state(), &AppState::packIDChanged);
    platform.workPerLook = 10ms;
    state().setPackID("long");
    EXPECT_EQ(state().packID(), "long");
    {
        const MemoryLimit limit(memory);
        time.advance(0ms);
    }

    EXPECT_THAT(logged.lines().back(), StartsWith("pack long impossible à charger : "));
    EXPECT_EQ(state().packID(), "cherrymx-red-abs");
    EXPECT_EQ(state().selectedPackName(), "cherrymx-red-abs");
    EXPECT_EQ(selections.count(), 2);
    EXPECT_THAT(defaults->written, Not(Contains(Key("packID"))));
    EXPECT_EQ(state().sound().keyBank().press.size(), 1U);
}

TEST_F(AppStateMemoryTest, StartsWithAPackThatCannotBeLoaded)
{
    defaults->written["packID"] = std::string("long");
    {
        const MemoryLimit limit(memory);
        state();
    }

    EXPECT_THAT(logged.lines(), Contains(StartsWith("pack long impossible à charger : ")));
    EXPECT_TRUE(state().hasPermission()) << "it listens";
    EXPECT_EQ(state().packID(), "long");

    state().setPackID("cherrymx-red-abs");
    EXPECT_EQ(logged.lines().back(), "pack chargé : cherrymx-red-abs");
}

} // namespace
} // namespace clavo
