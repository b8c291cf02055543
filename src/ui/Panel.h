// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "ui/QmlWindow.h"

#include <QRect>

#include <chrono>
#include <functional>
#include <optional>

namespace clavo
{

/// The panel that opens from the program's icon.
class Panel : public QmlWindow
{
    Q_OBJECT

public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// A toggle() this soon after the panel has lost the focus belongs to the same click.
    static constexpr std::chrono::milliseconds clickTime{400};

    /// The state outlives the panel.
    explicit Panel(AppState& state, Clock clock = std::chrono::steady_clock::now);

    /// Shows the panel beside a place on the screen: an icon's rectangle, or the empty rectangle of
    /// a click. Without a place the panel is an ordinary window that the desktop places. An open
    /// panel comes to the front instead.
    void open(std::optional<QRect> place);
    /// Closes an open panel, otherwise opens it. Does nothing if the same click has just closed the
    /// panel by taking the focus from it.
    void toggle(std::optional<QRect> place);

signals:
    /// The user wants the settings window in front.
    void settingsRequested();

private:
    void moveToPlace();
    void closeOnLostFocus(bool isActive);

    AppState& m_state;
    Clock m_clock;
    std::optional<QRect> m_place;
    bool m_hadFocus = false;
    // When the loss of the focus has closed the panel.
    std::optional<std::chrono::steady_clock::time_point> m_lostFocus;
};

} // namespace clavo
