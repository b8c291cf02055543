// SPDX-License-Identifier: MIT
#include "presentation/Screenshots.h"

#include "ui/controls/Symbol.h"
#include "ui/presentation/PresentationFixture.h"
#include "ui/windows/WindowReader.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>

namespace clavo
{
namespace
{

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

class Slides : public PresentationFixture, protected WindowReader
{
protected:
    /// Makes the slide that is looked at.
    void show(const QString& type)
    {
        m_slide = Screenshots::makeSlide(engine, type, state(), language());
        m_slide->setParentItem(m_window.contentItem());
        m_window.resize(1440, 900);
        m_window.show();
        m_window.grabWindow(); // Everything has its place then.
    }

    Texts symbols()
    {
        Texts names;
        for (const auto* const item : visibleItems([](const QQuickItem& each) {
                 return qobject_cast<const Symbol*>(&each) != nullptr;
             })) {
            const auto* const symbol = qobject_cast<const Symbol*>(item);
            EXPECT_TRUE(symbol->isValid()) << symbol->name().toStdString();
            names.push_back(symbol->name().toStdString());
        }
        return names;
    }
    Texts titles()
    {
        Texts found;
        for (const auto* const each : visibleItems([](const QQuickItem& item) {
                 return item.objectName() == "title" || item.objectName() == "subtitle";
             }))
            found.push_back(each->property("text").toString().toStdString());
        return found;
    }

private:
    QQuickItem& content() override { return *m_slide; }

    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_slide;
};

TEST_F(Slides, HeroShowsThePanelUnderTheMenuBar)
{
    show("HeroSlide");

    EXPECT_THAT(titles(),
                ElementsAre("Your keyboard, now satisfying.",
                            "Real mechanical keyboard sounds for every key, right from your menu "
                            "bar."));
    EXPECT_THAT(symbols(), IsSupersetOf({"keycap", "keyboard.fill", "wifi", "magnifyingglass",
                                         "battery.75percent"}));
    EXPECT_THAT(texts("clock"), ElementsAre("9:41"));
    EXPECT_THAT(allTexts(), IsSupersetOf({"5,284", "keys today", "14", "92", "Quit"}));
    EXPECT_THAT(texts("selectedPack"), ElementsAre("NK Cream"));
    EXPECT_THAT(itemsNamed("permissionCard"), IsEmpty());
}

TEST_F(Slides, SwitchesShowACardForEveryPackInItsColour)
{
    show("SwitchesSlide");

    EXPECT_THAT(titles(),
                ElementsAre("8 real switches, recorded key by key.",
                            "Linear, tactile, clicky or Topre. Hover to hear, click to switch."));
    EXPECT_THAT(texts("packName"), ElementsAre("NK Cream", "Brown", "Blue", "Topre", "Mine"));
    EXPECT_THAT(texts("packCategory"),
                ElementsAre("Linear", "Tactile", "Clicky", "Special", "My packs"));
    EXPECT_THAT(symbols(), Contains("waveform"));
    std::vector<QColor> tints;
    for (const auto* const card : itemsNamed("card"))
        tints.push_back(card->property("tint").value<QColor>());
    const auto violet = QColor::fromRgbF(0.75F, 0.5F, 1.0F);
    EXPECT_THAT(tints, ElementsAre(QColor::fromRgbF(0.36F, 0.62F, 1.0F),
                                   QColor::fromRgbF(1.0F, 0.6F, 0.2F),
                                   QColor::fromRgbF(0.3F, 0.85F, 0.75F), violet, violet));
}

TEST_F(Slides, CardsStayOnTheSlideHoweverManyThereAre)
{
    for (int i = 0; i < 40; ++i)
        writeFile(customPacks() / std::to_string(i) / "pack.json",
                  manifestText("", "", std::to_string(i), "Pack"));
    show("SwitchesSlide");

    const auto cards = itemsNamed("card");
    ASSERT_EQ(cards.size(), 45U);
    for (const auto* const card : cards)
        EXPECT_TRUE(
            QRectF(0, 240, 1440, 660).contains(card->mapRectToScene(QRectF({}, card->size()))));
}

TEST_F(Slides, InstantShowsTheRowsOfTheKeyboardAndOneKeySounding)
{
    show("InstantSlide");

    EXPECT_THAT(titles(),
                ElementsAre("Sounds right. Feels instant.",
                            "Each sound starts 2 ms before impact, comes from the key's position "
                            "and never repeats exactly."));
    std::string keys;
    for (const auto& legend : texts("legend"))
        keys += legend;
    // The lit key is drawn over the others.
    EXPECT_EQ(keys, "1234567890QWERTYUIOPASDFGHJLZXCVBNMK");
    EXPECT_EQ(itemsNamed("litKey").size(), 1U);
    EXPECT_EQ(itemsNamed("wave").size(), 3U);
    EXPECT_THAT(symbols(), ElementsAre("speaker.wave.2.fill"));
    EXPECT_THAT(texts("figureValue"), ElementsAre("2 ms", "×5", "114"));
    EXPECT_THAT(texts("figureLabel"),
                ElementsAre("before impact", "pitch variations", "keys recorded"));
}

TEST_F(Slides, StatisticsShowTwoWeeks)
{
    show("StatsSlide");

    EXPECT_THAT(titles(), ElementsAre("Your typing, in numbers.",
                                      "Keys per day, streaks and your best speed. Stored only on "
                                      "your Mac."));
    EXPECT_THAT(texts("windowTitle"), ElementsAre("Statistics"));
    EXPECT_THAT(texts("caption"), IsSupersetOf({"Today", "Streak", "Best", "Total"}));
    EXPECT_THAT(texts("value"), ElementsAre("5,284", "14 d", "92 WPM", "484,204"));
    EXPECT_EQ(itemsNamed("bar").size(), 14U);
}

TEST_F(Slides, PrivacyShowsItsPointsBesideTheSettings)
{
    show("PrivacySlide");

    EXPECT_THAT(titles(), ElementsAre("Private by design.",
                                      "Clavo hears that a key moved, never which one."));
    EXPECT_THAT(texts("point"), ElementsAre("Nothing recorded, nothing sent",
                                            "Silent in password fields", "Mute anywhere with ⇧⌘K"));
    EXPECT_THAT(symbols(), IsSupersetOf({"lock.shield.fill", "key.fill", "speaker.slash.fill"}));
    EXPECT_THAT(texts("windowTitle"), ElementsAre("General"));
    EXPECT_THAT(allTexts(), AllOf(Contains("Granted"), Not(Contains("Grant…"))));
}

} // namespace
} // namespace clavo
