// SPDX-License-Identifier: MIT
#include "desktop/tray/ItemIcon.h"
#include "desktop/tray/TranslucentTray.h"
#include "desktop/tray/TrayFixture.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

constexpr auto dataFolders = "XDG_DATA_DIRS";

class StatusNotifierIconTest : public TrayFixture
{
protected:
    ~StatusNotifierIconTest() override { qputenv(dataFolders, m_dataFolders); }

    /// Starts the program in a session that has these folders of icon themes.
    [[nodiscard]] bool isRegisteredWith(const QByteArray& folders)
    {
        startStatusNotifierHost();
        qputenv(dataFolders, folders);
        startProgram();
        return isRegistered();
    }

    [[nodiscard]] static ItemIcon icon() { return iconOf(registeredItems().first()); }

    [[nodiscard]] static bool becomes(const QColor& color)
    {
        return EventLoop::until([&] {
            const auto picture = icon().picture;
            return picture.pixelColor(picture.width() / 2, picture.height() / 2) == color;
        });
    }

private:
    QByteArray m_dataFolders = qgetenv(dataFolders);
};

TEST_F(StatusNotifierIconTest, IsNamedWhereTheThemesOfTheSessionHaveIt)
{
    ASSERT_TRUE(isRegisteredWith(CLAVO_DATA_FOLDER));

    EXPECT_TRUE(EventLoop::until([] { return icon().name == "app.clavo.Clavo-symbolic"; }));
    EXPECT_FALSE(icon().picture.isNull());

    tell("off");
    EXPECT_TRUE(EventLoop::until([] { return icon().name == "app.clavo.Clavo-off-symbolic"; }));
}

TEST_F(StatusNotifierIconTest, IsAPictureWhereTheThemesOfTheSessionDoNotHaveIt)
{
    ASSERT_TRUE(isRegisteredWith("/nowhere"));

    EXPECT_EQ(icon().name, "");
    EXPECT_EQ(icon().picture.size(), QSize(16, 16));
}

TEST_F(StatusNotifierIconTest, FollowsThePalette)
{
    ASSERT_TRUE(isRegisteredWith("/nowhere"));

    tell("dark");
    EXPECT_TRUE(becomes(Qt::white));
    tell("light");
    EXPECT_TRUE(becomes(Qt::black));
}

TEST_F(StatusNotifierIconTest, PrefersTheDesktopsSettingToThePalette)
{
    ASSERT_TRUE(isRegisteredWith("/nowhere"));
    tell("dark");
    ASSERT_TRUE(becomes(Qt::white));

    tell("wishes light");
    EXPECT_TRUE(becomes(Qt::black));
    tell("wishes dark");
    EXPECT_TRUE(becomes(Qt::white));
}

class TranslucentTrayTest : public TrayFixture
{
protected:
    static constexpr QPoint corner{0, 0};
    static constexpr QPoint edge{8, 3};
};

TEST_F(TranslucentTrayTest, IsSeenAroundTheIcon)
{
    TranslucentTray tray;
    startProgram();

    ASSERT_TRUE(EventLoop::until([&] { return tray.pixel(edge) == QColor(Qt::black); }));
    EXPECT_EQ(tray.pixel(corner), QColor(Qt::transparent));
}

TEST_F(TranslucentTrayTest, GivesTheIconItsColor)
{
    const QColor color(0x20, 0xff, 0x80);
    TranslucentTray tray(color);
    startProgram();

    EXPECT_TRUE(EventLoop::until([&] { return tray.pixel(edge) == color; }));
}

} // namespace
} // namespace clavo
