// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsFixture.h"

#include "stats/SnapshotFile.h"
#include "ui/LocaleText.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

#include <fstream>
#include <iterator>

namespace clavo
{
namespace
{

using testing::Contains;
using testing::Each;
using testing::Not;
using testing::SizeIs;

class StatsTab : public SettingsFixture
{
protected:
    void openTab() { open(Tab::stats); }

    QString figure(const QString& name)
    {
        auto* const value = item(name).findChild<QQuickItem*>("value");
        return value->property("text").toString();
    }

    std::vector<QQuickItem*> parts(const QString& name)
    {
        std::vector<QQuickItem*> found;
        for (auto* const day : itemsNamed("day")) {
            for (auto* const part : day->childItems()) {
                if (part->objectName() == name)
                    found.push_back(part);
            }
        }
        return found;
    }

    std::vector<double> barHeights()
    {
        std::vector<double> heights;
        for (auto* const bar : parts("bar"))
            heights.push_back(bar->height());
        return heights;
    }

    /// Types, and waits until the figures have followed.
    void type(int keys, bool characters = false)
    {
        for (int i = 0; i < keys; ++i)
            state().stats()->record(characters);
        const auto total = groupedNumber(state().stats()->total());
        EXPECT_TRUE(QTest::qWaitFor([&] { return figure("total") == total; }));
    }

    static QFileDialog* saveDialog()
    {
        for (auto* const widget : QApplication::topLevelWidgets()) {
            if (auto* const dialog = qobject_cast<QFileDialog*>(widget);
                dialog && dialog->isVisible())
                return dialog;
        }
        return nullptr;
    }

    TemporaryFolder folder;
};

TEST_F(StatsTab, ShowsTheFourFigures)
{
    openTab();

    type(1234);

    EXPECT_EQ(figure("today"), "1,234");
    EXPECT_EQ(figure("streak"), "1 d");
    EXPECT_EQ(figure("best"), "0 WPM");
    EXPECT_EQ(figure("total"), "1,234");
    EXPECT_THAT(allTexts(), testing::IsSupersetOf({"Today", "Streak", "Best", "Total"}));
}

TEST_F(StatsTab, NothingFollowsWithinTheKey)
{
    openTab();

    state().stats()->record(false);

    EXPECT_EQ(figure("total"), "0");
    EXPECT_THAT(barHeights(), Each(0.0));
}

TEST_F(StatsTab, TheBestIsTheStoredOneAlone)
{
    openTab();

    type(100, true);

    EXPECT_GT(state().stats()->currentWPM(), 0);
    EXPECT_EQ(figure("best"), "0 WPM");
}

TEST_F(StatsTab, NumbersGrowWithoutMovingAnything)
{
    openTab();
    const auto before = item("total").mapRectToScene(item("total").boundingRect());

    type(12345);
    settle();

    EXPECT_EQ(item("total").mapRectToScene(item("total").boundingRect()), before);
}

TEST_F(StatsTab, TheChartHasABarForEachOfFourteenDays)
{
    openTab();

    EXPECT_THAT(barHeights(), SizeIs(14));
    EXPECT_THAT(barHeights(), Each(0.0));
    EXPECT_EQ(item("chart").height(), 170);
}

TEST_F(StatsTab, EverySecondDayHasALabelInTheUsersLocale)
{
    QLocale::setDefault(QLocale("de_DE"));
    openTab();

    QStringList labels;
    for (auto* const label : parts("label")) {
        if (label->isVisible())
            labels.append(label->property("text").toString());
    }
    EXPECT_THAT(labels, SizeIs(7));
    const auto first = state().stats()->lastDays().front().date.date();
    EXPECT_EQ(labels.front(), QLocale("de_DE").toString(first, "d. MMM"));
}

TEST_F(StatsTab, ABarIsAGradientWithRoundCorners)
{
    openTab();
    type(10);

    EXPECT_EQ(parts("bar").back()->property("radius").toDouble(), 4);
    EXPECT_GT(barHeights().back(), 100);
}

TEST_F(StatsTab, ABarIsNamedAfterItsDayAndKeys)
{
    openTab();
    type(1500);

    EXPECT_THAT(nameOf(*itemsNamed("day").back()), testing::EndsWith(", Keys 1,500"));
}

TEST_F(StatsTab, NamesTheStreaksThreshold)
{
    openTab();

    EXPECT_THAT(allTexts(), Contains("A day counts toward the streak from 50 keys. Stored only on "
                                     "this Mac."));
    EXPECT_EQ(StatsStore::qualifyingCount, 50);
}

TEST_F(StatsTab, EraseEmptiesEverythingAtOnce)
{
    openTab();
    type(60);

    click(control("Reset…"));
    EXPECT_THAT(allTexts(), Contains("Erase all statistics?"));
    click(control("Erase"));

    EXPECT_EQ(figure("today"), "0");
    EXPECT_EQ(figure("streak"), "0 d");
    EXPECT_EQ(figure("total"), "0");
    EXPECT_THAT(barHeights(), Each(0.0));
    EXPECT_THAT(allTexts(), Not(Contains("Erase all statistics?")));
}

TEST_F(StatsTab, EraseEmptiesTheFileTwoSecondsLater)
{
    openTab();
    type(60);
    time.advance(2000ms);
    const auto file = state().packsFolder().parent_path() / "stats.json";
    ASSERT_EQ(loadSnapshot(file).total, 60);

    click(control("Reset…"));
    click(control("Erase"));

    time.advance(1999ms);
    EXPECT_EQ(loadSnapshot(file).total, 60);
    time.advance(1ms);
    EXPECT_EQ(loadSnapshot(file), StatsSnapshot());
}

TEST_F(StatsTab, CancellingErasesNothing)
{
    openTab();
    type(60);

    click(control("Reset…"));
    click(control("Cancel"));

    EXPECT_EQ(figure("today"), "60");
    EXPECT_THAT(allTexts(), Not(Contains("Erase all statistics?")));
}

TEST_F(StatsTab, EscapeCancelsTheQuestionAndNotTheWindow)
{
    openTab();
    type(60);
    click(control("Reset…"));

    press(Qt::Key_Escape);

    EXPECT_EQ(figure("today"), "60");
    EXPECT_THAT(allTexts(), Not(Contains("Erase all statistics?")));
    EXPECT_TRUE(settings().isOpen());
}

TEST_F(StatsTab, ReturnDoesNotErase)
{
    openTab();
    type(60);
    click(control("Reset…"));

    press(Qt::Key_Return);

    EXPECT_EQ(figure("today"), "60");
}

TEST_F(StatsTab, ExportAsksWithTheProposedName)
{
    openTab();

    click(control("Export as JSON…"));

    auto* const dialog = saveDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog->findChild<QLineEdit*>()->text(), "clavo-stats.json");
    EXPECT_EQ(dialog->mimeTypeFilters(), QStringList("application/json"));
}

TEST_F(StatsTab, ExportWritesSortedAndIndentedMembers)
{
    openTab();
    type(3);
    click(control("Export as JSON…"));
    auto* const dialog = saveDialog();
    ASSERT_NE(dialog, nullptr);
    const auto file = folder.path() / "mine.json";

    dialog->findChild<QLineEdit*>()->setText(QString::fromStdString(file.string()));
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();

    std::ifstream stream(file);
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    EXPECT_EQ(text, exportJson(state().stats()->data()));
    const auto best = text.find("\n    \"bestWPM\"");
    const auto daily = text.find("\n    \"daily\"");
    const auto total = text.find("\n    \"total\"");
    EXPECT_LT(best, daily);
    EXPECT_LT(daily, total);
    EXPECT_NE(total, std::string::npos);
}

TEST_F(StatsTab, ACancelledExportWritesNothing)
{
    openTab();
    click(control("Export as JSON…"));
    ASSERT_NE(saveDialog(), nullptr);
    saveDialog()->setDirectory(QString::fromStdString(folder.path().string()));

    saveDialog()->reject();

    EXPECT_EQ(saveDialog(), nullptr);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(StatsTab, AnExportThatCannotBeWrittenIsNotMentioned)
{
    openTab();
    const auto before = allTexts();
    click(control("Export as JSON…"));
    ASSERT_NE(saveDialog(), nullptr);
    const auto file = folder.path() / "gone" / "mine.json";

    auto* const dialog = saveDialog();
    emit dialog->fileSelected(QString::fromStdString(file.string()));
    dialog->reject();

    EXPECT_EQ(allTexts(), before);
    EXPECT_EQ(saveDialog(), nullptr);
}

} // namespace
} // namespace clavo
