// SPDX-License-Identifier: MIT
#include "ui/QmlWindow.h"

#include "log/Fatal.h"
#include "ui/QmlModules.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

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
