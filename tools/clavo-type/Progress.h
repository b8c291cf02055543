// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <ostream>

namespace clavo
{

/// Says after each tenth of a long work how far it has come; a short one passes in silence.
class Progress
{
public:
    /// Where its words go: lines one after the other, or one that is written over.
    enum class Style { Lines, Terminal };

    static constexpr std::size_t longWork = 4000; // Steps.

    Progress(std::size_t steps, std::ostream& out, Style style);

    /// This many steps are done, which never become fewer.
    void reached(std::size_t steps);

private:
    std::size_t m_steps;
    std::ostream& m_out;
    Style m_style;
    std::size_t m_toldTenths = 0;
};

} // namespace clavo
