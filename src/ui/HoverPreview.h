// SPDX-License-Identifier: MIT
#pragma once

#include "time/Timer.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <memory>

namespace clavo
{

/// The pack under the pointer, and the wait until it is to be heard: a pointer that sweeps across
/// the packs asks for none, one that rests on a pack asks for it once. Thread: main.
class HoverPreview : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString hovered READ hovered NOTIFY hoveredChanged)

public:
    /// How long the pointer rests before the pack is heard.
    static constexpr std::chrono::milliseconds delay{380};

    explicit HoverPreview(QObject* parent = nullptr);
    explicit HoverPreview(std::unique_ptr<Timer> timer, QObject* parent = nullptr);

    /// The pointer is over the pack now, wherever it was before.
    Q_INVOKABLE void enter(const QString& packID);
    /// The pointer is no longer over the pack. It may have entered another one already.
    Q_INVOKABLE void leave(const QString& packID);

    /// The id of the pack under the pointer; empty when there is none.
    [[nodiscard]] const QString& hovered() const { return m_hovered; }

signals:
    void hoveredChanged();
    /// The pack is to be heard.
    void rested(const QString& packID);

private:
    void setHovered(const QString& packID);

    QString m_hovered;
    std::unique_ptr<Timer> m_timer; // Runs until the pack under the pointer is to be heard.
};

} // namespace clavo
