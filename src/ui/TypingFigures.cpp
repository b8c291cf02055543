// SPDX-License-Identifier: MIT
#include "ui/TypingFigures.h"

#include "loop/QtTimer.h"
#include "ui/LocaleText.h"

#include <algorithm>
#include <utility>

namespace clavo
{

TypingFigures::TypingFigures(QObject* parent) : TypingFigures(makeQtTimer(), parent) {}

TypingFigures::TypingFigures(std::unique_ptr<Timer> timer, QObject* parent)
    : QObject(parent), m_timer(std::move(timer))
{
}

void TypingFigures::setStats(StatsStore* stats)
{
    if (m_stats == stats)
        return;
    if (m_stats)
        m_stats->disconnect(this);
    m_stats = stats;
    if (stats) {
        connect(stats, &StatsStore::dataChanged, this, &TypingFigures::readSoon);
        connect(stats, &StatsStore::currentWPMChanged, this, &TypingFigures::readSoon);
    }
    emit statsChanged();
    read();
}

QString TypingFigures::streakThreshold()
{
    return plainNumber(StatsStore::qualifyingCount);
}

void TypingFigures::readSoon()
{
    if (!m_timer->isRunning())
        m_timer->start(delay, [this] { read(); });
}

void TypingFigures::read()
{
    m_timer->stop();
    Figures figures;
    if (m_stats)
        figures = {
            .today = groupedNumber(m_stats->today()),
            .streak = plainNumber(m_stats->streak()),
            .bestWPM = plainNumber(std::max(m_stats->bestWPM(), m_stats->currentWPM())),
            .storedBestWPM = plainNumber(m_stats->bestWPM()),
            .total = groupedNumber(m_stats->total()),
            .days = m_stats->lastDays(),
        };
    if (std::exchange(m_figures, figures) != figures)
        emit changed();
}

} // namespace clavo
