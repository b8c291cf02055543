// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

namespace clavo
{

/// The day of the month and the month's short name, in the locale's order and punctuation: "Nov
/// 15", "15 nov.", "15. Nov.".
[[nodiscard]] QString dayLabel(QDate day, const QLocale& locale);

} // namespace clavo
