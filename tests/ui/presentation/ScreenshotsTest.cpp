// SPDX-License-Identifier: MIT
#include "presentation/Screenshots.h"

#include "ui/presentation/PresentationFixture.h"

#include <QImageReader>

#include <gmock/gmock.h>

#include <set>
#include <sstream>
#include <string>

namespace clavo
{
namespace
{

using testing::ElementsAre;

namespace fs = std::filesystem;

class ScreenshotsTest : public PresentationFixture
{
protected:
    void renderInto(const fs::path& folder)
    {
        Screenshots::renderAll(folder, state(), language(), m_errors);
    }
    [[nodiscard]] std::string errors() const { return m_errors.str(); }

    static std::set<std::string> files(const fs::path& folder)
    {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder))
            names.insert(entry.path().filename().string());
        return names;
    }

    TemporaryFolder place;

private:
    std::ostringstream m_errors;
};

TEST_F(ScreenshotsTest, AreFivePicturesOfOneSizeWithoutAlpha)
{
    const auto folder = place.path() / "new" / "pictures";

    renderInto(folder);

    EXPECT_THAT(files(folder), ElementsAre("1-menu-bar.png", "2-switches.png", "3-instant.png",
                                           "4-statistics.png", "5-privacy.png"));
    EXPECT_EQ(errors(), "");
    for (const auto& name : files(folder)) {
        const auto picture = QImage(QString::fromStdString((folder / name).string()));
        EXPECT_EQ(picture.size(), QSize(2880, 1800)) << name;
        EXPECT_FALSE(picture.hasAlphaChannel()) << name;
    }
}

TEST_F(ScreenshotsTest, WhatCannotBeWrittenIsLeftOut)
{
    fs::create_directories(place.path() / "3-instant.png" / "in the way");

    renderInto(place.path());

    EXPECT_EQ(errors(),
              "clavo: cannot write into '" + place.path().string() + "': 3-instant.png\n");
    EXPECT_TRUE(fs::is_regular_file(place.path() / "2-switches.png"));
    EXPECT_TRUE(fs::is_regular_file(place.path() / "4-statistics.png"));
}

TEST_F(ScreenshotsTest, AFolderThatCannotBeMadeIsOneLine)
{
    writeFile(place.path() / "file", "");

    renderInto(place.path() / "file" / "pictures");

    EXPECT_EQ(errors(), "clavo: cannot make the folder '" +
                            (place.path() / "file" / "pictures").string() + "'\n");
}

TEST_F(ScreenshotsTest, DrawTheSameTwice)
{
    const auto picture = [this] {
        return Screenshots::snapshot(
            *Screenshots::makeSlide(engine, "InstantSlide", state(), language()));
    };

    EXPECT_EQ(picture(), picture());
}

} // namespace
} // namespace clavo
