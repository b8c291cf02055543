// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <ostream>

namespace clavo
{

/// Prints each completed tenth of a long task; a short task prints nothing.
class Progress
{
public:
    /// A new line each time, or one line that is overwritten.
    enum class Style { lines, terminal };

    static constexpr std::size_t longTask = 4000; // Steps.

    Progress(std::size_t steps, std::ostream& out, Style style);

    /// Reports how many steps are done; the number never falls.
    void reached(std::size_t steps);

private:
    std::size_t m_steps;
    std::ostream& m_out;
    Style m_style;
    std::size_t m_printedTenths = 0;
};

} // namespace clavo
