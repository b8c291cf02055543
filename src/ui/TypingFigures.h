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

/// The figures of the statistics as text in the user's locale. They are updated shortly after a
/// change, once for many keys, because work done while a key is counted would delay its sound.
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
    /// Words per minute: the best ever or the current speed, whichever is larger.
    Q_PROPERTY(QString bestWPM READ bestWPM NOTIFY changed)
    /// Words per minute: the best ever.
    Q_PROPERTY(QString storedBestWPM READ storedBestWPM NOTIFY changed)
    /// Keys of all days: "1,234,567".
    Q_PROPERTY(QString total READ total NOTIFY changed)
    /// The number of keys from which a day counts towards the streak.
    Q_PROPERTY(QString streakThreshold READ streakThreshold CONSTANT)

public:
    /// From a change of the statistics to the update, which includes later changes.
    static constexpr std::chrono::milliseconds delay{80};

    explicit TypingFigures(QObject* parent = nullptr);
    explicit TypingFigures(std::unique_ptr<Timer> timer, QObject* parent = nullptr);

    void setStats(StatsStore* stats);
    /// Updates the figures at once. For changes that no key has made.
    Q_INVOKABLE void read();

    [[nodiscard]] StatsStore* stats() const { return m_stats; }
    [[nodiscard]] const QString& today() const { return m_figures.today; }
    [[nodiscard]] const QString& streak() const { return m_figures.streak; }
    [[nodiscard]] const QString& bestWPM() const { return m_figures.bestWPM; }
    [[nodiscard]] const QString& storedBestWPM() const { return m_figures.storedBestWPM; }
    [[nodiscard]] const QString& total() const { return m_figures.total; }
    [[nodiscard]] static QString streakThreshold();
    /// The last days, oldest first; empty without statistics.
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
    std::unique_ptr<Timer> m_timer; // Runs from a change to the update.
};

} // namespace clavo
