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

/// Pictures of the program for the places where people meet it first: five slides that show its own
/// views with demonstration data.
namespace Screenshots
{

/// Comes before the application object: windows are drawn in memory and nowhere else, at the same
/// scale and in the same way on every machine.
void prepare();

/// Gives the application object the fonts and the look of the pictures.
void dress();

/// Draws all slides of the state, which is in its demonstration, into the folder, and makes that if
/// need be. What cannot be written is left out; one line on `errors` tells of it.
void renderAll(const std::filesystem::path& folder, AppState& state, LanguageSetting& language,
               std::ostream& errors);

/// A slide by the name of its QML type.
[[nodiscard]] std::unique_ptr<QQuickItem> makeSlide(QQmlEngine& engine, const QString& type,
                                                    AppState& state, LanguageSetting& language);

/// The picture of a slide, 2880 by 1800 pixels.
[[nodiscard]] QImage snapshot(QQuickItem& slide);

} // namespace Screenshots

} // namespace clavo
