// SPDX-License-Identifier: MIT
#include "platform/linux/ProcessRelauncher.h"

#include "app/CommandLine.h"
#include "log/Log.h"

#include <QProcess>

#include <utility>

namespace clavo
{

ProcessRelauncher::ProcessRelauncher(std::filesystem::path program) : m_program(std::move(program))
{
}

void ProcessRelauncher::openNewInstance(std::function<void()> completed)
{
    const auto program = QString::fromStdString(m_program.native());
    const auto option = QString::fromUtf8(replaceOption);
    if (!QProcess::startDetached(program, {option}))
        log::error("relance impossible");
    completed();
}

} // namespace clavo
