// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QGuiApplication>
#include <QObject>
#include <QPalette>
#include <QtQml/qqmlregistration.h>

namespace clavo
{

/// The desktop's look as far as a palette tells it, for tests to change.
class FakeDesktop : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    Q_INVOKABLE void look(bool dark, const QColor& accent)
    {
        QPalette palette(dark ? QColor(0x20, 0x20, 0x20) : QColor(0xf0, 0xf0, 0xf0));
        palette.setColor(QPalette::Highlight, accent);
        QGuiApplication::setPalette(palette);
    }
};

} // namespace clavo
