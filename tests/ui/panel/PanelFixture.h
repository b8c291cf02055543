// SPDX-License-Identifier: MIT
#pragma once

#include "ui/Panel.h"

#include "ui/windows/WindowReader.h"
#include "unit/app/AppStateFixture.h"
#include "unit/packs/PackFiles.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace clavo
{

/// The real panel over the application with fake ports, for tests to see and to use.
class PanelFixture : public AppStateFixture, protected WindowReader
{
protected:
    using AppStateFixture::click;
    using AppStateFixture::press;
    using WindowReader::click;
    using WindowReader::press;

    void addPack(std::string_view id, std::string_view name, std::string_view category)
    {
        writeFile(builtInPacks() / id / "pack.json", manifestText("", "", id, name, category));
    }
    void addCustomPack(std::string_view id, std::string_view name)
    {
        writeFile(customPacks() / id / "pack.json", manifestText("", "", id, name));
    }

    Panel& panel()
    {
        if (!m_panel)
            m_panel.emplace(state(), [this] { return std::chrono::steady_clock::time_point(now); });
        return *m_panel;
    }

    /// The panel's window, which is opened if it is closed.
    QQuickWindow& window()
    {
        if (!panel().isOpen())
            panel().open(place);
        if (!m_window) {
            m_window = openWindows().at(0);
            EXPECT_TRUE(QTest::qWaitForWindowExposed(m_window));
            settle();
        }
        return *m_window;
    }

    QQuickItem& row(const std::string& name)
    {
        for (auto* const each : itemsNamed("row"))
            if (each->property("text").toString().toStdString() == name)
                return *each;
        throw std::runtime_error("no row " + name);
    }

    std::optional<QRect> place = QRect(400, 0, 24, 24);
    std::chrono::milliseconds now{0}; // Of the panel's clock.

private:
    QQuickItem& content() override { return *window().contentItem(); }

    std::optional<Panel> m_panel;
    QPointer<QQuickWindow> m_window;
};

} // namespace clavo
