// SPDX-License-Identifier: MIT
#include "ui/WholeNumber.h"

#include <QLocale>

namespace clavo
{
namespace
{

QString written(qint64 number, bool isGrouped)
{
    QLocale locale;
    auto options = locale.numberOptions();
    options.setFlag(QLocale::OmitGroupSeparator, !isGrouped);
    locale.setNumberOptions(options);
    return locale.toString(number);
}

} // namespace

QString WholeNumber::grouped(qint64 number)
{
    return written(number, true);
}

QString WholeNumber::plain(qint64 number)
{
    return written(number, false);
}

} // namespace clavo
