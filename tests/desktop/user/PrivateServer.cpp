// SPDX-License-Identifier: MIT
#include "desktop/user/PrivateServer.h"

#include <csignal>
#include <utility>

#include <sys/prctl.h>
#include <unistd.h>

namespace clavo
{

PrivateServer::PrivateServer(QStringList arguments) : m_arguments(std::move(arguments))
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // A crashing test leaves no server behind.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    // A number that no other server takes while this one is stopped.
    m_display = ":" + std::to_string(1000 + getpid() % 50000);
    start();
}

PrivateServer::~PrivateServer()
{
    stop();
}

void PrivateServer::stop()
{
    m_process.terminate();
    m_process.waitForFinished();
}

void PrivateServer::start()
{
    // The server writes its number to the standard output once it is ready for clients.
    m_process.start("Xvfb", QStringList{QString::fromStdString(m_display), "-displayfd", "1",
                                        "-nolisten", "tcp", "-noreset"} +
                                m_arguments);
    m_process.waitForReadyRead();
}

} // namespace clavo
