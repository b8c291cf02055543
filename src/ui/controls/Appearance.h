// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppearanceSettings.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace clavo
{

/// The desktop's current look: light or dark, and the accent colour. The desktop's own settings
/// come first, then the application's palette. Changes of either apply at once. Thread: main.
class Appearance : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)

public:
    /// The one instance of the process, which outlives every QML engine.
    static Appearance& shared();
    static Appearance* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    /// Uses these settings before the palette from now on. The instance may outlive them.
    void follow(AppearanceSettings& settings);
    /// Uses this look before the palette from now on. Its unset members still come from the
    /// palette.
    void prefer(const AppearancePreference& look);

    [[nodiscard]] bool isDark() const;
    [[nodiscard]] QColor accent() const;

    /// The colour itself if its contrast to the background is at least `ratio` (1 to 21). Otherwise
    /// the nearest lightness of the same hue and saturation that has this contrast, or black or
    /// white if none has.
    [[nodiscard]] Q_INVOKABLE static QColor readable(const QColor& color, const QColor& background,
                                                     double ratio);
    /// White if it is readable on the background, otherwise black.
    [[nodiscard]] Q_INVOKABLE static QColor textOn(const QColor& background);
    /// The contrast ratio of two opaque colours, 1 to 21, as WCAG 2 defines it.
    [[nodiscard]] Q_INVOKABLE static double contrast(const QColor& one, const QColor& other);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed();

private:
    Appearance(); // With a public constructor, every QML engine would make its own instance.

    AppearancePreference m_preferred;
};

} // namespace clavo
