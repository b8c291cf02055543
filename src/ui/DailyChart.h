// SPDX-License-Identifier: MIT
#pragma once

#include "ui/TypingFigures.h"

#include <QAbstractListModel>
#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <cstdint>

namespace clavo
{

/// The values at which a chart draws its lines: 0, one step, two steps and so on up to the top.
struct ChartScale {
    std::int64_t step = 1; // 1, 2 or 5 times a power of ten.
    std::int64_t steps = 1;

    [[nodiscard]] std::int64_t top() const { return step * steps; }
    bool operator==(const ChartScale&) const = default;
};

/// The scale of at most four steps with the lowest top that is not below the greatest value.
[[nodiscard]] ChartScale chartScale(std::int64_t greatest);

/// The last days as the bars of a chart, oldest first, and the lines behind them. Every day has a
/// bar, even a day without keys. Thread: main.
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
        fractionRole = Qt::UserRole, // The height of the bar: 0 to 1, which is the top line.
        dateRole,                    // "Nov 15"
        markedRole,                  // Every second day, the first included, has a mark below.
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
