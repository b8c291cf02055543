// SPDX-License-Identifier: MIT
#pragma once

#include "stats/StatsStore.h"

#include <QObject>
#include <QString>

#include <memory>

class QFileDialog;
class QWindow;

namespace clavo
{

/// Exports a copy of the statistics to a file that the user chooses, in the desktop's own dialog if
/// it has one. A failure to write is not reported. Thread: main, of a QApplication.
class StatsExport : public QObject
{
    Q_OBJECT

public:
    /// The statistics outlive it.
    explicit StatsExport(const StatsStore& stats);
    ~StatsExport() override;

    /// Opens the dialog in front of the window, unless it is open already. The file gets the
    /// statistics at the time of the user's choice.
    void ask(QWindow* window);
    /// Closes an open dialog.
    void cancel();

private:
    void write(const QString& file) const;

    const StatsStore& m_stats;
    std::unique_ptr<QFileDialog> m_dialog; // Null while closed.
};

} // namespace clavo
