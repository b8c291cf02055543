// SPDX-License-Identifier: MIT
#include "desktop/x11/PrivateServer.h"

#include <csignal>
#include <utility>

#include <sys/prctl.h>

namespace clavo
{

PrivateServer::PrivateServer(QStringList arguments) : m_arguments(std::move(arguments))
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // A crashing test leaves no server behind.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    start({});
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

void PrivateServer::startAgain()
{
    start({QString::fromStdString(m_display)});
}

void PrivateServer::start(const QStringList& number)
{
    // The server writes its number to the standard output once it is ready for clients.
    m_process.start("Xvfb", number +
                                QStringList{"-displayfd", "1", "-nolisten", "tcp", "-noreset"} +
                                m_arguments);
    if (m_process.waitForReadyRead())
        m_display = ":" + m_process.readLine().trimmed().toStdString();
}

} // namespace clavo
