// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QIcon>
#include <QRasterWindow>
#include <QRect>

namespace clavo
{

/// The window that an XEmbed host embeds into its tray. Only the host shows it: a window shown
/// earlier would appear outside the tray.
///
/// In a tray that does not show through, windows have no transparency. The window then has the
/// shape of the icon, and translucent pixels are blended with a backdrop colour.
class DockedIcon : public QRasterWindow
{
    Q_OBJECT

public:
    enum class Background {
        tray,     // Shows through the window.
        backdrop, // Fills the shape of the icon.
    };

    explicit DockedIcon(Background background);

    void setIcon(const QIcon& icon, const QColor& backdrop);

signals:
    // The place is the icon's on the screen.
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
