// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QMetaType>

namespace clavo
{

/// One bar of the chart of the last days, told from the others by its date.
struct StatsDay {
    Q_GADGET
    Q_PROPERTY(QDateTime date MEMBER date CONSTANT)
    Q_PROPERTY(qint64 count MEMBER count CONSTANT)

public:
    QDateTime date;   // The local day's start.
    qint64 count = 0; // Keys.

    bool operator==(const StatsDay&) const = default;
};

} // namespace clavo
