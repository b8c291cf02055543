// SPDX-License-Identifier: MIT
#include "ui/HoverPreview.h"

#include "loop/QtTimer.h"

#include <utility>

namespace clavo
{

HoverPreview::HoverPreview(QObject* parent) : HoverPreview(makeQtTimer(), parent) {}

HoverPreview::HoverPreview(std::unique_ptr<Timer> timer, QObject* parent)
    : QObject(parent), m_timer(std::move(timer))
{
}

void HoverPreview::enter(const QString& packID)
{
    m_timer->start(delay, [this, packID] { emit rested(packID); });
    setHovered(packID);
}

void HoverPreview::leave(const QString& packID)
{
    if (packID != m_hovered)
        return;
    m_timer->stop();
    setHovered({});
}

void HoverPreview::setHovered(const QString& packID)
{
    if (std::exchange(m_hovered, packID) != packID)
        emit hoveredChanged();
}

} // namespace clavo
