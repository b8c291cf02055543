// SPDX-License-Identifier: MIT
#include "desktop/user/SinkRecorder.h"
#include "eventloop/EventLoop.h"
#include "fakes/TemporaryFolder.h"
#include "unit/packs/PackFiles.h"

#include <QProcess>

#include <algorithm>
#include <cmath>

namespace clavo
{
namespace
{

/// How often a sound begins: after 10 ms in which there was none.
int onsets(const Recording& recording)
{
    constexpr int silence = 441;
    int count = 0;
    int quiet = silence;
    for (std::size_t i = 0; i < recording.left.size(); ++i) {
        const bool sounds =
            std::max(std::abs(recording.left[i]), std::abs(recording.right[i])) > 0.01F;
        count += sounds && quiet >= silence ? 1 : 0;
        quiet = sounds ? 0 : quiet + 1;
    }
    return count;
}

TEST(Speakers, SoundForEveryPressAndRelease)
{
    const EventLoop eventLoop;
    const TemporaryFolder user;
    const auto pack = user.path() / "Clavo" / "Packs" / "pulse";
    writeFile(pack / "pack.json", manifestText(R"("30": "a")", R"("30": "a")"));
    writeSound(pack / "sounds" / "a.wav", std::vector<double>(441, 0.5));
    const SinkRecorder recorder(desktopSink);
    ASSERT_TRUE(EventLoop::until([&] { return recorder.frames() > 0; }));

    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_DATA_HOME", QString::fromStdString(user.path().string()));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(CLAVO_TYPE_PROGRAM, {"--pack", "custom:id", "--wpm", "60", "aaaaa"});
    ASSERT_TRUE(EventLoop::until([&] { return program.state() == QProcess::NotRunning; }));

    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(EventLoop::until([&] { return onsets(recorder.recording()) == 10; }))
        << onsets(recorder.recording());
}

} // namespace
} // namespace clavo
