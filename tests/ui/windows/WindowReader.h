// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QPoint>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace clavo
{

/// The open windows of the interface.
[[nodiscard]] std::vector<QQuickWindow*> openWindows();

/// Reads and uses a window as its user does. Items are found only while they are visible, in the
/// order in which they are drawn.
class WindowReader
{
public:
    using Texts = std::vector<std::string>;

    WindowReader() = default;
    virtual ~WindowReader() = default;
    WindowReader(const WindowReader&) = delete;
    WindowReader& operator=(const WindowReader&) = delete;

    std::vector<QQuickItem*> visibleItems(const std::function<bool(QQuickItem&)>& accepts);
    std::vector<QQuickItem*> itemsNamed(const QString& objectName);
    /// The only item of this name.
    QQuickItem& item(const QString& objectName);
    bool isShown(const QString& objectName) { return !itemsNamed(objectName).empty(); }

    /// The only control, such as a button or a tab, with this text.
    QQuickItem& control(const QString& text);
    bool hasControl(const QString& text) { return !controls(text).empty(); }

    /// Every text that can be read.
    Texts allTexts();
    /// The texts of the items of this name.
    Texts texts(const QString& objectName);
    std::string text(const QString& objectName) { return texts(objectName).at(0); }

    void click(QQuickItem& item);
    void moveOver(const QPoint& point);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Handles the pending events, then lays out and draws the window.
    void settle();

    static QPoint middle(const QQuickItem& item);

    /// What assistive technology reads of an item.
    static QAccessibleInterface& accessible(QQuickItem& item);
    static std::string nameOf(QQuickItem& item);

protected:
    /// The item whose children are read.
    virtual QQuickItem& content() = 0;

private:
    std::vector<QQuickItem*> controls(const QString& text);
};

} // namespace clavo
