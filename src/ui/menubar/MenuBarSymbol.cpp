// SPDX-License-Identifier: MIT
#include "ui/menubar/MenuBarSymbol.h"

#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QStandardPaths>
#include <QString>
#include <QSvgRenderer>

#include <algorithm>
#include <utility>

namespace clavo
{
namespace
{

constexpr double grid = 16;           // The side of the drawings in their own units.
constexpr QRectF plate(0, 2, 16, 12); // One unit larger than the keyboard on every side.
constexpr double plateRadius = 3;
constexpr float plateOpacity = 0.6F;

QImage blank(int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

class SymbolEngine final : public QIconEngine
{
public:
    SymbolEngine(QString name, const QColor& color) : m_name(std::move(name)), m_color(color) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode /*mode*/,
               QIcon::State /*state*/) override
    {
        const double ratio = painter->device()->devicePixelRatioF();
        painter->drawImage(place, drawn(qRound(place.width() * ratio)));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return QPixmap::fromImage(drawn(std::min(size.width(), size.height())));
    }

    /// The largest square that fits.
    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        const int side = std::min(size.width(), size.height());
        return {side, side};
    }

    /// The usual sizes of trays and their doubles.
    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return {{16, 16}, {22, 22}, {24, 24}, {32, 32}, {44, 44}, {48, 48}};
    }

    QString iconName() override
    {
        const auto file = QStringLiteral("icons/hicolor/symbolic/apps/%1.svg").arg(m_name);
        const auto found = QStandardPaths::locate(QStandardPaths::GenericDataLocation, file);
        return found.isEmpty() ? QString() : m_name;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new SymbolEngine(*this); }

private:
    [[nodiscard]] QImage drawn(int side) const
    {
        QImage symbol = blank(side);
        {
            QPainter painter(&symbol);
            QSvgRenderer(QStringLiteral(":/clavo/menubar/%1.svg").arg(m_name)).render(&painter);
            painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
            painter.fillRect(symbol.rect(), m_color);
        }
        QImage image = blank(side);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(side / grid, side / grid);
        auto plateColor = contrasting(m_color);
        plateColor.setAlphaF(plateOpacity);
        painter.setPen(Qt::NoPen);
        painter.setBrush(plateColor);
        painter.drawRoundedRect(plate, plateRadius, plateRadius);
        painter.resetTransform();
        // The plate must not show through a translucent symbol.
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.drawImage(0, 0, symbol);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.drawImage(0, 0, symbol);
        return image;
    }

    QString m_name;
    QColor m_color;
};

} // namespace

QColor contrasting(const QColor& color)
{
    return color.lightnessF() < 0.5F ? Qt::white : Qt::black;
}

QIcon menuBarSymbol(bool enabled, const QColor& color)
{
    const auto* const name = enabled ? "app.clavo.Clavo-symbolic" : "app.clavo.Clavo-off-symbolic";
    return QIcon(new SymbolEngine(QString::fromLatin1(name), color));
}

} // namespace clavo
