// SPDX-License-Identifier: MIT
#pragma once

#include "ui/SettingsWindow.h"

#include "log/Fatal.h"
#include "unit/app/AppStateFixture.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QLocale>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

namespace clavo
{

/// The settings window of the application over fake ports, on a display that nobody sees.
class SettingsFixture : public AppStateFixture
{
protected:
    using Tab = SettingsWindow::Tab;

    SettingsFixture() { QLocale::setDefault(QLocale("en_US")); }

    /// The window, which is made at the first call.
    SettingsWindow& settings()
    {
        if (!m_settings) {
            m_language = std::make_unique<LanguageSetting>(*defaults);
            m_settings =
                std::make_unique<SettingsWindow>(state(), *m_language, *platform.fileManager);
        }
        return *m_settings;
    }

    /// Opens the window at the tab and waits until it is on the display.
    QQuickWindow& open(std::optional<Tab> tab = {})
    {
        settings().open(tab);
        auto& opened = window();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&opened));
        return opened;
    }

    /// The one window of the interface.
    static QQuickWindow& window()
    {
        for (auto* const window : QGuiApplication::topLevelWindows()) {
            if (auto* const found = qobject_cast<QQuickWindow*>(window);
                found && found->isVisible())
                return *found;
        }
        fatal("no window is open");
    }

    /// Lets closed windows go.
    static void turnLoop() { QCoreApplication::processEvents(); }

    /// All items that the user sees and the test accepts, in the order in which they are drawn.
    static std::vector<QQuickItem*> visibleItems(const std::function<bool(QQuickItem&)>& accepts)
    {
        std::vector<QQuickItem*> found;
        collect(*window().contentItem(), accepts, found);
        return found;
    }

    /// The visible item with an object's name; null where there is none.
    static QQuickItem* named(const QString& name)
    {
        const auto found =
            visibleItems([&](QQuickItem& item) { return item.objectName() == name; });
        return found.empty() ? nullptr : found.front();
    }

    /// The visible control with a text, whose text is not a label of its own.
    static QQuickItem* control(const QString& text)
    {
        const auto found = visibleItems([&](QQuickItem& item) {
            return item.property("text").toString() == text && item.property("down").isValid();
        });
        return found.empty() ? nullptr : found.front();
    }

    /// Every text on the display.
    static QStringList texts()
    {
        QStringList all;
        for (auto* const item : visibleItems([](QQuickItem& each) { return isText(each); }))
            all.append(item->property("text").toString());
        return all;
    }

    static void click(QQuickItem* item)
    {
        ASSERT_NE(item, nullptr);
        const auto centre = item->mapToScene({item->width() / 2, item->height() / 2});
        QTest::mouseClick(item->window(), Qt::LeftButton, {}, centre.toPoint());
    }

    /// What assistive technology is told about an item.
    static QAccessibleInterface& accessible(QQuickItem* item)
    {
        auto* const found = QAccessible::queryAccessibleInterface(item);
        if (!found)
            fatal("the item is not accessible");
        return *found;
    }

    static bool isText(const QQuickItem& item) { return item.inherits("QQuickText"); }

    LanguageSetting& language()
    {
        settings();
        return *m_language;
    }

private:
    static void collect(QQuickItem& item, const std::function<bool(QQuickItem&)>& accepts,
                        std::vector<QQuickItem*>& found)
    {
        for (auto* const child : item.childItems()) {
            if (!child->isVisible() || child->opacity() == 0)
                continue;
            if (accepts(*child))
                found.push_back(child);
            collect(*child, accepts, found);
        }
    }

    std::unique_ptr<LanguageSetting> m_language;
    std::unique_ptr<SettingsWindow> m_settings;
};

} // namespace clavo
