// SPDX-License-Identifier: MIT
#include "app/AppLanguage.h"
#include "app/AppState.h"
#include "app/ClavoApp.h"
#include "app/CommandLine.h"
#include "app/Instance.h"
#include "app/Translation.h"
#include "log/Log.h"
#include "platform/Platform.h"
#include "presentation/Demonstration.h"
#include "presentation/LiveScene.h"
#include "presentation/Screenshots.h"
#include "ui/controls/Appearance.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QQuickWindow>
#include <QSessionManager>

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

/// The state that is shown in place of the user's own, which it does not touch.
std::unique_ptr<AppState> makeDemonstration()
{
    log::setSink([](log::Level, std::string_view) {});
    auto platform = makeDemonstrationPlatform();
    setDemonstrationSettings(*platform.defaults);
    auto surroundings = AppState::Surroundings::real(platform.executable);
    return std::make_unique<AppState>(std::move(platform), std::move(surroundings),
                                      demonstrationStats());
}

/// Does what the command line asks for; the process's exit status.
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
        // What Qt misses in a session, pictures do without.
        QLoggingCategory::setFilterRules("default.warning=false");
        Screenshots::prepare();
        const QGuiApplication application(m_count, m_arguments);
        Screenshots::dress();
        const auto state = makeDemonstration();
        translate(state->defaults());
        LanguageSetting language(state->defaults());
        Screenshots::renderAll(wanted.folder, *state, language, std::cerr);
        return EXIT_SUCCESS;
    }

    int operator()(const command::ShowScene& wanted)
    {
        const auto scene = LiveScene::named(wanted.name);
        if (!scene)
            return (*this)(misuse("unknown scene", wanted.name));
        prepareForWindows();
        const QApplication application(m_count, m_arguments);
        introduce();
        const auto state = makeDemonstration();
        translate(state->defaults());
        LanguageSetting language(state->defaults());
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        Appearance::shared().follow(makeAppearanceSettings());
        quitOnTermination();
        LiveScene live(*state, language, std::cout);
        live.show(*scene);
        return QApplication::exec();
    }

    int operator()(const command::Replace& /*command*/) { return start(replaceRunning); }

    int operator()(const command::Start& /*command*/) { return start(startOrOpenPanel); }

private:
    /// Tells the desktop, and the windows, which program this is.
    static void introduce()
    {
        QApplication::setApplicationName("Clavo");
        QApplication::setApplicationVersion(QString::fromUtf8(version()));
        QApplication::setDesktopFileName("app.clavo.Clavo");
    }

    /// Becomes the application, if this process is to be it.
    int start(std::optional<int> (*become)(Instance& instance, std::ostream& errors))
    {
        prepareForWindows();
        const QApplication application(m_count, m_arguments);
        introduce();
        QApplication::setQuitOnLastWindowClosed(false);
        // The login item starts it, and nobody else.
        QObject::connect(&application, &QGuiApplication::saveStateRequest,
                         [](QSessionManager& session) {
                             session.setRestartHint(QSessionManager::RestartNever);
                         });
        sendLogToSystem();
        quitOnTermination();

        const auto instance = makeInstance();
        if (const auto status = become(*instance, std::cerr))
            return *status;
        auto& state = AppState::shared();
        translate(state.defaults());
        const ClavoApp app(state, *instance);
        return QApplication::exec();
    }

    int& m_count;
    char** m_arguments;
};

} // namespace
} // namespace clavo

int main(int argc, char* argv[])
try {
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    return std::visit(clavo::Run(argc, argv), clavo::parseCommandLine(arguments.subspan(1)));
} catch (const std::exception& exception) {
    std::cerr << "clavo: " << exception.what() << '\n';
    return EXIT_FAILURE;
}
