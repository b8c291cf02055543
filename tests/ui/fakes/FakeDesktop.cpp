// SPDX-License-Identifier: MIT
#include "ui/fakes/FakeDesktop.h"

#include "ui/controls/Appearance.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QPalette>

namespace clavo
{

FakeDesktop::FakeDesktop()
{
    Appearance::shared().follow(m_settings);
}

void FakeDesktop::look(bool dark, const QColor& accent)
{
    QPalette palette(dark ? QColor(0x20, 0x20, 0x20) : QColor(0xf0, 0xf0, 0xf0));
    palette.setColor(QPalette::Highlight, accent);
    QGuiApplication::setPalette(palette);
    m_settings.turnTo({});
}

void FakeDesktop::wish(bool dark, const QColor& accent)
{
    m_settings.turnTo({.isDark = dark,
                       .accent = AppearancePreference::Color{.red = accent.redF(),
                                                             .green = accent.greenF(),
                                                             .blue = accent.blueF()}});
}

void FakeDesktop::startAssistiveTechnology()
{
    QAccessible::setActive(true);
}

} // namespace clavo
