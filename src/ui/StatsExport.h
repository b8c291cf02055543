// SPDX-License-Identifier: MIT
#pragma once

#include "stats/StatsStore.h"

#include <QObject>

#include <memory>

class QFileDialog;
class QWindow;

namespace clavo
{

/// Saves a copy of the statistics where the user wants it, asking with the desktop's own dialog
/// where it has one. What cannot be written is not reported. Thread: main, of a QApplication.
class StatsExport : public QObject
{
    Q_OBJECT

public:
    /// The statistics outlive it.
    explicit StatsExport(const StatsStore& stats);
    ~StatsExport() override;

    /// Asks in front of the window, and writes what the statistics are when the answer comes. Does
    /// nothing more while the question is open.
    void ask(QWindow* window);
    /// Takes an open question back.
    void cancel();

private:
    void write(const QString& file) const;

    const StatsStore& m_stats;
    std::unique_ptr<QFileDialog> m_dialog; // Null while nothing is asked.
};

} // namespace clavo
