// SPDX-License-Identifier: MIT
#pragma once

#include "ui/ChartScale.h"
#include "ui/TypingFigures.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QtQmlIntegration>

namespace clavo
{

/// The last days as the bars of a chart, oldest first, and the lines behind them. There
/// is a bar for every day, also for one without keys. Thread: main.
class DailyChart : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        clavo::TypingFigures* figures READ figures WRITE setFigures NOTIFY figuresChanged REQUIRED)
    /// The values of the lines, from 0 to the top, evenly spaced.
    Q_PROPERTY(QStringList lines READ lines NOTIFY linesChanged)

public:
    enum Role {
        fractionRole = Qt::UserRole, // The height of the bar: 0 to 1, the top line.
        dateRole,                    // "Nov 15"
        markedRole,                  // Every second day, from the first, has a mark below it.
        keysRole,                    // "1,234"
    };

    using QAbstractListModel::QAbstractListModel;

    void setFigures(TypingFigures* figures);

    [[nodiscard]] TypingFigures* figures() const { return m_figures; }
    [[nodiscard]] QStringList lines() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void figuresChanged();
    void linesChanged();

private:
    void reset();
    void readDays();
    void rescale();

    QPointer<TypingFigures> m_figures;
    QList<StatsDay> m_days;
    ChartScale m_scale;
};

} // namespace clavo
