// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// How whole numbers are written in the user's locale.
namespace clavo::WholeNumber
{

/// With the locale's digit grouping: "1,234,567".
[[nodiscard]] QString grouped(qint64 number);
/// Digits alone: "1234567".
[[nodiscard]] QString plain(qint64 number);

} // namespace clavo::WholeNumber
