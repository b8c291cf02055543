// SPDX-License-Identifier: MIT
#include "platform/qt/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>

#include <span>
#include <vector>

namespace clavo
{
namespace
{

class QtScreens final : public Screens
{
public:
    [[nodiscard]] std::span<const ScreenExtent> extents() override
    {
        m_extents.clear(); // Keeps its memory: this is asked at every motion.
        for (const auto* screen : QGuiApplication::screens()) {
            const auto place = screen->geometry();
            m_extents.push_back(
                {.x = static_cast<double>(place.x()), .width = static_cast<double>(place.width())});
        }
        return m_extents;
    }

private:
    std::vector<ScreenExtent> m_extents;
};

} // namespace

std::unique_ptr<Screens> makeQtScreens()
{
    return std::make_unique<QtScreens>();
}

} // namespace clavo
