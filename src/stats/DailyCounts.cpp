// SPDX-License-Identifier: MIT
#include "stats/DailyCounts.h"

#include <algorithm>

namespace clavo
{

DailyCounts::DailyCounts(const std::map<std::string, std::int64_t>& counts)
    : m_past(std::make_shared<const Entries>(counts.begin(), counts.end()))
{
}

void DailyCounts::increment(const std::string& day)
{
    if (!m_running || m_running->first != day) {
        if (m_running)
            m_past = std::make_shared<const Entries>(entries());
        m_running = {day, count(day)};
    }
    ++m_running->second;
}

std::int64_t DailyCounts::count(std::string_view day) const
{
    if (m_running && m_running->first == day)
        return m_running->second;
    const auto found = std::ranges::lower_bound(*m_past, day, {}, &Entry::first);
    return found != m_past->end() && found->first == day ? found->second : 0;
}

std::vector<DailyCounts::Entry> DailyCounts::entries() const
{
    Entries all;
    all.reserve(m_past->size() + 1);
    all = *m_past;
    if (!m_running)
        return all;
    const auto place = std::ranges::lower_bound(all, m_running->first, {}, &Entry::first);
    if (place != all.end() && place->first == m_running->first)
        place->second = m_running->second;
    else
        all.insert(place, *m_running);
    return all;
}

} // namespace clavo
