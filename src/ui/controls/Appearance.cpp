// SPDX-License-Identifier: MIT
#include "ui/controls/Appearance.h"

#include <QEvent>
#include <QGuiApplication>
#include <QJSEngine>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace clavo
{
namespace
{

double luminance(const QColor& color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return (0.2126 * linear(color.redF())) + (0.7152 * linear(color.greenF())) +
           (0.0722 * linear(color.blueF()));
}

} // namespace

Appearance& Appearance::shared()
{
    static Appearance appearance;
    return appearance;
}

Appearance* Appearance::create(QQmlEngine* /*engine*/, QJSEngine* /*scriptEngine*/)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

Appearance::Appearance()
{
    QCoreApplication::instance()->installEventFilter(this);
}

void Appearance::follow(AppearanceSettings& settings)
{
    settings.watch([this](const AppearancePreference& look) { prefer(look); });
}

void Appearance::prefer(const AppearancePreference& look)
{
    m_preferred = look;
    emit changed();
}

bool Appearance::isDark() const
{
    const auto palette = QGuiApplication::palette();
    return m_preferred.isDark.value_or(luminance(palette.color(QPalette::Window)) <
                                       luminance(palette.color(QPalette::WindowText)));
}

QColor Appearance::accent() const
{
    if (const auto& color = m_preferred.accent)
        return QColor::fromRgbF(static_cast<float>(color->red), static_cast<float>(color->green),
                                static_cast<float>(color->blue));
    return QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
}

QColor Appearance::readable(const QColor& color, const QColor& background, double ratio)
{
    constexpr int steps = 50;
    const bool wantsLighter = contrast(Qt::white, background) > contrast(Qt::black, background);
    const double end = wantsLighter ? 1 : 0;
    const auto hsl = color.toHsl();
    for (int step = 0; step < steps; ++step) {
        const double fraction = static_cast<double>(step) / steps;
        const double lightness = hsl.lightnessF() + ((end - hsl.lightnessF()) * fraction);
        const auto candidate =
            QColor::fromHslF(hsl.hslHueF(), hsl.hslSaturationF(),
                             static_cast<float>(std::clamp(lightness, 0.0, 1.0)));
        if (contrast(candidate, background) >= ratio)
            return step == 0 ? color : candidate.toRgb();
    }
    return wantsLighter ? Qt::white : Qt::black;
}

QColor Appearance::textOn(const QColor& background)
{
    return contrast(Qt::white, background) >= 3 ? Qt::white : Qt::black;
}

double Appearance::contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

bool Appearance::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange &&
        watched == QCoreApplication::instance())
        emit changed();
    return QObject::eventFilter(watched, event);
}

} // namespace clavo
