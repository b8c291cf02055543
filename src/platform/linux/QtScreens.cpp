// SPDX-License-Identifier: MIT
#include "platform/linux/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>

namespace clavo
{

std::span<const ScreenExtent> QtScreens::extents()
{
    m_extents.clear(); // Keeps its memory: this is asked at every motion.
    for (const auto* screen : QGuiApplication::screens()) {
        const auto place = screen->geometry();
        m_extents.push_back(
            {.x = static_cast<double>(place.x()), .width = static_cast<double>(place.width())});
    }
    return m_extents;
}

} // namespace clavo
