// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

namespace clavo
{

/// A whole number with the digit grouping of the user's locale: "1,234,567".
[[nodiscard]] QString groupedNumber(qint64 number);
/// A whole number without grouping, in the digits of the user's locale: "1234567".
[[nodiscard]] QString plainNumber(qint64 number);

/// The day of the month and the month's short name, in the locale's order and punctuation: "Nov
/// 15", "15 nov.", "15. Nov.".
[[nodiscard]] QString dayLabel(QDate day, const QLocale& locale);

} // namespace clavo
