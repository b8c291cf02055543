// SPDX-License-Identifier: MIT
#pragma once

#include "stats/StatsStore.h"
#include "time/Timer.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <memory>

namespace clavo
{

/// The statistics' figures as they are shown, in the user's locale. They follow the statistics a
/// moment later, for many keys at once: work done while a key is counted would delay its sound.
/// Thread: main.
class TypingFigures : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(clavo::StatsStore* stats READ stats WRITE setStats NOTIFY statsChanged REQUIRED)
    /// Keys of today: "1,234".
    Q_PROPERTY(QString today READ today NOTIFY changed)
    /// Days.
    Q_PROPERTY(QString streak READ streak NOTIFY changed)
    /// The larger of the best and the current words per minute.
    Q_PROPERTY(QString bestWPM READ bestWPM NOTIFY changed)
    /// The best words per minute alone.
    Q_PROPERTY(QString storedBestWPM READ storedBestWPM NOTIFY changed)
    /// Keys of all days: "1,234,567".
    Q_PROPERTY(QString total READ total NOTIFY changed)
    /// The number of keys with which a day counts for the streak.
    Q_PROPERTY(QString streakThreshold READ streakThreshold CONSTANT)

public:
    /// From a change of the statistics until it is shown, together with those in between.
    static constexpr std::chrono::milliseconds delay{80};

    explicit TypingFigures(QObject* parent = nullptr);
    explicit TypingFigures(std::unique_ptr<Timer> timer, QObject* parent = nullptr);

    void setStats(StatsStore* stats);
    /// Shows the statistics as they are at once, after a change that is no key.
    Q_INVOKABLE void read();

    [[nodiscard]] StatsStore* stats() const { return m_stats; }
    [[nodiscard]] const QString& today() const { return m_figures.today; }
    [[nodiscard]] const QString& streak() const { return m_figures.streak; }
    [[nodiscard]] const QString& bestWPM() const { return m_figures.bestWPM; }
    [[nodiscard]] const QString& storedBestWPM() const { return m_figures.storedBestWPM; }
    [[nodiscard]] const QString& total() const { return m_figures.total; }
    [[nodiscard]] static QString streakThreshold();
    /// The last days, oldest first; none without statistics.
    [[nodiscard]] const QList<StatsDay>& days() const { return m_figures.days; }

signals:
    void statsChanged();
    void changed();

private:
    struct Figures {
        QString today;
        QString streak;
        QString bestWPM;
        QString storedBestWPM;
        QString total;
        QList<StatsDay> days;
        bool operator==(const Figures&) const = default;
    };

    void readSoon();

    QPointer<StatsStore> m_stats;
    Figures m_figures;
    std::unique_ptr<Timer> m_timer; // Runs from a change until it is read.
};

} // namespace clavo
