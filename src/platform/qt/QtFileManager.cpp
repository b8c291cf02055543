// SPDX-License-Identifier: MIT
#include "platform/qt/QtFileManager.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

#include <filesystem>

namespace clavo
{
namespace
{

class QtFileManager final : public FileManager
{
public:
    void show(const std::filesystem::path& folder) override
    {
        QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(folder.string())));
    }
};

} // namespace

std::unique_ptr<FileManager> makeQtFileManager()
{
    return std::make_unique<QtFileManager>();
}

} // namespace clavo
