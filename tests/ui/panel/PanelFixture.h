// SPDX-License-Identifier: MIT
#pragma once

#include "ui/Panel.h"

#include "unit/app/AppStateFixture.h"
#include "unit/packs/PackFiles.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace clavo
{

/// The real panel over the application with fake ports, for tests to see and to use.
class PanelFixture : public AppStateFixture
{
protected:
    using AppStateFixture::click;
    using AppStateFixture::press;

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

    /// The panel's window, which opens if it is not there.
    QQuickWindow& window()
    {
        if (!panel().isOpen())
            panel().open(place);
        if (!m_window) {
            m_window = topLevelWindow();
            EXPECT_TRUE(QTest::qWaitForWindowExposed(m_window));
            settle();
        }
        return *m_window;
    }

    /// Lets the events that wait be handled, and the layout and the picture follow them.
    void settle()
    {
        QCoreApplication::processEvents();
        if (m_window)
            m_window->grabWindow();
        QCoreApplication::processEvents();
    }

    /// The visible items of this object name, in the order in which they are drawn.
    std::vector<QQuickItem*> all(const QString& name)
    {
        std::vector<QQuickItem*> found;
        collect(window().contentItem(), [&](QQuickItem* item) {
            if (item->objectName() == name)
                found.push_back(item);
        });
        return found;
    }
    QQuickItem& item(const QString& name)
    {
        const auto found = all(name);
        EXPECT_EQ(found.size(), 1U) << name.toStdString();
        return *found.at(0);
    }
    bool isShown(const QString& name) { return !all(name).empty(); }

    /// What the visible items of this object name say.
    std::vector<std::string> texts(const QString& name)
    {
        std::vector<std::string> found;
        for (const auto* one : all(name))
            found.push_back(one->property("text").toString().toStdString());
        return found;
    }
    std::string text(const QString& name) { return texts(name).at(0); }

    /// Every visible item for which the test is true.
    template <typename Test> std::vector<QQuickItem*> itemsThat(Test test)
    {
        std::vector<QQuickItem*> found;
        collect(window().contentItem(), [&](QQuickItem* item) {
            if (test(item))
                found.push_back(item);
        });
        return found;
    }

    QQuickItem& row(const std::string& name)
    {
        for (auto* const item : all("row"))
            if (item->property("text").toString().toStdString() == name)
                return *item;
        throw std::runtime_error("no row " + name);
    }
    QQuickItem& button(const QString& text)
    {
        const auto found = itemsThat([&](auto* item) {
            return item->inherits("QQuickButton") && item->property("text") == text;
        });
        EXPECT_EQ(found.size(), 1U) << text.toStdString();
        return *found.at(0);
    }

    static QPoint middle(const QQuickItem& item)
    {
        return item.mapToScene(QPointF(item.width() / 2, item.height() / 2)).toPoint();
    }
    void click(QQuickItem& item)
    {
        QTest::mouseClick(&window(), Qt::LeftButton, {}, middle(item));
        settle();
    }
    void moveOver(const QPoint& point)
    {
        QTest::mouseMove(&window(), point);
        settle();
    }
    void press(Qt::Key pressed, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&window(), pressed, modifiers);
        settle();
    }

    std::optional<QRect> place = QRect(400, 0, 24, 24);
    std::chrono::milliseconds now{0}; // Of the panel's clock.

private:
    template <typename Receiver> static void collect(QQuickItem* item, const Receiver& receiver)
    {
        if (!item->isVisible())
            return;
        receiver(item);
        for (auto* const child : item->childItems())
            collect(child, receiver);
    }

    static QQuickWindow* topLevelWindow()
    {
        for (auto* const one : QGuiApplication::topLevelWindows())
            if (auto* const quick = qobject_cast<QQuickWindow*>(one); quick && quick->isVisible())
                return quick;
        return nullptr;
    }

    std::optional<Panel> m_panel;
    QPointer<QQuickWindow> m_window;
};

} // namespace clavo
