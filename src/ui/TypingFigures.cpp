// SPDX-License-Identifier: MIT
#include "ui/TypingFigures.h"

#include "ui/WholeNumber.h"

#include <algorithm>
#include <utility>

namespace clavo
{

TypingFigures::TypingFigures(QObject* parent)
    : TypingFigures(StatsSurroundings::runOnMainThread, parent)
{
}

TypingFigures::TypingFigures(RunLater runLater, QObject* parent)
    : QObject(parent), m_runLater(std::move(runLater))
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
    return WholeNumber::plain(StatsStore::qualifyingCount);
}

void TypingFigures::readSoon()
{
    if (std::exchange(m_readsSoon, true))
        return;
    m_runLater(delay, [figures = QPointer(this)] {
        if (figures)
            figures->read();
    });
}

void TypingFigures::read()
{
    m_readsSoon = false;
    Figures figures;
    if (m_stats)
        figures = {
            .today = WholeNumber::grouped(m_stats->today()),
            .streak = WholeNumber::plain(m_stats->streak()),
            .bestWPM = WholeNumber::plain(std::max(m_stats->bestWPM(), m_stats->currentWPM())),
            .storedBestWPM = WholeNumber::plain(m_stats->bestWPM()),
            .total = WholeNumber::grouped(m_stats->total()),
            .days = m_stats->lastDays(),
        };
    if (std::exchange(m_figures, figures) != figures)
        emit changed();
}

} // namespace clavo
