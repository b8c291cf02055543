// SPDX-License-Identifier: MIT
#include "app/AppState.h"
#include "platform/Platform.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string_view>

int main(int argc, char* argv[])
{
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    const auto isAccessCheck = [](std::string_view argument) {
        return argument == "--check-input-access";
    };
    if (std::ranges::any_of(arguments.subspan(1), isAccessCheck))
        return clavo::makeInputAccess()->isGranted() ? EXIT_SUCCESS : EXIT_FAILURE;

    const QCoreApplication application(argc, argv);
    clavo::sendLogToSystem();
    clavo::quitOnTermination();
    clavo::AppState::shared();
    return QCoreApplication::exec();
}
