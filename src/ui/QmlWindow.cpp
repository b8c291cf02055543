// SPDX-License-Identifier: MIT
#include "ui/QmlWindow.h"

#include "log/Fatal.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

#include <utility>

// Of the code that is generated for the modules. Nothing else refers to it, so the linker would
// leave it out.
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
        return; // What is registered again is kept twice.
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

} // namespace clavo
