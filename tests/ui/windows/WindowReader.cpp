// SPDX-License-Identifier: MIT
#include "ui/windows/WindowReader.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <stdexcept>

namespace clavo
{
namespace
{

void collect(const QQuickItem& parent, const std::function<bool(QQuickItem&)>& accepts,
             std::vector<QQuickItem*>& found)
{
    for (auto* const child : parent.childItems()) {
        if (!child->isVisible() || child->opacity() == 0)
            continue;
        if (accepts(*child))
            found.push_back(child);
        collect(*child, accepts, found);
    }
}

QQuickItem& onlyOne(const std::vector<QQuickItem*>& found, const QString& what)
{
    EXPECT_EQ(found.size(), 1U) << what.toStdString();
    if (found.empty())
        throw std::runtime_error("not visible: " + what.toStdString());
    return *found.front();
}

WindowReader::Texts textsOf(const std::vector<QQuickItem*>& items)
{
    WindowReader::Texts texts;
    for (const auto* const item : items)
        texts.push_back(item->property("text").toString().toStdString());
    return texts;
}

} // namespace

std::vector<QQuickWindow*> openWindows()
{
    std::vector<QQuickWindow*> open;
    for (auto* const window : QGuiApplication::topLevelWindows()) {
        if (auto* const found = qobject_cast<QQuickWindow*>(window); found && found->isVisible())
            open.push_back(found);
    }
    return open;
}

std::vector<QQuickItem*> WindowReader::visibleItems(const std::function<bool(QQuickItem&)>& accepts)
{
    std::vector<QQuickItem*> found;
    collect(content(), accepts, found);
    return found;
}

std::vector<QQuickItem*> WindowReader::itemsNamed(const QString& objectName)
{
    return visibleItems([&](const QQuickItem& each) { return each.objectName() == objectName; });
}

QQuickItem& WindowReader::item(const QString& objectName)
{
    return onlyOne(itemsNamed(objectName), objectName);
}

// A label has no `down`.
std::vector<QQuickItem*> WindowReader::controls(const QString& text)
{
    return visibleItems([&](const QQuickItem& each) {
        return each.property("text") == text && each.property("down").isValid();
    });
}

QQuickItem& WindowReader::control(const QString& text)
{
    return onlyOne(controls(text), text);
}

WindowReader::Texts WindowReader::allTexts()
{
    return textsOf(
        visibleItems([](const QQuickItem& each) { return each.inherits("QQuickText"); }));
}

WindowReader::Texts WindowReader::texts(const QString& objectName)
{
    return textsOf(itemsNamed(objectName));
}

void WindowReader::click(QQuickItem& item)
{
    QTest::mouseClick(item.window(), Qt::LeftButton, {}, middle(item));
    settle();
}

void WindowReader::moveOver(const QPoint& point)
{
    QTest::mouseMove(content().window(), point);
    settle();
}

void WindowReader::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(content().window(), key, modifiers);
    settle();
}

void WindowReader::settle()
{
    QCoreApplication::processEvents();
    for (auto* const window : openWindows())
        window->grabWindow();
    QCoreApplication::processEvents();
}

QPoint WindowReader::middle(const QQuickItem& item)
{
    return item.mapToScene(QPointF(item.width() / 2, item.height() / 2)).toPoint();
}

QAccessibleInterface& WindowReader::accessible(QQuickItem& item)
{
    auto* const found = QAccessible::queryAccessibleInterface(&item);
    if (found == nullptr)
        throw std::runtime_error("the item is not accessible");
    return *found;
}

std::string WindowReader::nameOf(QQuickItem& item)
{
    return accessible(item).text(QAccessible::Name).toStdString();
}

} // namespace clavo
