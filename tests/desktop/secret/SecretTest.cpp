// SPDX-License-Identifier: MIT
#include "desktop/secret/WindowManager.h"
#include "desktop/user/ProgramFixture.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <fstream>
#include <iterator>
#include <span>
#include <string>

namespace clavo
{
namespace
{

constexpr std::uint32_t keyEnter = 28;
constexpr std::uint32_t keyTab = 15;

/// A program that asks for a name, then for a password, then for the name again.
struct Form {
    std::string name; // Of the test.
    QString program;
    QStringList arguments;
    std::uint32_t next = keyTab; // Key that leads from one to the other.
    std::string reason;          // What the status calls the password.
};

/// The program, and how it takes what is typed.
class SecretFixture : public ProgramFixture
{
protected:
    /// Why the program takes input as secret, in its own words.
    static std::string reason()
    {
        const auto question = QDBusMessage::createMethodCall("app.clavo.Clavo", "/app/clavo/Clavo",
                                                             "app.clavo.Clavo", "Status");
        const auto answer = QDBusConnection::sessionBus().call(question);
        const auto status = json::parse(answer.arguments().value(0).toString().toStdString(),
                                        nullptr, /*allow_exceptions=*/false);
        return status.is_object() ? status["input"]["secure"].get<std::string>() : "no status";
    }
    /// True once the reason is this one and stays so for some looks.
    static bool settles(const std::string& wanted)
    {
        int looks = 0;
        return EventLoop::until([&] {
            looks = reason() == wanted ? looks + 1 : 0;
            return looks == 20;
        });
    }

    static auto strokes(RunningProgram& program)
    {
        return std::ranges::count(program.logLines(), "clavo: touche appuyée, son: true");
    }
    static auto notices(RunningProgram& program)
    {
        return std::ranges::count(program.logLines(),
                                  "clavo: saisie sécurisée active : sons coupés");
    }
    static bool hears(RunningProgram& program, std::ptrdiff_t count)
    {
        return EventLoop::until([&] { return strokes(program) == count; });
    }

    void type(int count)
    {
        for (int key = 0; key < count; ++key)
            hands.strike(keyA);
    }
};

class LockedSession : public SecretFixture
{
protected:
    /// As the desktop's screen saver says it.
    static void lock(bool isLocked)
    {
        auto signal = QDBusMessage::createSignal("/org/freedesktop/ScreenSaver",
                                                 "org.freedesktop.ScreenSaver", "ActiveChanged");
        QDBusConnection::sessionBus().send(signal << isLocked);
    }
};

TEST_F(LockedSession, IsNeitherHeardNorCounted)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    type(1);
    ASSERT_TRUE(hears(program, 1));

    lock(true);
    ASSERT_TRUE(settles("lockedSession"));
    type(1);
    ASSERT_TRUE(EventLoop::until([&] { return notices(program) == 1; }));

    lock(false);
    ASSERT_TRUE(settles("none"));
    type(1);
    EXPECT_TRUE(hears(program, 2));
    EXPECT_TRUE(becomes(statsFile(), "total", 2));
}

class Secret : public SecretFixture, public testing::WithParamInterface<Form>
{
protected:
    ~Secret() override
    {
        m_form.terminate();
        if (!m_form.waitForFinished(1000))
            m_form.kill();
        m_form.waitForFinished();
    }

    /// Opens the form and gives it the keys.
    [[nodiscard]] bool openForm()
    {
        // Qt does not start it, as desktops do.
        QDBusConnection::sessionBus().interface()->startService("org.a11y.Bus");
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        m_form.setProcessEnvironment(environment);
        m_form.setProcessChannelMode(QProcess::ForwardedChannels);
        m_form.start(GetParam().program,
                     GetParam().arguments + QStringList(QString::fromStdString(lengthFile())));
        return EventLoop::until(
            [this] { return windows.activate(static_cast<std::uint32_t>(m_form.processId())); });
    }

    /// How long the password is; empty as long as there is none.
    [[nodiscard]] std::string length() const
    {
        std::ifstream file(lengthFile());
        return {std::istreambuf_iterator(file), {}};
    }

    WindowManager windows;

private:
    [[nodiscard]] std::string lengthFile() const { return user.path() / "length"; }

    QProcess m_form;
};

/// Whether nothing was heard in this many last frames.
bool isSilent(const Recording& recording, std::size_t frames)
{
    const auto isZero = [](float sample) { return sample == 0; };
    return recording.left.size() >= frames &&
           std::ranges::all_of(std::span(recording.left).last(frames), isZero) &&
           std::ranges::all_of(std::span(recording.right).last(frames), isZero);
}

TEST_P(Secret, IsNeitherHeardNorCountedAndWhatComesBeforeAndAfterItIs)
{
    constexpr std::size_t second = 44100;
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    ASSERT_TRUE(openForm());
    ASSERT_TRUE(settles("none"));
    type(3);
    ASSERT_TRUE(hears(program, 3));

    hands.strike(GetParam().next);
    ASSERT_TRUE(hears(program, 4)) << "the key that leads to the password is none of it";
    ASSERT_TRUE(settles(GetParam().reason));
    SinkRecorder recorder(desktopSink);
    ASSERT_TRUE(EventLoop::until([&] { return isSilent(recorder.recording(), second / 4); }));
    const auto before = recorder.frames();
    type(5);
    const auto after = recorder.frames();
    ASSERT_TRUE(EventLoop::until([&] { return recorder.frames() > after + second; }));
    EXPECT_TRUE(isSilent(recorder.recording(), recorder.frames() - before));
    hands.strike(GetParam().next);
    EXPECT_TRUE(EventLoop::until([this] { return length() == "5"; })) << length();

    ASSERT_TRUE(settles("none"));
    EXPECT_EQ(strokes(program), 4);
    EXPECT_EQ(notices(program), 1);
    type(2);
    EXPECT_TRUE(hears(program, 6));
    EXPECT_TRUE(EventLoop::until([&] { return !isSilent(recorder.recording(), second / 4); }));
    EXPECT_TRUE(becomes(statsFile(), "total", 6));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Secret,
    testing::Values(Form{.name = "Gtk",
                         .program = "/usr/bin/python3",
                         .arguments = {CLAVO_TEST_FOLDER "/gtk_password_window.py"},
                         .reason = "passwordField"},
                    Form{.name = "Qt",
                         .program = CLAVO_QT_PASSWORD_WINDOW,
                         .arguments = {},
                         .reason = "passwordField"},
                    Form{.name = "Terminal",
                         .program = "xterm",
                         .arguments = {"-e", CLAVO_TEST_FOLDER "/terminal_password"},
                         .next = keyEnter,
                         .reason = "silentTerminal"}),
    [](const auto& test) { return test.param.name; });

} // namespace
} // namespace clavo
