// SPDX-License-Identifier: MIT
#include "ui/DailyChart.h"

#include "ui/LocaleText.h"

#include <QLocale>

#include <algorithm>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::int64_t mostSteps = 4;

/// The number of steps up to the value. value + step - 1 could overflow.
std::int64_t stepsUpTo(std::int64_t value, std::int64_t step)
{
    return value / step + (value % step == 0 ? 0 : 1);
}

} // namespace

ChartScale chartScale(std::int64_t greatest)
{
    // The scale of a larger value may not fit into 64 bits.
    constexpr std::int64_t greatestOfAScale = 1'000'000'000'000'000'000;
    const auto value = std::clamp<std::int64_t>(greatest, 1, greatestOfAScale);
    for (std::int64_t power = 1;; power *= 10) {
        for (const std::int64_t factor : {1, 2, 5}) {
            const auto step = factor * power;
            if (const auto steps = stepsUpTo(value, step); steps <= mostSteps)
                return {.step = step, .steps = steps};
        }
    }
}

void DailyChart::setFigures(TypingFigures* figures)
{
    if (figures == m_figures)
        return;
    if (m_figures)
        m_figures->disconnect(this);
    m_figures = figures;
    if (m_figures)
        connect(m_figures, &TypingFigures::changed, this, &DailyChart::readDays);
    reset();
    emit figuresChanged();
}

QStringList DailyChart::lines() const
{
    QStringList values;
    for (std::int64_t line = 0; line <= m_scale.steps; ++line)
        values.append(groupedNumber(line * m_scale.step));
    return values;
}

int DailyChart::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_days.size());
}

QVariant DailyChart::data(const QModelIndex& index, int role) const
{
    const auto& day = m_days.at(index.row());
    switch (role) {
    case fractionRole:
        return static_cast<double>(day.count) / static_cast<double>(m_scale.top());
    case dateRole:
        return dayLabel(day.date.date(), QLocale());
    case markedRole:
        return index.row() % 2 == 0;
    case keysRole:
        return groupedNumber(day.count);
    default:
        return {};
    }
}

QHash<int, QByteArray> DailyChart::roleNames() const
{
    return {
        {fractionRole, "fraction"}, {dateRole, "date"}, {markedRole, "marked"}, {keysRole, "keys"}};
}

void DailyChart::reset()
{
    beginResetModel();
    m_days = m_figures ? m_figures->days() : QList<StatsDay>();
    endResetModel();
    rescale();
}

/// A key changes one bar; only a new day or a new scale changes them all.
void DailyChart::readDays()
{
    // The number of days changes when the figures get or lose their statistics.
    if (m_figures->days().size() != m_days.size()) {
        reset();
        return;
    }
    const auto before = std::exchange(m_days, m_figures->days());
    for (qsizetype row = 0; row < m_days.size(); ++row) {
        if (m_days[row] != before[row])
            emit dataChanged(index(static_cast<int>(row)), index(static_cast<int>(row)));
    }
    rescale();
}

void DailyChart::rescale()
{
    const auto greatest = std::ranges::max_element(m_days, {}, &StatsDay::count);
    const auto scale = chartScale(greatest == m_days.end() ? 0 : greatest->count);
    if (scale == m_scale)
        return;
    m_scale = scale;
    if (!m_days.isEmpty())
        emit dataChanged(index(0), index(rowCount() - 1), {fractionRole});
    emit linesChanged();
}

} // namespace clavo
