// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QProcess>
#include <QRect>
#include <QSize>
#include <QString>

#include <vector>

namespace clavo
{

/// A window as the compositor has it.
struct CompositorWindow {
    QString program; // As it calls itself to the compositor.
    QString title;
    QRect place;
    bool isFloating = false; // Not made as large as there is room for.
    bool hasFocus = false;
};

/// The compositor of the Wayland desktop that the test runs on, and a keyboard plugged in there,
/// which is not one of the kernel's.
class Compositor
{
public:
    Compositor();
    ~Compositor();
    Compositor(const Compositor&) = delete;
    Compositor& operator=(const Compositor&) = delete;

    [[nodiscard]] static std::vector<CompositorWindow> windows();
    /// Takes the focus from every window.
    static void leaveWindows();
    static void resizeScreen(QSize size);
    /// What is on the screen.
    [[nodiscard]] static QImage picture();

    /// Strikes a key, by the name of what it types, for the window that has the focus.
    static void strike(const QString& key);
    static void strikeWithControl(const QString& key);

private:
    QProcess m_keyboard;
};

} // namespace clavo
