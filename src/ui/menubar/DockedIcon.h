// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>
#include <QRasterWindow>

namespace clavo
{

/// The window that an XEmbed host takes into its tray. The host puts it on the screen; shown
/// before, it would be seen where it is not yet in the tray.
///
/// Where the tray does not show through, a window has no transparency: so it has the shape of the
/// icon, and what is half transparent is mixed with a backdrop.
class DockedIcon : public QRasterWindow
{
    Q_OBJECT

public:
    enum class Background {
        tray,     // Shows through.
        backdrop, // Within the shape of the icon.
    };

    explicit DockedIcon(Background background);

    void setIcon(const QIcon& icon, const QColor& backdrop);

signals:
    /// With the icon's place on the screen.
    void clicked(const QRect& place);
    void menuRequested(const QRect& place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void cutOut();

    const Background m_background;
    QIcon m_icon;
    QColor m_backdrop;
};

} // namespace clavo
