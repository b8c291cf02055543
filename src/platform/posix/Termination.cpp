// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace clavo
{
namespace
{

// A signal handler may do little more than write. The other end wakes the main loop.
std::array<int, 2> wakeUp{-1, -1};

void wakeMainLoop(int)
{
    const char byte = 1;
    [[maybe_unused]] const auto written = write(wakeUp[0], &byte, 1);
}

} // namespace

void quitOnTermination()
{
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, wakeUp.data()) != 0)
        return;
    auto* const notifier = new QSocketNotifier(wakeUp[1], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);

    struct sigaction action = {};
    action.sa_handler = wakeMainLoop;
    action.sa_flags = SA_RESTART;
    for (const auto signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
    // Writing to a server that has died is an error of the connection, not the end of the program.
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace clavo
