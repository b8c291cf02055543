// SPDX-License-Identifier: MIT
#include "ui/StatsExport.h"

#include "stats/SnapshotFile.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>
#include <QWindow>

namespace clavo
{
namespace
{

/// The user's home folder if there is no documents folder.
QString documentsFolder()
{
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(folder).exists() ? folder : QDir::homePath();
}

} // namespace

StatsExport::StatsExport(const StatsStore& stats) : m_stats(stats) {}

StatsExport::~StatsExport() = default;

void StatsExport::ask(QWindow* window)
{
    if (m_dialog)
        return;
    m_dialog = std::make_unique<QFileDialog>();
    m_dialog->setAcceptMode(QFileDialog::AcceptSave);
    m_dialog->setMimeTypeFilters({"application/json"});
    m_dialog->setDefaultSuffix("json");
    m_dialog->setDirectory(documentsFolder());
    m_dialog->selectFile(QString::fromUtf8(exportFileName));
    m_dialog->winId(); // Creates windowHandle().
    m_dialog->windowHandle()->setTransientParent(window);
    connect(m_dialog.get(), &QFileDialog::fileSelected, this, &StatsExport::write);
    connect(m_dialog.get(), &QDialog::finished, this,
            [this] { m_dialog.release()->deleteLater(); });
    m_dialog->open();
}

void StatsExport::cancel()
{
    m_dialog.reset();
}

void StatsExport::write(const QString& file) const
{
    exportSnapshot(m_stats.data(), file.toStdString());
}

} // namespace clavo
