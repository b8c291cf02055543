// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <functional>
#include <memory>

namespace clavo
{

/// The pack under the pointer, and the wait until it is to be heard: sweeping across the packs asks
/// for none, resting on one asks for it once. Thread: main.
class HoverPreview : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString hovered READ hovered NOTIFY hoveredChanged)

public:
    /// Runs a task once on the main thread, after the delay.
    using RunLater = std::function<void(std::chrono::milliseconds, std::function<void()>)>;

    /// How long the pointer rests before the pack is heard.
    static constexpr std::chrono::milliseconds delay{380};

    explicit HoverPreview(QObject* parent = nullptr);
    explicit HoverPreview(RunLater runLater, QObject* parent = nullptr);

    /// The pointer is over the pack now, wherever it was before.
    Q_INVOKABLE void enter(const QString& packID);
    /// The pointer is no longer over the pack. Says nothing about the pack that it may have entered
    /// already.
    Q_INVOKABLE void leave(const QString& packID);

    /// The id of the pack under the pointer; empty where there is none.
    [[nodiscard]] const QString& hovered() const { return m_hovered; }

signals:
    void hoveredChanged();
    /// The pack is to be heard.
    void rested(const QString& packID);

private:
    void setHovered(const QString& packID);

    RunLater m_runLater;
    QString m_hovered;
    std::shared_ptr<const QString> m_waiting; // What is to be heard; null: nothing to come.
};

} // namespace clavo
