// SPDX-License-Identifier: MIT
#include "app/AppLanguage.h"
#include "app/AppState.h"
#include "app/ClavoApp.h"
#include "app/CommandLine.h"
#include "app/Instance.h"
#include "app/Translation.h"
#include "platform/Platform.h"

#include <QApplication>
#include <QSessionManager>

#include <cstdlib>
#include <iostream>
#include <optional>
#include <span>
#include <variant>

namespace clavo
{
namespace
{

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

    int operator()(const command::Replace& /*command*/) { return start(replaceRunning); }

    int operator()(const command::Start& /*command*/) { return start(startOrOpenPanel); }

private:
    /// Becomes the application, if this process is to be it.
    int start(std::optional<int> (*become)(Instance& instance, std::ostream& errors))
    {
        prepareForWindows();
        const QApplication application(m_count, m_arguments);
        QApplication::setApplicationName("Clavo");
        QApplication::setApplicationVersion(QString::fromUtf8(version()));
        QApplication::setDesktopFileName("app.clavo.Clavo");
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
        const auto system = systemLanguages();
        installTranslation(interfaceLanguage(preferredLanguages(state.defaults(), system)));
        const ClavoApp app(state, *instance);
        return QApplication::exec();
    }

    int& m_count;
    char** m_arguments;
};

} // namespace
} // namespace clavo

int main(int argc, char* argv[])
{
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    return std::visit(clavo::Run(argc, argv), clavo::parseCommandLine(arguments.subspan(1)));
}
