// SPDX-License-Identifier: MIT
#include "ui/LocaleText.h"

#include <QStringView>

namespace clavo
{
namespace
{

QString numberText(qint64 number, bool isGrouped)
{
    QLocale locale;
    auto options = locale.numberOptions();
    options.setFlag(QLocale::OmitGroupSeparator, !isGrouped);
    locale.setNumberOptions(options);
    return locale.toString(number);
}

/// The end of the run of equal letters that begins at `start`.
qsizetype endOfRun(QStringView format, qsizetype start)
{
    auto end = start;
    while (end < format.size() && format[end] == format[start])
        ++end;
    return end;
}

/// The end of the quoted text that begins at `start`.
qsizetype endOfQuote(QStringView format, qsizetype start)
{
    const auto closing = format.indexOf(u'\'', start + 1);
    return closing < 0 ? format.size() : closing + 1;
}

/// Part of the day or month before it: a full stop, or a unit as in "15日".
bool isSuffix(QChar letter)
{
    return letter == u'.' || letter.script() == QChar::Script_Han ||
           letter.script() == QChar::Script_Hangul;
}

/// The part of a locale's long date format between the day and the month, both included.
/// QLocale has no shorter format that names the month.
QString dayAndMonth(QStringView format)
{
    qsizetype begin = -1;
    qsizetype end = -1;
    for (qsizetype i = 0; i < format.size();) {
        if (format[i] == u'\'') {
            i = endOfQuote(format, i);
            continue;
        }
        const auto next = endOfRun(format, i);
        const bool isDay = format[i] == u'd' && next - i <= 2; // Three or more mean the weekday.
        if (isDay || format[i] == u'M') {
            begin = begin < 0 ? i : begin;
            end = next;
        }
        i = next;
    }
    while (end >= 0 && end < format.size() && isSuffix(format[end]))
        ++end;
    return begin < 0 ? QString() : format.sliced(begin, end - begin).toString();
}

} // namespace

QString groupedNumber(qint64 number)
{
    return numberText(number, true);
}

QString plainNumber(qint64 number)
{
    return numberText(number, false);
}

QString dayLabel(QDate day, const QLocale& locale)
{
    auto format = dayAndMonth(locale.dateFormat(QLocale::LongFormat));
    format.replace("MMMM", "MMM");
    return locale.toString(day, format);
}

} // namespace clavo
