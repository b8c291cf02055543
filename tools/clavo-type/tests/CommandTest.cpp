// SPDX-License-Identifier: MIT
#include "fakes/TemporaryFolder.h"
#include "unit/packs/PackFiles.h"

#include <QProcess>
#include <QStringList>

#include <gmock/gmock.h>

#include <set>
#include <string>

namespace clavo
{
namespace
{

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

struct Ended {
    int status = -1;
    std::string output;
    std::string errors;
};

/// The real program, for a user who has one pack, of pulses.
class CommandTest : public testing::Test
{
protected:
    CommandTest()
    {
        const auto pack = user() / "data" / "Clavo" / "Packs" / "pulse";
        writeFile(pack / "pack.json", manifestText(R"("30": "press")", R"("30": "release")"));
        writeSound(pack / "sounds" / "press.wav", {0.5, 0.5, 0.5});
        writeSound(pack / "sounds" / "release.wav", {0.25, 0.25});
        const auto silent = user() / "data" / "Clavo" / "Packs" / "silent";
        writeFile(silent / "pack.json", manifestText(R"("30": "gone")", "", "silent"));
    }

    [[nodiscard]] fs::path user() const { return m_folder.path() / "user"; }
    [[nodiscard]] fs::path wav() const { return m_folder.path() / "out.wav"; }

    Ended run(const QStringList& arguments, const std::string& input = "")
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto& [variable, name] :
             {std::pair("HOME", "home"), std::pair("XDG_CONFIG_HOME", "config"),
              std::pair("XDG_DATA_HOME", "data"), std::pair("XDG_RUNTIME_DIR", "run")})
            environment.insert(variable, QString::fromStdString((user() / name).string()));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(CLAVO_TYPE_PROGRAM, arguments);
        process.write(input.data(), static_cast<qint64>(input.size()));
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    Ended toWav(QStringList arguments, const std::string& input = "")
    {
        return run(arguments << "-o" << QString::fromStdString(wav().string()), input);
    }

    /// The user's files that are not sounds.
    [[nodiscard]] std::set<std::string> files() const
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(user())) {
            if (entry.is_regular_file() && entry.path().extension() != ".wav")
                names.insert(fs::relative(entry.path(), user()).string());
        }
        return names;
    }

    [[nodiscard]] std::size_t frames() const
    {
        constexpr std::uintmax_t header = 44;
        return (fs::file_size(wav()) - header) / 6;
    }

private:
    TemporaryFolder m_folder;
};

TEST_F(CommandTest, TypesATextIntoAFile)
{
    const auto ended = toWav({"hello", "world", "--wpm", "60"});

    EXPECT_EQ(ended.status, 0) << ended.errors;
    EXPECT_EQ(ended.output + ended.errors, "");
    // Eleven keys, 0.2 s each, and the end of the last sound.
    EXPECT_GE(frames(), 44100U * 2);
    EXPECT_LE(frames(), 44100U * 3);
}

TEST_F(CommandTest, SameSeedGivesTheSameFile)
{
    const auto bytes = [&](const char* seed) {
        EXPECT_EQ(toWav({"Hello, World!", "--humanize", "--seed", seed}).status, 0);
        return contentOf(wav());
    };

    const auto first = bytes("5");
    EXPECT_TRUE(bytes("5") == first);
    EXPECT_FALSE(bytes("6") == first);
}

TEST_F(CommandTest, TypesAFileAndTheStandardInputAlike)
{
    const auto file = user() / "text";
    writeFile(file, "aa a");
    const QStringList pack{"--pack", "custom:id", "--seed", "1"};

    EXPECT_EQ(toWav(pack + QStringList{"-f", QString::fromStdString(file.string())}).status, 0);
    const auto fromFile = contentOf(wav());
    EXPECT_EQ(toWav(pack, "aa a").status, 0);

    EXPECT_FALSE(fromFile.empty());
    EXPECT_TRUE(contentOf(wav()) == fromFile);
}

TEST_F(CommandTest, TouchesNeitherTheSettingsNorTheStatistics)
{
    const auto settings = user() / "config" / "Clavo" / "settings.json";
    const auto stats = user() / "data" / "Clavo" / "stats.json";
    writeFile(settings, R"({"enabled": false, "packID": "nk-cream", "volume": 0})");
    writeFile(stats, R"({"daily": {"2026-01-01": 3}, "bestWPM": 10, "total": 3})");
    const auto before = files();

    EXPECT_EQ(toWav({"--pack", "custom:id", "aaa"}).status, 0);

    EXPECT_EQ(files(), before);
    EXPECT_EQ(contentOf(settings), R"({"enabled": false, "packID": "nk-cream", "volume": 0})");
    EXPECT_EQ(contentOf(stats), R"({"daily": {"2026-01-01": 3}, "bestWPM": 10, "total": 3})");
    // The settings have no effect either: the sounds are on, at the default volume.
    EXPECT_THAT(contentOf(wav()).substr(44, 3), Not(std::string(3, '\0')));
}

TEST_F(CommandTest, NamesThePacksIfTheRequestedOneDoesNotExist)
{
    const auto ended = toWav({"--pack", "nowhere", "text"});

    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.errors, StartsWith("clavo-type: there is no pack 'nowhere'; there are:\n"));
    EXPECT_THAT(ended.errors, HasSubstr("\n  cherrymx-red-abs\n"));
    EXPECT_THAT(ended.errors, HasSubstr("\n  custom:id\n"));
    EXPECT_FALSE(fs::exists(wav()));
}

TEST_F(CommandTest, NamesOfPacksCannotCommandTheTerminal)
{
    writeFile(user() / "data" / "Clavo" / "Packs" / "x" / "pack.json",
              manifestText("", "", R"(\u001b[2J)"));

    const auto ended = toWav({"--pack", "\x1b[3J", "text"});

    EXPECT_THAT(ended.errors, StartsWith("clavo-type: there is no pack '\ufffd[3J'"));
    EXPECT_THAT(ended.errors, HasSubstr("\n  custom:\ufffd[2J\n"));
}

TEST_F(CommandTest, PackThatWouldStopTheProgramDoesNotStopTheOthers)
{
    writeFile(user() / "data" / "Clavo" / "Packs" / "twice" / "pack.json",
              manifestText(R"("30": "a", "+30": "b")", "", "twice"));

    EXPECT_EQ(toWav({"--pack", "custom:id", "a"}).status, 0);
    EXPECT_THAT(toWav({"--pack", "nowhere", "a"}).errors, HasSubstr("\n  custom:twice\n"));
}

TEST_F(CommandTest, WritesToTheStandardOutput)
{
    const QStringList text{"--pack", "custom:id", "--seed", "1", "aaa"};
    EXPECT_EQ(toWav(text).status, 0);

    const auto ended = run(text + QStringList{"-o", "-"});

    EXPECT_EQ(ended.status, 0) << ended.errors;
    EXPECT_TRUE(ended.output == contentOf(wav()));
    EXPECT_EQ(ended.errors, "");
    EXPECT_FALSE(fs::exists("-"));
}

TEST_F(CommandTest, RefusesAPackWithoutSounds)
{
    const auto ended = toWav({"--pack", "custom:silent", "text"});

    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.errors, "clavo-type: the pack 'custom:silent' has no sound that can be read\n");
}

TEST_F(CommandTest, HasNothingToTypeInAnEmptyText)
{
    for (const auto& text : {QStringList{""}, QStringList{}}) {
        const auto ended = toWav(text);
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.errors, "clavo-type: there is nothing to type\n");
    }
    EXPECT_FALSE(fs::exists(wav()));
}

TEST_F(CommandTest, PrintsTheNumberOfSkippedCharactersButNotTheCharacters)
{
    EXPECT_EQ(toWav({"--pack", "custom:id", "aéa"}).errors,
              "clavo-type: 1 character was left out, as a US keyboard has no key for it\n");
    EXPECT_EQ(toWav({"--pack", "custom:id", "äaß"}).errors,
              "clavo-type: 2 characters were left out, as a US keyboard has no key for them\n");
}

TEST_F(CommandTest, PrintsTheProgressOfALongText)
{
    const auto ended = toWav({"--pack", "custom:id", "--wpm", "1000"}, std::string(3000, 'a'));

    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.errors, StartsWith("clavo-type: 10 %\nclavo-type: 20 %\n"));
    EXPECT_THAT(ended.errors, HasSubstr("clavo-type: 100 %\n"));
    EXPECT_GE(frames(), 44100U * 35);
}

TEST_F(CommandTest, RefusesATextWithoutEnd)
{
    const auto ended = toWav({"-f", "/dev/zero"});

    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.errors, "clavo-type: the text is longer than a mebibyte\n");
}

TEST_F(CommandTest, SaysWhichFileItCannotRead)
{
    for (const auto* const file : {"/nowhere", "/"}) {
        const auto ended = toWav({"--file", file});
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.errors, std::string("clavo-type: ") + file + ": cannot be read\n");
    }
}

TEST_F(CommandTest, HelpsOnRequest)
{
    const auto ended = run({"--help"});

    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.output, StartsWith("Usage: clavo-type "));
    EXPECT_EQ(ended.errors, "");
}

TEST_F(CommandTest, SaysWhatItDoesNotUnderstand)
{
    const auto ended = run({"--wpm", "fast", "text"});

    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.errors,
              "clavo-type: --wpm is a number from 1 to 1000\nTry 'clavo-type --help'.\n");
}

} // namespace
} // namespace clavo
