// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"

#include <QObject>
#include <QRect>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace clavo
{

/// The panel that opens from the program's icon. All of it, its QML engine included, is made when
/// it opens and gone when it is closed, so that a program nobody looks at stays small. Thread:
/// main.
class Panel : public QObject
{
    Q_OBJECT

public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// From the panel's loss of the focus to a toggle() that is the same click of the user's.
    static constexpr std::chrono::milliseconds clickTime{400};

    /// The state outlives the panel.
    explicit Panel(AppState& state, Clock clock = std::chrono::steady_clock::now);
    ~Panel() override;

    /// Shows the panel beside the place, an icon's or, without extent, a click's; as an ordinary
    /// window without a place, or where a program cannot place its windows. The panel that is open
    /// comes to the front instead.
    void open(std::optional<QRect> place);
    /// Hides the panel at once and frees it from the main loop.
    Q_SLOT void close();
    /// Closes the panel that is open, or that this very click has closed by taking its focus; opens
    /// it otherwise.
    void toggle(std::optional<QRect> place);

    [[nodiscard]] bool isOpen() const { return m_interface != nullptr; }

signals:
    /// The user wants the settings window in front.
    void settingsRequested();
    void quitRequested();
    /// Everything that the panel took has been freed.
    void freed();

private:
    struct Interface;

    void moveToPlace();
    void follow(bool isActive);

    AppState& m_state;
    Clock m_clock;
    std::optional<QRect> m_place;
    std::unique_ptr<Interface> m_interface; // Null while closed.
    bool m_hadFocus = false;
    std::optional<std::chrono::steady_clock::time_point> m_lostFocus; // When that closed it.
};

} // namespace clavo
