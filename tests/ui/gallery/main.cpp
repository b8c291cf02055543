// SPDX-License-Identifier: MIT
//
// clavo-gallery FOLDER en|fr|de SCENE.qml…
//
// Takes pictures of scenes for people to look at. A scene is an item; its `states` are the states
// to show, beside the one without a name, and its `pointer`, where it has one, is where the mouse
// rests. Each is pictured in the light and the dark look, in a scene made anew. QT_SCALE_FACTOR is
// the scale.
#include "app/AppLanguage.h"
#include "app/CommandLine.h"
#include "ui/fakes/FakeDesktop.h"
#include "ui/fakes/TestModules.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQmlListReference>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

namespace
{

// Longer than any transition.
constexpr std::chrono::milliseconds timeToSettle{250};
// Longer than the delay of a help text.
constexpr std::chrono::milliseconds timeToRest{900};
constexpr auto accent = "#3584e4";

struct Look {
    const char* name;
    bool dark;
};
constexpr Look looks[] = {{"light", false}, {"dark", true}};

QStringList statesOf(const QQuickItem& scene)
{
    QStringList names{QString()};
    // Not const, but only read.
    const QQmlListReference states(const_cast<QQuickItem*>(&scene), "states");
    for (qsizetype i = 0; i < states.count(); ++i)
        names += states.at(i)->property("name").toString();
    return names;
}

/// The scene in a window of its own, in this state; null, with the reason printed, where it cannot
/// be made.
std::unique_ptr<QQuickView> shown(QQmlEngine& engine, const QString& file, const QString& state)
{
    auto view = std::make_unique<QQuickView>(&engine, nullptr);
    view->setSource(QUrl::fromLocalFile(file));
    if (view->rootObject() == nullptr)
        return nullptr;
    view->show();
    // A pointer that rests where the last scene had it would hover over this one.
    QTest::mouseMove(view.get(), QPoint(0, 0));
    view->rootObject()->setState(state);
    const auto pointer = view->rootObject()->property("pointer").toPoint();
    QTest::mouseMove(view.get(), pointer);
    QTest::qWait(static_cast<int>((pointer.isNull() ? timeToSettle : timeToRest).count()));
    return view;
}

bool picture(QQmlEngine& engine, const QString& file, const QDir& folder)
{
    clavo::FakeDesktop desktop;
    const auto scene = QFileInfo(file).completeBaseName();
    QStringList states{QString()};
    for (qsizetype i = 0; i < states.size(); ++i) {
        for (const auto& look : looks) {
            desktop.look(look.dark, accent);
            const auto view = shown(engine, file, states[i]);
            if (!view)
                return false;
            if (states.size() == 1)
                states = statesOf(*view->rootObject());
            const auto state = states[i].isEmpty() ? QString() : "-" + states[i];
            const auto name = scene + state + "-" + look.name + ".png";
            if (!view->grabWindow().save(folder.filePath(name)))
                return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationVersion(QString::fromUtf8(clavo::version()));
    const auto arguments = QGuiApplication::arguments();
    const auto language =
        arguments.size() < 4 ? std::nullopt : clavo::appLanguage(arguments[2].toStdString());
    if (!language) {
        std::fputs("usage: clavo-gallery FOLDER en|fr|de SCENE.qml...\n", stderr);
        return EXIT_FAILURE;
    }
    clavo::installTranslation(*language);
    clavo::registerTestModules();
    const QDir folder(arguments[1]);
    folder.mkpath(".");
    QQmlEngine engine;
    bool complete = true;
    for (const auto& file : arguments.mid(3))
        complete = picture(engine, file, folder) && complete;
    return complete ? EXIT_SUCCESS : EXIT_FAILURE;
}
