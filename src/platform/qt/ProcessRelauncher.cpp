// SPDX-License-Identifier: MIT
#include "platform/qt/ProcessRelauncher.h"

#include "app/CommandLine.h"
#include "log/Log.h"

#include <QProcess>
#include <QString>

#include <functional>
#include <utility>

namespace clavo
{
namespace
{

class ProcessRelauncher final : public Relauncher
{
public:
    explicit ProcessRelauncher(std::filesystem::path program) : m_program(std::move(program)) {}

    void openNewInstance(std::function<void()> completed) override
    {
        const auto program = QString::fromStdString(m_program.string());
        const QStringList options{QString::fromUtf8(replaceOption),
                                  QString::fromUtf8(backgroundOption)};
        if (!QProcess::startDetached(program, options))
            log::error("relance impossible");
        completed();
    }

private:
    std::filesystem::path m_program;
};

} // namespace

std::unique_ptr<Relauncher> makeProcessRelauncher(std::filesystem::path program)
{
    return std::make_unique<ProcessRelauncher>(std::move(program));
}

} // namespace clavo
