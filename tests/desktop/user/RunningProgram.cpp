// SPDX-License-Identifier: MIT
#include "desktop/user/RunningProgram.h"

#include "eventloop/EventLoop.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace clavo
{

RunningProgram::RunningProgram(const std::filesystem::path& userFolder,
                               const QStringList& arguments)
{
    m_process.setProcessEnvironment(environment(userFolder));
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    QObject::connect(&m_process, &QProcess::readyRead, &m_process,
                     [this] { m_log += m_process.readAll(); });
    m_process.start(executable(), arguments);
}

RunningProgram::~RunningProgram()
{
    QObject::disconnect(&m_process, nullptr, nullptr, nullptr);
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished())
        m_process.kill();
    m_process.waitForFinished();
}

QProcessEnvironment RunningProgram::environment(const std::filesystem::path& userFolder)
{
    const auto below = [&](const char* name) {
        return QString::fromStdString((userFolder / name).string());
    };
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", below("home"));
    environment.insert("XDG_CONFIG_HOME", below("config"));
    environment.insert("XDG_DATA_HOME", below("data"));
    environment.insert("XDG_CACHE_HOME", below("cache"));
    environment.insert("XDG_STATE_HOME", below("state"));
    environment.insert("CLAVO_LOG", "stderr");
    environment.insert("CLAVO_LOG_LEVEL", "debug");
    return environment;
}

QString RunningProgram::executable()
{
    return CLAVO_PROGRAM;
}

bool RunningProgram::listens()
{
    return says("clavo: autorisation : true, écoute : true");
}

bool RunningProgram::plays()
{
    return says("clavo: sortie audio : ");
}

bool RunningProgram::says(std::string_view line)
{
    return EventLoop::until([&] {
        return std::ranges::any_of(logLines(),
                                   [&](const auto& written) { return written.starts_with(line); });
    });
}

bool RunningProgram::endsWith(int status)
{
    return EventLoop::until([this] { return m_process.state() == QProcess::NotRunning; }) &&
           m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == status;
}

int RunningProgram::quit()
{
    m_process.terminate();
    m_process.waitForFinished();
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

void RunningProgram::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

std::vector<std::string> RunningProgram::logLines()
{
    std::vector<std::string> lines;
    std::istringstream text(m_log.toStdString());
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

} // namespace clavo
