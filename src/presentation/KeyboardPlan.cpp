// SPDX-License-Identifier: MIT
#include "presentation/KeyboardPlan.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace clavo
{
namespace
{

struct Row {
    std::vector<double> before; // The widths of the keys left of those with a legend.
    std::string_view legends;
    std::vector<double> behind; // The widths of the keys on the right.
};

const std::array<Row, 5>& plan()
{
    static const std::array<Row, 5> rows{{
        {{1}, "1234567890", {1, 1, 2}},
        {{1.5}, "QWERTYUIOP", {1, 1, 1.5}},
        {{1.75}, "ASDFGHJKL", {1, 1, 2.25}},
        {{2.25}, "ZXCVBNM", {1, 1, 1, 2.75}},
        {{1.25, 1.25, 1.25}, "", {6.25, 1.25, 1.25, 1.25, 1.25}},
    }};
    return rows;
}

} // namespace

QList<PlannedKey> KeyboardPlan::keys()
{
    QList<PlannedKey> keys;
    int row = 0;
    for (const auto& [before, legends, behind] : plan()) {
        double column = 0;
        const auto add = [&](double width, const QString& legend) {
            keys.append({.column = column, .row = row, .width = width, .legend = legend});
            column += width;
        };
        for (const auto width : before)
            add(width, {});
        for (const auto legend : legends)
            add(1, QString(QLatin1Char(legend)));
        for (const auto width : behind)
            add(width, {});
        ++row;
    }
    return keys;
}

PlannedKey KeyboardPlan::key(const QString& legend)
{
    const auto all = keys();
    const auto found = std::ranges::find(all, legend, &PlannedKey::legend);
    return found == all.end() ? PlannedKey{} : *found;
}

} // namespace clavo
