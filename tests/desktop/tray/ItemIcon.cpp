// SPDX-License-Identifier: MIT
#include "desktop/tray/ItemIcon.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDBusVariant>

namespace clavo
{
namespace
{

/// From an array of (width, height, ARGB in network byte order).
QImage firstPicture(const QDBusArgument& pictures)
{
    int width = 0;
    int height = 0;
    QByteArray pixels;
    pictures.beginArray();
    if (pictures.atEnd())
        return {};
    pictures.beginStructure();
    pictures >> width >> height >> pixels;
    QImage image(width, height, QImage::Format_ARGB32);
    for (int at = 0; at < width * height && at * 4 + 3 < pixels.size(); ++at) {
        const auto byte = [&](int number) {
            return static_cast<unsigned char>(pixels[(at * 4) + number]);
        };
        image.setPixel(at % width, at / width, qRgba(byte(1), byte(2), byte(3), byte(0)));
    }
    return image;
}

} // namespace

ItemIcon iconOf(const QString& item)
{
    QDBusInterface object(item.section('/', 0, 0), '/' + item.section('/', 1),
                          "org.freedesktop.DBus.Properties");
    const auto property = [&](const char* name) {
        const QDBusReply<QDBusVariant> reply =
            object.call("Get", "org.kde.StatusNotifierItem", name);
        return reply.value().variant();
    };
    return {.name = property("IconName").toString(),
            .picture = firstPicture(property("IconPixmap").value<QDBusArgument>())};
}

} // namespace clavo
