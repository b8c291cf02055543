// SPDX-License-Identifier: MIT
#include "desktop/wayland/Compositor.h"

#include "eventloop/EventLoop.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <stdexcept>
#include <string>

namespace clavo
{
namespace
{

/// What the program writes; it must end well.
QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error(program.toStdString() + ": " +
                                 process.readAllStandardError().toStdString());
    return process.readAllStandardOutput();
}

QJsonDocument answer(const QString& question)
{
    return QJsonDocument::fromJson(outputOf("swaymsg", {"--raw", "--type", question}));
}

QRect rectangle(const QJsonValue& value)
{
    return {value["x"].toInt(), value["y"].toInt(), value["width"].toInt(),
            value["height"].toInt()};
}

void collect(const QJsonObject& container, std::vector<CompositorWindow>& windows)
{
    if (container.contains("app_id"))
        windows.push_back({.program = container["app_id"].toString(),
                           .title = container["name"].toString(),
                           .place = rectangle(container["rect"]),
                           .isFloating = container["type"].toString() == "floating_con",
                           .hasFocus = container["focused"].toBool()});
    for (const auto* const kind : {"nodes", "floating_nodes"}) {
        for (const auto& child : container[kind].toArray())
            collect(child.toObject(), windows);
    }
}

} // namespace

// The keyboard is there for as long as this one waits for something to type: a window that gets to
// know a keyboard only with its first key may miss that key.
Compositor::Compositor()
{
    m_keyboard.start("wtype", {"-"});
    if (!EventLoop::until([] { return !answer("get_inputs").array().isEmpty(); }))
        throw std::runtime_error("no keyboard can be plugged in");
}

Compositor::~Compositor()
{
    m_keyboard.closeWriteChannel();
    m_keyboard.waitForFinished();
}

std::vector<CompositorWindow> Compositor::windows()
{
    std::vector<CompositorWindow> windows;
    collect(answer("get_tree").object(), windows);
    return windows;
}

void Compositor::leaveWindows()
{
    outputOf("swaymsg", {"workspace", "elsewhere"});
}

void Compositor::resizeScreen(QSize size)
{
    const auto resolution = QString("%1x%2").arg(size.width()).arg(size.height());
    outputOf("swaymsg", {"output", "*", "resolution", resolution});
}

QImage Compositor::picture()
{
    return QImage::fromData(outputOf("grim", {"-"}));
}

void Compositor::strike(const QString& key)
{
    outputOf("wtype", {"-k", key});
}

void Compositor::strikeWithControl(const QString& key)
{
    outputOf("wtype", {"-M", "ctrl", "-k", key, "-m", "ctrl"});
}

} // namespace clavo
