// SPDX-License-Identifier: MIT
#include "app/AppLanguage.h"
#include "app/AppState.h"
#include "app/CommandLine.h"
#include "app/Instance.h"
#include "log/Log.h"
#include "loop/QtTimer.h"
#include "platform/Platform.h"
#include "presentation/Demonstration.h"
#include "presentation/LiveScene.h"
#include "presentation/Screenshots.h"
#include "program/ClavoApp.h"
#include "ui/controls/Appearance.h"

#include <QApplication>
#include <QIcon>
#include <QLoggingCategory>
#include <QQuickWindow>
#include <QSessionManager>
#include <QString>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <variant>

namespace clavo
{
namespace
{

void translate(const DefaultsStore& defaults)
{
    const auto system = systemLanguages();
    installTranslation(interfaceLanguage(preferredLanguages(defaults, system)));
}

/// The state of an application that is shown and not run, in the user's language. Changes nothing
/// of the user's.
struct Demonstration {
    Platform platform = demonstrationPlatform();
    AppState state{platform, AppState::Surroundings::real(platform.executable),
                   demonstrationStats()};
    LanguageSetting language{*platform.defaults};

private:
    static Platform demonstrationPlatform()
    {
        log::setSink([](log::Level, std::string_view) {});
        auto platform = makeDemonstrationPlatform();
        setDemonstrationSettings(*platform.defaults);
        translate(*platform.defaults);
        return platform;
    }
};

/// The icon in the sizes of title bars, task bars and switchers. Its files are read when a window
/// is created.
QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128})
        icon.addFile(QStringLiteral("%1/../share/icons/hicolor/%2x%2/apps/app.clavo.Clavo.png")
                         .arg(QCoreApplication::applicationDirPath(), QString::number(size)),
                     QSize(size, size));
    return icon;
}

/// Runs the command that the command line names and returns the process's exit status.
class Run
{
public:
    Run(int& argumentCount, char** arguments) : m_count(argumentCount), m_arguments(arguments) {}

    int operator()(const command::CheckInputAccess& /*command*/) const
    {
        return makeInputAccess()->isGranted() ? EXIT_SUCCESS : EXIT_FAILURE;
    }

    int operator()(const command::Misuse& misuse) const
    {
        std::cerr << misuse.message;
        return misuseStatus;
    }

    int operator()(const command::ShowHelp& /*command*/) const
    {
        std::cout << helpText();
        return EXIT_SUCCESS;
    }

    int operator()(const command::ShowVersion& /*command*/) const
    {
        std::cout << versionText();
        return EXIT_SUCCESS;
    }

    int operator()(const command::Toggle& /*command*/)
    {
        const QCoreApplication application(m_count, m_arguments);
        return toggleRunning(*makeInstance(), std::cerr);
    }

    int operator()(const command::ShowStatus& status)
    {
        const QCoreApplication application(m_count, m_arguments);
        const auto format = status.asJson ? StatusFormat::json : StatusFormat::text;
        return printStatus(*makeInstance(), format, std::cout, std::cerr);
    }

    int operator()(const command::TakeScreenshots& wanted)
    {
        // Pictures do not need the parts of a session whose absence Qt reports.
        QLoggingCategory::setFilterRules("default.warning=false");
        Screenshots::prepare();
        const QGuiApplication application(m_count, m_arguments);
        Screenshots::applyStyle();
        Demonstration shown;
        Screenshots::renderAll(wanted.folder, shown.state, shown.language, std::cerr);
        return EXIT_SUCCESS;
    }

    int operator()(const command::ShowScene& wanted)
    {
        const auto scene = LiveScene::named(wanted.name);
        if (!scene)
            return (*this)(misuse("unknown scene", wanted.name));
        prepareForWindows();
        const QApplication application(m_count, m_arguments);
        prepareApplication();
        Demonstration shown;
        Appearance::shared().follow(*shown.platform.appearance);
        quitOnTermination();
        LiveScene live(shown.state, shown.language, std::cout);
        live.show(*scene);
        return QApplication::exec();
    }

    int operator()(const command::Replace& wanted)
    {
        return start(replaceRunning, wanted.inBackground);
    }

    int operator()(const command::Start& wanted)
    {
        return start(wanted.inBackground ? startUnlessRunning : startOrOpenPanel,
                     wanted.inBackground);
    }

private:
    /// Sets the names that the desktop knows the program by, and prepares the drawing of its
    /// windows.
    static void prepareApplication()
    {
        QApplication::setApplicationName("Clavo");
        QApplication::setApplicationVersion(QString::fromUtf8(version()));
        QApplication::setDesktopFileName("app.clavo.Clavo");
        QApplication::setWindowIcon(applicationIcon());
        // A graphics driver would stay in memory after the windows are closed.
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }

    /// Becomes the application, unless another process is and stays it.
    int start(std::optional<int> (*become)(Instance& instance, std::ostream& errors),
              bool inBackground)
    {
        prepareForWindows();
        const QApplication application(m_count, m_arguments);
        prepareApplication();
        QApplication::setQuitOnLastWindowClosed(false);
        // Only the login item starts the program at login.
        QObject::connect(&application, &QGuiApplication::saveStateRequest,
                         [](QSessionManager& session) {
                             session.setRestartHint(QSessionManager::RestartNever);
                         });
        sendLogToSystem();
        quitOnTermination();

        auto instance = makeInstance();
        if (const auto status = become(*instance, std::cerr))
            return *status;
        auto& platform = Platform::shared();
        platform.instance = std::move(instance);
        auto& state = AppState::shared();
        translate(*platform.defaults);
        ClavoApp app(state, platform, makeQtTimer());
        const bool canShowWindows = QGuiApplication::platformName() != "offscreen";
        if (!inBackground && canShowWindows)
            app.greet();
        return QApplication::exec();
    }

    int& m_count;
    char** m_arguments;
};

} // namespace
} // namespace clavo

int main(int argc, char* argv[])
try {
    if constexpr (!CLAVO_CORE_DUMPS)
        clavo::preventCoreDumps();
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    return std::visit(clavo::Run(argc, argv), clavo::parseCommandLine(arguments.subspan(1)));
} catch (const std::exception& exception) {
    std::cerr << "clavo: " << exception.what() << '\n';
    return EXIT_FAILURE;
}
