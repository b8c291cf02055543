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

/// How the desktop looks at the moment: light or dark, and its accent colour. Both are taken from
/// the application's palette and follow it live; a desktop's own settings go before the palette.
/// Thread: main.
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

    /// Prefers what these settings report to the palette, from now on. They may end before it.
    void follow(AppearanceSettings& settings);

    [[nodiscard]] bool isDark() const;
    [[nodiscard]] QColor accent() const;

    /// The colour itself when its contrast to the background is at least `ratio` (1 to 21), else
    /// the nearest lighter or darker one of its hue whose contrast is; when none is, black or
    /// white.
    [[nodiscard]] Q_INVOKABLE static QColor readable(const QColor& color, const QColor& background,
                                                     double ratio);
    /// White when it can be read on the background, else black.
    [[nodiscard]] Q_INVOKABLE static QColor textOn(const QColor& background);
    /// The ratio of two opaque colours' relative luminances, 1 to 21, as WCAG 2 defines it.
    [[nodiscard]] Q_INVOKABLE static double contrast(const QColor& one, const QColor& other);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed();

private:
    Appearance(); // Were it public, every engine would make an instance of its own.

    AppearancePreference m_wish;
};

} // namespace clavo
