// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeAppearanceSettings.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace clavo
{

/// The desktop's appearance, for tests to change. The user's preference overrides the palette.
class FakeDesktop : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    FakeDesktop();

    /// Sets the application's palette and removes the user's preference.
    Q_INVOKABLE void look(bool dark, const QColor& accent);
    Q_INVOKABLE void wish(bool dark, const QColor& accent);
    /// From now on existing controls describe themselves to assistive technology.
    Q_INVOKABLE static void startAssistiveTechnology();

private:
    FakeAppearanceSettings m_settings;
};

} // namespace clavo
