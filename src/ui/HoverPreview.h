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

/// The pack under the pointer, and the delay before its preview. A pointer that rests on a pack
/// requests one preview; a pointer that sweeps across packs requests none. Thread: main.
class HoverPreview : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString hovered READ hovered NOTIFY hoveredChanged)

public:
    /// How long the pointer rests before the preview.
    static constexpr std::chrono::milliseconds delay{380};

    explicit HoverPreview(QObject* parent = nullptr);
    explicit HoverPreview(std::unique_ptr<Timer> timer, QObject* parent = nullptr);

    /// The pointer is over the pack now. It may not have left the previous pack yet.
    Q_INVOKABLE void enter(const QString& packID);
    /// The pointer is no longer over the pack. It may already have entered another one.
    Q_INVOKABLE void leave(const QString& packID);

    /// The id of the pack under the pointer; empty when there is none.
    [[nodiscard]] const QString& hovered() const { return m_hovered; }

signals:
    void hoveredChanged();
    /// The pointer has rested on the pack for `delay`.
    void rested(const QString& packID);

private:
    void setHovered(const QString& packID);

    QString m_hovered;
    std::unique_ptr<Timer> m_timer; // Runs until the preview.
};

} // namespace clavo
