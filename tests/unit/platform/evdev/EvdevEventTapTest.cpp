// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevEventTap.h"

#include "fakes/FakeScreens.h"
#include "fakes/TemporaryFolder.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <fstream>

namespace clavo
{
namespace
{

class EvdevEventTapTest : public testing::Test
{
protected:
    [[nodiscard]] bool create(const std::filesystem::path& path)
    {
        const auto tap = makeEvdevEventTap(screens, path);
        return tap->create(~EventMask{0}, [this](const RawEvent&) { ++events; });
    }

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    TemporaryFolder folder;
    FakeScreens screens;
    int events = 0;
};

TEST_F(EvdevEventTapTest, WithoutAFolderOfDevicesItIsRefused)
{
    EXPECT_FALSE(create(folder.path() / "missing"));
}

TEST_F(EvdevEventTapTest, WithoutAKeyboardItIsRefused)
{
    std::ofstream(folder.path() / "event0") << "text";
    std::filesystem::create_symlink("/dev/null", folder.path() / "event1");
    std::filesystem::create_directory(folder.path() / "event2");

    EXPECT_FALSE(create(folder.path()));
}

TEST_F(EvdevEventTapTest, AfterARefusalItMayBeAskedAgainAndReportsNothing)
{
    const auto tap = makeEvdevEventTap(screens, folder.path());
    const auto count = [this](const RawEvent&) { ++events; };
    ASSERT_FALSE(tap->create(~EventMask{0}, count));

    std::ofstream(folder.path() / "event0") << "text";
    QCoreApplication::processEvents();

    EXPECT_FALSE(tap->create(~EventMask{0}, count));
    EXPECT_EQ(events, 0);
}

} // namespace
} // namespace clavo
