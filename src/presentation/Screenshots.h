// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/LanguageSetting.h"

#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QString>

#include <filesystem>
#include <iosfwd>
#include <memory>

namespace clavo
{

/// Pictures that present the program: five slides that show its own views with demonstration data.
namespace Screenshots
{

/// Sets the environment for drawing in memory, at the same scale and in the same way on every
/// machine. Called before the application object is made.
void prepare();

/// Sets the application's fonts and look for the pictures.
void applyStyle();

/// Draws all slides of a state with demonstration data into the folder, which is made if missing.
/// Pictures that cannot be written are named in one line on `errors`.
void renderAll(const std::filesystem::path& folder, AppState& state, LanguageSetting& language,
               std::ostream& errors);

/// Makes a slide from the name of its QML type.
[[nodiscard]] std::unique_ptr<QQuickItem> makeSlide(QQmlEngine& engine, const QString& type,
                                                    AppState& state, LanguageSetting& language);

/// The picture of a slide, 2880 by 1800 pixels.
[[nodiscard]] QImage snapshot(QQuickItem& slide);

} // namespace Screenshots

} // namespace clavo
