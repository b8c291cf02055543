// SPDX-License-Identifier: MIT
#include "clavo-type/Progress.h"

namespace clavo
{

Progress::Progress(std::size_t steps, std::ostream& out, Style style)
    : m_steps(steps), m_out(out), m_style(style)
{
}

void Progress::reached(std::size_t steps)
{
    if (m_steps < longTask)
        return;
    const auto tenths = steps * 10 / m_steps;
    if (tenths == m_printedTenths)
        return;
    m_printedTenths = tenths;
    const bool isLineOpen = m_style == Style::terminal && tenths < 10;
    m_out << (m_style == Style::terminal ? "\r" : "") << "clavo-type: " << tenths * 10 << " %"
          << (isLineOpen ? "" : "\n") << std::flush;
}

} // namespace clavo
