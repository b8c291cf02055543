// SPDX-License-Identifier: MIT
#include "ui/QmlWindow.h"

#include "log/Fatal.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QString>
#include <QUrl>

#include <utility>

// Generated for the modules. Without these calls the linker would leave the generated code out.
// NOLINTBEGIN(readability-identifier-naming): the generator gives the names.
void qml_register_types_Clavo();
void qml_register_types_Clavo_Controls();
// NOLINTEND(readability-identifier-naming)

namespace clavo
{
namespace
{

void layOutFrom(QQuickItem& item)
{
    for (auto* const child : item.childItems())
        layOutFrom(*child);
    item.ensurePolished();
}

} // namespace

void registerQmlModules()
{
    static bool isDone = false;
    if (std::exchange(isDone, true))
        return; // Each registration takes memory.
    qml_register_types_Clavo();
    qml_register_types_Clavo_Controls();
}

std::unique_ptr<QQuickWindow> makeWindow(QQmlEngine& engine, const char* file,
                                         const QVariantMap& properties)
{
    registerQmlModules();
    QQmlComponent component(&engine, QUrl("qrc:/qt-project.org/imports/Clavo/" + QString(file)));
    auto* const window =
        qobject_cast<QQuickWindow*>(component.createWithInitialProperties(properties));
    if (!window)
        fatal(component.errorString().toStdString());
    return std::unique_ptr<QQuickWindow>(window);
}

void layOut(QQuickWindow& window)
{
    layOutFrom(*window.contentItem());
}

QmlWindow::QmlWindow() = default;

QmlWindow::~QmlWindow()
{
    if (isOpen())
        window().disconnect(this); // The user has not closed it.
}

void QmlWindow::close()
{
    if (!isOpen())
        return;
    // The caller may be a handler of the window itself, so the window is destroyed later.
    std::shared_ptr<Content> closed = std::move(m_content);
    closed->window->disconnect(this);
    closed->window->hide();
    QMetaObject::invokeMethod(
        this,
        [this, closed = std::move(closed)]() mutable {
            closed.reset();
            emit freed();
        },
        Qt::QueuedConnection);
}

QQuickWindow& QmlWindow::make(const char* file, const QVariantMap& properties)
{
    m_content = std::make_unique<Content>();
    m_content->window = makeWindow(m_content->engine, file, properties);
    // By name, since the window's type is defined in QML.
    connect(&window(), SIGNAL(quitRequested()), this, SIGNAL(quitRequested()));
    connect(&window(), &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible)
            close();
    });
    return window();
}

} // namespace clavo
