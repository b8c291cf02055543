// SPDX-License-Identifier: MIT
#include "ui/HoverPreview.h"

#include <QTimer>

#include <utility>

namespace clavo
{
namespace
{

void runOnMainLoop(std::chrono::milliseconds delay, std::function<void()> task)
{
    QTimer::singleShot(delay, Qt::PreciseTimer, std::move(task));
}

} // namespace

HoverPreview::HoverPreview(QObject* parent) : HoverPreview(runOnMainLoop, parent) {}

HoverPreview::HoverPreview(RunLater runLater, QObject* parent)
    : QObject(parent), m_runLater(std::move(runLater))
{
}

void HoverPreview::enter(const QString& packID)
{
    m_waiting = std::make_shared<const QString>(packID);
    m_runLater(delay, [this, waiting = std::weak_ptr(m_waiting)] {
        if (!waiting.expired())
            emit rested(*std::exchange(m_waiting, nullptr));
    });
    setHovered(packID);
}

void HoverPreview::leave(const QString& packID)
{
    if (packID != m_hovered)
        return;
    m_waiting = nullptr;
    setHovered({});
}

void HoverPreview::setHovered(const QString& packID)
{
    if (std::exchange(m_hovered, packID) != packID)
        emit hoveredChanged();
}

} // namespace clavo
