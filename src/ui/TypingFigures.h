// SPDX-License-Identifier: MIT
#pragma once

#include "stats/StatsStore.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <chrono>

namespace clavo
{

/// The statistics' figures as they are shown, in the user's locale. They follow the statistics a
/// moment later and many keys at once, as whatever ran while a key is counted would delay its
/// sound. Thread: main.
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

public:
    using RunLater = StatsSurroundings::RunLater;

    /// From a change of the statistics until it is shown, together with those in between.
    static constexpr std::chrono::milliseconds delay{80};

    explicit TypingFigures(QObject* parent = nullptr);
    explicit TypingFigures(RunLater runLater, QObject* parent = nullptr);

    void setStats(StatsStore* stats);

    [[nodiscard]] StatsStore* stats() const { return m_stats; }
    [[nodiscard]] const QString& today() const { return m_figures.today; }
    [[nodiscard]] const QString& streak() const { return m_figures.streak; }
    [[nodiscard]] const QString& bestWPM() const { return m_figures.bestWPM; }

signals:
    void statsChanged();
    void changed();

private:
    struct Figures {
        QString today;
        QString streak;
        QString bestWPM;
        bool operator==(const Figures&) const = default;
    };

    void readSoon();
    void read();

    RunLater m_runLater;
    QPointer<StatsStore> m_stats;
    Figures m_figures;
    bool m_readsSoon = false;
};

} // namespace clavo
