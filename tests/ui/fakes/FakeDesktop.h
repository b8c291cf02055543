// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeAppearanceSettings.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace clavo
{

/// The desktop's look, for tests to change. What its user wishes goes before its palette.
class FakeDesktop : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    FakeDesktop();

    /// Gives the application a palette, and the user no wish.
    Q_INVOKABLE void look(bool dark, const QColor& accent);
    Q_INVOKABLE void wish(bool dark, const QColor& accent);
    /// From here on the controls that exist tell what they are.
    Q_INVOKABLE static void startAssistiveTechnology();

private:
    FakeAppearanceSettings m_settings;
};

} // namespace clavo
