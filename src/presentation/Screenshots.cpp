// SPDX-License-Identifier: MIT
#include "presentation/Screenshots.h"

#include "log/Fatal.h"
#include "presentation/Picture.h"
#include "ui/QmlWindow.h"
#include "ui/controls/Appearance.h"

#include <QEventLoop>
#include <QFont>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QSaveFile>
#include <QTimer>

#include <array>
#include <chrono>
#include <memory>
#include <ostream>
#include <string>
#include <system_error>

// Generated for the module. Without this call the linker would leave the generated code out.
// NOLINTNEXTLINE(readability-identifier-naming): the generator gives the name.
void qml_register_types_Clavo_Presentation();

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

struct SlideFile {
    const char* name;
    const char* type;
};
constexpr std::array<SlideFile, 5> slides{{
    {"1-menu-bar", "HeroSlide"},
    {"2-switches", "SwitchesSlide"},
    {"3-instant", "InstantSlide"},
    {"4-statistics", "StatsSlide"},
    {"5-privacy", "PrivacySlide"},
}};

constexpr QSize slideSize{1440, 900};
constexpr QSize pictureSize = slideSize * 2;
// Twice the pictures' resolution, so that views which a slide enlarges are as sharp as the rest.
constexpr auto drawnScale = "4";

// Longer than any transition of the views.
constexpr std::chrono::milliseconds transitionTime{150};

void waitForTransitions()
{
    QEventLoop loop;
    QTimer::singleShot(transitionTime, &loop, &QEventLoop::quit);
    loop.exec();
}

bool write(const QImage& picture, const fs::path& file)
{
    const auto bytes = encodedPng(picture);
    QSaveFile saved(QString::fromStdString(file.string()));
    return !bytes.isEmpty() && saved.open(QIODevice::WriteOnly) &&
           saved.write(bytes) == bytes.size() && saved.commit();
}

} // namespace

void Screenshots::prepare()
{
    for (const auto* const setting :
         {"QT_FONT_DPI", "QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING",
          "QT_USE_PHYSICAL_DPI", "QT_SCALE_FACTOR_ROUNDING_POLICY", "QT_QPA_PLATFORMTHEME"})
        qunsetenv(setting);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QT_SCALE_FACTOR", drawnScale);
}

void Screenshots::applyStyle()
{
    const QStringList substitutes{"Inter", "Cantarell", "Noto Sans", "DejaVu Sans"};
    QFont::insertSubstitutions("Inter Display", substitutes);
    QFont font;
    font.setFamilies(substitutes);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    QGuiApplication::setFont(font);
    Appearance::shared().prefer(
        {.isDark = true,
         .accent = AppearancePreference::Color{.red = 0.16, .green = 0.50, .blue = 1}});
}

std::unique_ptr<QQuickItem> Screenshots::makeSlide(QQmlEngine& engine, const QString& type,
                                                   AppState& state, LanguageSetting& language)
{
    registerQmlModules();
    qml_register_types_Clavo_Presentation();
    QQmlComponent component(
        &engine, QUrl("qrc:/qt-project.org/imports/Clavo/Presentation/" + type + ".qml"));
    auto* const slide = qobject_cast<QQuickItem*>(component.createWithInitialProperties({
        {"appState", QVariant::fromValue(&state)},
        {"language", QVariant::fromValue(&language)},
        {"font", QGuiApplication::font()}, // Controls would use the desktop's.
    }));
    if (!slide)
        fatal(component.errorString().toStdString());
    return std::unique_ptr<QQuickItem>(slide);
}

QImage Screenshots::snapshot(QQuickItem& slide)
{
    QQuickWindow window;
    window.setFlag(Qt::FramelessWindowHint);
    window.setColor(QColor::fromRgbF(0.05F, 0.05F, 0.07F));
    window.resize(slideSize);
    slide.setParentItem(window.contentItem());
    slide.setSize(slideSize);
    window.show();
    waitForTransitions();
    auto drawn = window.grabWindow();
    slide.setParentItem(nullptr);
    return drawn.scaled(pictureSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void Screenshots::renderAll(const fs::path& folder, AppState& state, LanguageSetting& language,
                            std::ostream& errors)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder)) {
        errors << "clavo: cannot make the folder '" << folder.string() << "'\n";
        return;
    }
    QQmlEngine engine;
    std::string missing;
    for (const auto& slide : slides) {
        const auto file = folder / (slide.name + std::string(".png"));
        if (!write(snapshot(*makeSlide(engine, slide.type, state, language)), file))
            missing += (missing.empty() ? "" : ", ") + file.filename().string();
    }
    if (!missing.empty())
        errors << "clavo: cannot write into '" << folder.string() << "': " << missing << '\n';
}

} // namespace clavo
