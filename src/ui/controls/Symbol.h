// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QSvgRenderer>
#include <QtQml/qqmlregistration.h>

namespace clavo
{

/// One of the program's own symbols in one colour, drawn anew for every size and scale. An unknown
/// name draws nothing.
class Symbol : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)
    /// The side of the square, in device-independent pixels.
    Q_PROPERTY(double size READ size WRITE setSize NOTIFY sizeChanged)
    Q_PROPERTY(bool valid READ isValid NOTIFY nameChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    void setName(const QString& name);
    void setSize(double size);

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] double size() const { return implicitWidth(); }
    /// A symbol with this name exists.
    [[nodiscard]] bool isValid() const { return m_picture.isValid(); }

    void paint(QPainter* painter) override;

signals:
    void nameChanged();
    void colorChanged();
    void sizeChanged();

private:
    QString m_name;
    QColor m_color = Qt::black;
    QSvgRenderer m_picture;
};

} // namespace clavo
