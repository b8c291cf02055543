// SPDX-License-Identifier: MIT
#include "desktop/user/PrivateServer.h"
#include "desktop/user/ProgramFixture.h"
#include "unit/packs/PackFiles.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <fstream>

namespace clavo
{
namespace
{

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// What a run of the program that ends by itself came to.
struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;
};

class Start : public ProgramFixture
{
protected:
    /// True once the device may sleep. Without a sound the program waits about as long for that as
    /// one wait for a condition takes.
    [[nodiscard]] static bool sleeps()
    {
        const auto isAsleep = [] {
            const auto question = QDBusMessage::createMethodCall(
                "app.clavo.Clavo", "/app/clavo/Clavo", "app.clavo.Clavo", "Status");
            const auto answer = QDBusConnection::sessionBus().call(question);
            const auto status = json::parse(answer.arguments().value(0).toString().toStdString(),
                                            nullptr, /*allow_exceptions=*/false);
            return status.is_object() && !status["output"]["running"].get<bool>();
        };
        return EventLoop::until(isAsleep) || EventLoop::until(isAsleep);
    }

    [[nodiscard]] Outcome run(const QStringList& arguments, const QString& display = {}) const
    {
        auto environment = RunningProgram::environment(user.path());
        if (!display.isEmpty())
            environment.insert("DISPLAY", display);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(RunningProgram::executable(), arguments);
        process.waitForFinished(10'000);
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }
};

TEST_F(Start, TheQuestionForThePermissionCreatesNothing)
{
    const auto outcome = run({"--unknown", "--check-input-access"});

    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output + outcome.errors, "");
    EXPECT_TRUE(std::filesystem::is_empty(user.path()));
}

TEST_F(Start, ADisplayThatCannotBeReachedGrantsNothing)
{
    const auto outcome = run({"--check-input-access"}, ":7777");

    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output + outcome.errors, "");
}

TEST_F(Start, ADisplayThatComesLaterIsListenedTo)
{
    PrivateServer server;
    server.stop();
    const auto ownDisplay = qgetenv("DISPLAY");
    qputenv("DISPLAY", QByteArray::fromStdString(server.display()));
    RunningProgram program(user.path());
    EXPECT_TRUE(program.says("clavo: autorisation : false, écoute : false"));
    EXPECT_TRUE(program.says("clavo: serveur X injoignable"));

    server.start();

    EXPECT_TRUE(program.says("clavo: autorisation accordée : relance de Clavo"));
    EXPECT_TRUE(program.endsWith(0));
    EXPECT_TRUE(EventLoop::until([this] { // The one that was started.
        const auto status =
            json::parse(run({"--status", "--json"}).output, nullptr, /*allow_exceptions=*/false);
        return status.is_object() && status["input"]["listening"].get<bool>();
    }));
    server.stop();
    EXPECT_TRUE(EventLoop::until([this] { return run({"--status"}).status == 1; }))
        << "its windows are on that display, and it ends with it";
    qputenv("DISPLAY", ownDisplay);
}

TEST_F(Start, WithoutASessionThePermissionIsMissing)
{
    QProcess process;
    auto environment = RunningProgram::environment(user.path());
    environment.remove("DISPLAY");
    process.setProcessEnvironment(environment);
    process.start(RunningProgram::executable(), {"--check-input-access"});
    process.waitForFinished(10'000);

    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(std::filesystem::is_empty(user.path()));
}

TEST_F(Start, HelpAndVersionArePrinted)
{
    EXPECT_THAT(run({"--help"}).output, HasSubstr("--toggle"));
    EXPECT_THAT(run({"--version"}).output, StartsWith("clavo "));
    EXPECT_EQ(run({"--version"}).status, 0);
}

TEST_F(Start, AnUnknownOptionIsAnError)
{
    const auto outcome = run({"--loud"});

    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("'--loud'"));
    EXPECT_EQ(outcome.output, "");
}

TEST_F(Start, ARequestToEndEndsItCleanly)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());

    EXPECT_EQ(program.quit(), 0);
}

TEST_F(Start, ASecondStartLeavesItToTheFirst)
{
    RunningProgram first(user.path());
    ASSERT_TRUE(first.listens());

    EXPECT_EQ(run({}).status, 0);

    hands.strike(keyA);
    EXPECT_TRUE(becomes(statsFile(), "total", 1)) << "counted twice, or not at all";
}

TEST_F(Start, AStartThatReplacesTheRunningInstanceEndsIt)
{
    RunningProgram first(user.path());
    ASSERT_TRUE(first.listens());

    RunningProgram second(user.path(), {"--replace"});

    EXPECT_TRUE(first.endsWith(0));
    EXPECT_TRUE(second.listens());
}

TEST_F(Start, TheRunningOneIsToggledFromTheCommandLine)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());

    EXPECT_EQ(run({"--toggle"}).status, 0);
    EXPECT_TRUE(becomes(settingsFile(), "enabled", false));
    EXPECT_EQ(run({"--toggle"}).status, 0);
    EXPECT_TRUE(becomes(settingsFile(), "enabled", true));
}

TEST_F(Start, NothingIsToggledWhereNothingRuns)
{
    const auto outcome = run({"--toggle"});

    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "clavo: Clavo is not running\n");
    EXPECT_TRUE(std::filesystem::is_empty(user.path()));
}

TEST_F(Start, TheRunningOneReportsItsInputAndOutput)
{
    store({{"volume", 0.5}});
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    hands.strike(keyA);
    ASSERT_TRUE(program.says("clavo: touche relâchée"));
    ASSERT_TRUE(program.says("clavo: sortie audio"));

    const auto text = run({"--status"});
    EXPECT_EQ(text.status, 0) << text.errors;
    EXPECT_THAT(text.output, HasSubstr("Listening:  yes, to X11; the last event came "));
    EXPECT_THAT(text.output, HasSubstr("Permission: granted\n"));
    EXPECT_THAT(text.output, HasSubstr("Secret:     no\n"));
    EXPECT_THAT(text.output, HasSubstr("volume 50 %"));

    const auto status = json::parse(run({"--status", "--json"}).output);
    EXPECT_EQ(status["output"]["server"], "PipeWire");
    EXPECT_GT(status["output"]["quantumFrames"], 0);
    EXPECT_EQ(status["pack"]["id"], "cherrymx-red-abs");
    EXPECT_GE(status["input"]["secondsSinceEvent"], 0);
    EXPECT_EQ(status["settings"]["volume"], 0.5);
}

TEST_F(Start, TheServerIsReportedWhileTheDeviceSleeps)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.plays());
    ASSERT_TRUE(sleeps());

    EXPECT_THAT(run({"--status"}).output,
                ContainsRegex("Output:     PipeWire, .* ms; asleep until the next sound\n"));
    const auto status = json::parse(run({"--status", "--json"}).output);
    EXPECT_EQ(status["output"]["server"], "PipeWire");
    EXPECT_EQ(status["output"]["running"], false);
}

TEST_F(Start, APackOfHugeSoundsDoesNotKeepItFromListening)
{
    const auto folder = user.path() / "data" / "Clavo" / "Packs" / "huge";
    std::string press;
    for (int scancode = 0; scancode < 400; ++scancode) {
        std::string name(1, "abcd"[scancode % 4]);
        for (int step = 0; step < scancode; ++step)
            name.insert(0, "./");
        press +=
            (scancode == 0 ? "\"" : ", \"") + std::to_string(scancode) + R"(": ")" + name + '"';
    }
    writeFile(folder / "pack.json", manifestText(press, "", "huge"));
    writeLongSound(folder / "sounds" / "a.wav");
    for (const auto* const name : {"b.wav", "c.wav", "d.wav"})
        std::filesystem::copy_file(folder / "sounds" / "a.wav", folder / "sounds" / name);
    store({{"packID", "custom:huge"}});

    RunningProgram program(user.path());

    EXPECT_TRUE(program.says("clavo: pack custom:huge : 200 sons laissés de côté"));
    EXPECT_TRUE(program.listens());
}

TEST_F(Start, ThereIsNoStatusWhereNothingRuns)
{
    const auto outcome = run({"--status"});

    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "clavo: Clavo is not running\n");
    EXPECT_TRUE(std::filesystem::is_empty(user.path()));
}

} // namespace
} // namespace clavo
