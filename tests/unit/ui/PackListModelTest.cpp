// SPDX-License-Identifier: MIT
#include "ui/PackListModel.h"

#include "unit/app/AppStateFixture.h"
#include "unit/packs/PackFiles.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class PackListModelTest : public AppStateFixture
{
protected:
    void addPack(std::string_view id, std::string_view name, std::string_view category)
    {
        addPack(builtInPacks() / id, id, name, category);
    }
    void addCustomPack(std::string_view id, std::string_view name, std::string_view category)
    {
        addPack(customPacks() / id, id, name, category);
    }

    PackListModel& model()
    {
        if (!m_model.appState())
            m_model.setAppState(&state());
        return m_model;
    }

    std::vector<std::string> column(PackListModel::Role role)
    {
        std::vector<std::string> texts;
        texts.reserve(static_cast<std::size_t>(model().count()));
        for (int row = 0; row < model().count(); ++row)
            texts.push_back(model().data(model().index(row), role).toString().toStdString());
        return texts;
    }

private:
    static void addPack(const std::filesystem::path& folder, std::string_view id,
                        std::string_view name, std::string_view category)
    {
        writeFile(folder / "pack.json", manifestText("", "", id, name, category));
    }

    PackListModel m_model;
};

TEST_F(PackListModelTest, GroupsThePacksByCategoryInTheOrderOfTheLibrary)
{
    addPack("topre", "Topre", "special");
    addPack("blue", "Blue", "clicky");
    addPack("red", "Red", "linear");
    addPack("brown", "Brown", "tactile");
    addPack("black", "Black", "linear");
    addCustomPack("mine", "Mine", "linear");

    EXPECT_THAT(column(PackListModel::nameRole),
                ElementsAre("Black", "Red", "Brown", "Blue", "Topre", "Mine"));
    EXPECT_THAT(column(PackListModel::packIDRole),
                ElementsAre("black", "red", "brown", "blue", "topre", "custom:mine"));
    EXPECT_THAT(column(PackListModel::categoryRole),
                ElementsAre("linear", "linear", "tactile", "clicky", "special", "custom"));
    EXPECT_THAT(column(PackListModel::categoryTitleRole),
                ElementsAre("Linear", "Linear", "Tactile", "Clicky", "Special", "My packs"));
}

TEST_F(PackListModelTest, ACategoryWithoutPacksDoesNotAppear)
{
    addPack("red", "Red", "linear");
    addPack("topre", "Topre", "special");

    EXPECT_THAT(column(PackListModel::categoryTitleRole), ElementsAre("Linear", "Special"));
}

TEST_F(PackListModelTest, MarksThePackThatTheSettingsName)
{
    addPack("red", "Red", "linear");
    addPack("brown", "Brown", "tactile");
    state().setPackID("brown");

    EXPECT_THAT(column(PackListModel::selectedRole), ElementsAre("false", "true"));
    EXPECT_EQ(model().selectedRow(), 1);
}

TEST_F(PackListModelTest, MarksNothingWhileTheNamedPackIsNotThere)
{
    addPack("red", "Red", "linear");
    state().setPackID("deleted");

    EXPECT_THAT(column(PackListModel::selectedRole), ElementsAre("false"));
    EXPECT_EQ(model().selectedRow(), -1);
}

TEST_F(PackListModelTest, TheMarkMovesWithTheSelection)
{
    addPack("red", "Red", "linear");
    addPack("brown", "Brown", "tactile");
    state().setPackID("red");
    const QSignalSpy changes(&model(), &QAbstractItemModel::dataChanged);
    const QSignalSpy resets(&model(), &QAbstractItemModel::modelReset);

    state().setPackID("brown");

    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(resets.count(), 0);
    EXPECT_THAT(column(PackListModel::selectedRole), ElementsAre("false", "true"));
}

TEST_F(PackListModelTest, ShowsPacksThatComeAndGo)
{
    addPack("red", "Red", "linear");
    EXPECT_THAT(column(PackListModel::nameRole), ElementsAre("Red"));

    addCustomPack("mine", "Mine", "linear");
    std::filesystem::remove_all(builtInPacks() / "red");
    state().reloadPacks();

    EXPECT_THAT(column(PackListModel::nameRole), ElementsAre("Mine"));
}

TEST_F(PackListModelTest, IsEmptyWithoutPacks)
{
    EXPECT_THAT(column(PackListModel::nameRole), IsEmpty());
    EXPECT_EQ(model().selectedRow(), -1);
}

} // namespace
} // namespace clavo
