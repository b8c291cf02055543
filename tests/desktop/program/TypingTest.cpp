// SPDX-License-Identifier: MIT
#include "desktop/user/ProgramFixture.h"
#include "input/InputMonitor.h"

#include <QDate>

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <string>
#include <thread>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSubsetOf;

namespace fs = std::filesystem;

std::string today()
{
    return QDate::currentDate().toString("yyyy-MM-dd").toStdString();
}

class Typing : public ProgramFixture
{
protected:
    /// Every file in the user's folder, by its relative path.
    [[nodiscard]] std::set<std::string> files() const
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(user.path())) {
            if (!entry.is_directory())
                names.insert(fs::relative(entry.path(), user.path()).string());
        }
        return names;
    }
};

TEST_F(Typing, IsHeardAndCounted)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    ASSERT_TRUE(program.plays());
    SinkRecorder recorder(desktopSink);
    ASSERT_TRUE(EventLoop::until([&] { return recorder.frames() > 0; }));

    for (int key = 0; key < 5; ++key)
        hands.strike(keyA);

    EXPECT_TRUE(EventLoop::until([&] { return peak(recorder.recording()) > 0.01F; }));
    EXPECT_TRUE(becomes(statsFile(), "total", 5));
}

TEST_F(Typing, WhileTheProgramIsStoppedIsCountedAndSilent)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    hands.strike(keyA);
    ASSERT_TRUE(program.says("clavo: touche relâchée, son: true"));

    ASSERT_EQ(::kill(static_cast<pid_t>(program.processId()), SIGSTOP), 0);
    for (int key = 0; key < 5; ++key)
        hands.strike(keyA);
    std::this_thread::sleep_for(InputMonitor::lateness + 200ms);
    ASSERT_EQ(::kill(static_cast<pid_t>(program.processId()), SIGCONT), 0);

    EXPECT_TRUE(program.says("clavo: touche relâchée, son: false"));
    EXPECT_TRUE(becomes(statsFile(), "total", 6));
    EXPECT_EQ(std::ranges::count(program.logLines(), "clavo: touche appuyée, son: true"), 1);
    EXPECT_EQ(std::ranges::count(program.logLines(), "clavo: touche appuyée, son: false"), 5);
}

TEST_F(Typing, WithTheSoundsOffIsCountedAndSilent)
{
    store({{"enabled", false}});
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    SinkRecorder recorder(desktopSink);

    for (int key = 0; key < 7; ++key)
        hands.strike(keyA);

    // The save comes two seconds after the last key.
    EXPECT_TRUE(becomes(statsFile(), "total", 7));
    EXPECT_GT(recorder.frames(), 44100U);
    EXPECT_EQ(peak(recorder.recording()), 0.0F);
}

TEST_F(Typing, LeavesNothingFromWhichItCouldBeReadBack)
{
    // Each key of the secret stands for one of its characters.
    const std::vector<std::uint32_t> secret{31, 18, 46, 19, 18, 20, 3, 4, 18, 19, 20};
    {
        RunningProgram program(user.path());
        ASSERT_TRUE(program.listens());
        for (const auto key : secret)
            hands.strike(key);
        ASSERT_TRUE(becomes(statsFile(), "total", secret.size()));

        // Which key it was is in no line: all presses look alike, and all releases.
        auto lines = program.logLines();
        const auto isStroke = [](const std::string& line) {
            return line.starts_with("clavo: touche ");
        };
        const auto strokes = std::ranges::count_if(lines, isStroke);
        EXPECT_EQ(strokes, std::ssize(secret) * 2);
        std::erase(lines, "clavo: touche appuyée, son: true");
        std::erase(lines, "clavo: touche relâchée, son: true");
        for (const auto& line : lines) {
            EXPECT_THAT(
                (std::vector<std::string>{"pack chargé", "autorisation", "sortie audio",
                                          "Clavo tourne en tant que root"}),
                Contains(testing::ResultOf(
                    [&](const std::string& start) { return line.starts_with("clavo: " + start); },
                    true)))
                << line;
        }
    }

    // All that is kept is three counts. PulseAudio's library may leave the key to its own server.
    EXPECT_THAT(files(), IsSubsetOf({"data/Clavo/stats.json", "config/pulse/cookie"}));
    EXPECT_EQ(
        read(statsFile()),
        json({{"daily", {{today(), secret.size()}}}, {"bestWPM", 0}, {"total", secret.size()}}));
}

} // namespace
} // namespace clavo
