// SPDX-License-Identifier: MIT
#include "desktop/tray/ItemMenu.h"

#include <QDBusArgument>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>

namespace clavo
{
namespace
{

constexpr auto interface = "com.canonical.dbusmenu";

} // namespace

ItemMenu::ItemMenu(const QString& item) : m_service(item.section('/', 0, 0))
{
    QDBusInterface object(m_service, '/' + item.section('/', 1), "org.kde.StatusNotifierItem");
    m_path = object.property("Menu").value<QDBusObjectPath>().path();
}

QMap<QString, QVariantMap> ItemMenu::entries()
{
    QDBusInterface menu(m_service, m_path, interface);
    const auto reply = menu.call("GetLayout", 0, -1, QStringList{});
    QMap<QString, QVariantMap> found;
    if (reply.arguments().size() != 2)
        return found;
    // (number, properties, children), each child such a triple in a variant.
    const auto layout = reply.arguments().at(1).value<QDBusArgument>();
    int root = 0;
    QVariantMap ofRoot;
    layout.beginStructure();
    layout >> root >> ofRoot;
    layout.beginArray();
    while (!layout.atEnd()) {
        QDBusVariant child;
        layout >> child;
        const auto entry = child.variant().value<QDBusArgument>();
        int number = 0;
        QVariantMap properties;
        entry.beginStructure();
        entry >> number >> properties;
        if (const auto label = properties.value("label").toString(); !label.isEmpty()) {
            found.insert(label, properties);
            m_numbers.insert(label, number);
        }
    }
    return found;
}

void ItemMenu::choose(const QString& label)
{
    QDBusInterface menu(m_service, m_path, interface);
    menu.call("Event", m_numbers.value(label), "clicked",
              QVariant::fromValue(QDBusVariant(QString())), 0U);
}

} // namespace clavo
