// SPDX-License-Identifier: MIT
#pragma once

#include "stats/StatsStore.h"
#include "ui/ChartScale.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QtQmlIntegration>

namespace clavo
{

/// The statistics' last days as the bars of a chart, oldest first, and the lines behind them. There
/// is a bar for every day, also for one without keys. Thread: main.
class DailyChart : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(clavo::StatsStore* stats READ stats WRITE setStats NOTIFY statsChanged REQUIRED)
    /// The values of the lines, from 0 to the top, evenly spaced.
    Q_PROPERTY(QStringList lines READ lines NOTIFY linesChanged)

public:
    enum Role {
        FractionRole = Qt::UserRole, // The height of the bar: 0 to 1, the top line.
        DateRole,                    // "Nov 15"
        MarkedRole,                  // Every second day, from the first, has a mark below it.
        KeysRole,                    // "1,234"
    };

    using QAbstractListModel::QAbstractListModel;

    void setStats(StatsStore* stats);

    [[nodiscard]] StatsStore* stats() const { return m_stats; }
    [[nodiscard]] QStringList lines() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void statsChanged();
    void linesChanged();

private:
    void readDays();
    void rescale();

    QPointer<StatsStore> m_stats;
    QList<StatsDay> m_days;
    ChartScale m_scale;
};

} // namespace clavo
