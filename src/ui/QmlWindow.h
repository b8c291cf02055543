// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QVariantMap>

#include <memory>

namespace clavo
{

/// Registers the QML modules Clavo and Clavo.Controls with every engine of this process.
void registerQmlModules();

/// Makes a hidden window from a QML file of the module Clavo and its required properties. A failure
/// is fatal. The engine outlives the window.
[[nodiscard]] std::unique_ptr<QQuickWindow> makeWindow(QQmlEngine& engine, const char* file,
                                                       const QVariantMap& properties);

/// Lays out every item of the window now. The scene graph would do so with the first frame, too
/// late for the window to appear with the height that wrapped texts need.
void layOut(QQuickWindow& window);

/// A window that uses memory only while it is open: it and its QML engine are made when it opens
/// and freed when it closes. Thread: main.
class QmlWindow : public QObject
{
    Q_OBJECT

public:
    QmlWindow();
    ~QmlWindow() override;

    /// Hides the window at once and frees it from the main loop.
    Q_SLOT virtual void close();

    [[nodiscard]] bool isOpen() const { return m_content != nullptr; }

signals:
    void quitRequested();
    /// The memory of the closed window has been freed.
    void freed();

protected:
    /// Makes the window, see makeWindow(). Called only while the window is closed. From here on the
    /// window is closed when it is hidden, and its own quitRequested() is passed on.
    QQuickWindow& make(const char* file, const QVariantMap& properties);

    /// Called only while the window is open.
    [[nodiscard]] QQuickWindow& window() const { return *m_content->window; }

private:
    /// The window is destroyed before its engine.
    struct Content {
        QQmlEngine engine;
        std::unique_ptr<QQuickWindow> window;
    };

    std::unique_ptr<Content> m_content; // Null while closed.
};

} // namespace clavo
