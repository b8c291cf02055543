// SPDX-License-Identifier: MIT
#include "desktop/tray/TrayFixture.h"

#include "desktop/user/ProgramWindows.h"

namespace clavo
{

TrayFixture::TrayFixture() : hands(qEnvironmentVariable("DISPLAY").toStdString())
{
    hands.movePointer(800, 600);
}

void TrayFixture::startProgram()
{
    m_program.emplace(QCoreApplication::applicationDirPath() + "/tray_program", QStringList{});
}

bool TrayFixture::isDocked()
{
    return EventLoop::until([this] { return dockedPlace().has_value(); });
}

bool TrayFixture::isRegistered()
{
    return EventLoop::until([] { return registeredItems().size() == 1; });
}

std::optional<QRect> TrayFixture::dockedPlace()
{
    const auto place = embeddedWindow("tray_program");
    return place && place->width() >= 16 && place->height() >= 16 ? place : std::nullopt;
}

void TrayFixture::click(QPoint point, int button)
{
    hands.movePointer(point.x(), point.y());
    hands.click(button);
}

bool TrayFixture::untilSaid(const QString& line)
{
    return EventLoop::until([&] { return !said().isEmpty() && said().last() == line; });
}

} // namespace clavo
