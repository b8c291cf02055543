// SPDX-License-Identifier: MIT
#include "ui/HoverPreview.h"

#include "fakes/SimulatedTime.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

class HoverPreviewTest : public testing::Test
{
protected:
    HoverPreviewTest()
    {
        QObject::connect(hover.get(), &HoverPreview::rested,
                         [this](const QString& packID) { heard += packID; });
    }

    SimulatedTime time;
    QStringList heard; // The packs that were asked for.
    std::unique_ptr<HoverPreview> hover = std::make_unique<HoverPreview>(time.makeTimer());
};

TEST_F(HoverPreviewTest, AsksForAPackAfterARestOf380Milliseconds)
{
    hover->enter("red");
    time.advance(379ms);
    EXPECT_EQ(heard, QStringList());

    time.advance(1ms);
    EXPECT_EQ(heard, QStringList("red"));
}

TEST_F(HoverPreviewTest, AsksOnceForARest)
{
    hover->enter("red");

    time.advance(10s);

    EXPECT_EQ(heard, QStringList("red"));
}

TEST_F(HoverPreviewTest, APackThatIsLeftInTimeIsNotHeard)
{
    hover->enter("red");
    time.advance(379ms);

    hover->leave("red");
    time.advance(10s);

    EXPECT_EQ(heard, QStringList());
}

TEST_F(HoverPreviewTest, OnlyThePackWhereThePointerStopsIsHeard)
{
    for (const auto* packID : {"red", "brown", "blue"}) {
        hover->enter(packID);
        time.advance(100ms);
        hover->leave(packID);
    }
    hover->enter("cream");

    time.advance(10s);

    EXPECT_EQ(heard, QStringList("cream"));
}

TEST_F(HoverPreviewTest, ALeaveThatComesAfterTheNextEnterChangesNothing)
{
    hover->enter("red");
    time.advance(100ms);

    hover->enter("brown");
    hover->leave("red");
    EXPECT_EQ(hover->hovered(), "brown");

    time.advance(380ms);
    EXPECT_EQ(heard, QStringList("brown"));
}

TEST_F(HoverPreviewTest, TheWaitBeginsAnewWithEveryPack)
{
    hover->enter("red");
    time.advance(379ms);
    hover->enter("brown");
    time.advance(379ms);
    EXPECT_EQ(heard, QStringList());

    time.advance(1ms);
    EXPECT_EQ(heard, QStringList("brown"));
}

TEST_F(HoverPreviewTest, APackIsHeardAgainWhenThePointerComesBack)
{
    hover->enter("red");
    time.advance(380ms);
    hover->leave("red");

    hover->enter("red");
    time.advance(380ms);

    EXPECT_EQ(heard, QStringList({"red", "red"}));
}

TEST_F(HoverPreviewTest, KnowsThePackUnderThePointer)
{
    EXPECT_EQ(hover->hovered(), "");

    hover->enter("red");
    EXPECT_EQ(hover->hovered(), "red");
    time.advance(380ms);
    EXPECT_EQ(hover->hovered(), "red");

    hover->leave("red");
    EXPECT_EQ(hover->hovered(), "");
}

TEST_F(HoverPreviewTest, NothingIsHeardOnceItIsGone)
{
    hover->enter("red");

    hover.reset();
    time.advance(10s);

    EXPECT_EQ(heard, QStringList());
}

} // namespace
} // namespace clavo
