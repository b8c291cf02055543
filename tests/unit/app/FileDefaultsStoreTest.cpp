// SPDX-License-Identifier: MIT
#include "FileDefaultsStoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <fstream>
#include <string>

namespace clavo
{
namespace
{

using testing::Eq;
using testing::HasSubstr;
using testing::Optional;

using FileDefaultsStoreTest = FileDefaultsStoreFixture;

TEST_F(FileDefaultsStoreTest, RegisteredDefaultsAnswerAndAreNeverWritten)
{
    const auto defaults = store();

    defaults->registerDefaults({{"enabled", true}, {"packID", std::string("red")}});

    EXPECT_THAT(defaults->value("enabled"), Optional(DefaultsValue(true)));
    EXPECT_THAT(defaults->value("packID"), Optional(DefaultsValue(std::string("red"))));
    EXPECT_FALSE(std::filesystem::exists(m_file));
}

TEST_F(FileDefaultsStoreTest, UnknownKeyHasNoValue)
{
    EXPECT_THAT(store()->value("nothing"), Eq(std::nullopt));
}

TEST_F(FileDefaultsStoreTest, EveryTypeSurvivesARestart)
{
    const std::vector<std::string> languages{"fr", "de"};
    const auto first = store();
    first->setValue("enabled", false);
    first->setValue("volume", 0.25);
    first->setValue("packID", std::string("custom:é"));
    first->setValue("AppleLanguages", languages);

    const auto second = store();

    EXPECT_THAT(second->value("enabled"), Optional(DefaultsValue(false)));
    EXPECT_THAT(second->value("volume"), Optional(DefaultsValue(0.25)));
    EXPECT_THAT(second->value("packID"), Optional(DefaultsValue(std::string("custom:é"))));
    EXPECT_THAT(second->value("AppleLanguages"), Optional(DefaultsValue(languages)));
}

TEST_F(FileDefaultsStoreTest, WholeNumberReadsAsDouble)
{
    write(R"({"volume": 1})");

    EXPECT_THAT(store()->value("volume"), Optional(DefaultsValue(1.0)));
}

TEST_F(FileDefaultsStoreTest, ValueOfAnotherTypeThanItsDefaultCountsAsAbsent)
{
    write(R"({"volume": "loud", "packID": 7})");
    const auto defaults = store();

    defaults->registerDefaults({{"volume", 0.8}, {"packID", std::string("red")}});

    EXPECT_THAT(defaults->value("volume"), Optional(DefaultsValue(0.8)));
    EXPECT_THAT(defaults->value("packID"), Optional(DefaultsValue(std::string("red"))));
}

TEST_F(FileDefaultsStoreTest, MembersOfAnotherVersionAreKept)
{
    write(R"({"future": {"deep": [1, null]}, "enabled": true})");

    store()->setValue("enabled", false);

    EXPECT_THAT(contents(m_file), HasSubstr("\"deep\""));
    EXPECT_THAT(store()->value("enabled"), Optional(DefaultsValue(false)));
}

TEST_F(FileDefaultsStoreTest, MemberThatIsNestedWithoutEndIsSetAsideWithItsFile)
{
    const auto text =
        R"({"future": )" + std::string(400'000, '[') + std::string(400'000, ']') + "}";
    write(text);

    store()->setValue("enabled", false);

    EXPECT_THAT(store()->value("enabled"), Optional(DefaultsValue(false)));
    EXPECT_TRUE(contents(m_file.native() + ".broken") == text);
}

TEST_F(FileDefaultsStoreTest, SecondBrokenFileLeavesTheFirstOneSetAside)
{
    write("first");
    store()->setValue("volume", 0.5);
    write("second");

    store()->setValue("volume", 0.5);

    EXPECT_EQ(contents(m_file.native() + ".broken"), "first");
    EXPECT_EQ(contents(m_file.native() + ".broken-2"), "second");
}

TEST_F(FileDefaultsStoreTest, BrokenFileBehindALinkIsSetAsideAndTheLinkStays)
{
    const auto target = m_folder.path() / "elsewhere.json";
    std::ofstream(target) << "no JSON at all";
    std::filesystem::create_directories(m_file.parent_path());
    std::filesystem::create_symlink(target, m_file);

    store()->setValue("volume", 0.25);

    EXPECT_TRUE(std::filesystem::is_symlink(m_file));
    EXPECT_THAT(contents(target), HasSubstr("0.25"));
    EXPECT_EQ(contents(target.native() + ".broken"), "no JSON at all");
}

TEST_F(FileDefaultsStoreTest, RemovedValueIsForgottenAcrossARestart)
{
    const auto first = store();
    first->registerDefaults({{"volume", 0.8}});
    first->setValue("volume", 0.25);
    first->setValue("enabled", false);

    first->removeValue("volume");

    EXPECT_THAT(first->value("volume"), Optional(DefaultsValue(0.8)));
    EXPECT_THAT(store()->value("volume"), Eq(std::nullopt));
    EXPECT_THAT(store()->value("enabled"), Optional(DefaultsValue(false)));
}

TEST_F(FileDefaultsStoreTest, RemovingWhatIsNotStoredWritesNothing)
{
    const auto defaults = store();
    defaults->registerDefaults({{"volume", 0.8}});

    defaults->removeValue("volume");

    EXPECT_THAT(defaults->value("volume"), Optional(DefaultsValue(0.8)));
    EXPECT_FALSE(std::filesystem::exists(m_file));
}

TEST_F(FileDefaultsStoreTest, ValueIsInMemoryWhenTheFolderCannotBeWritten)
{
    std::ofstream(m_folder.path() / "Clavo") << "a file where the folder should be";
    const auto defaults = store();

    defaults->setValue("volume", 0.5);

    EXPECT_THAT(defaults->value("volume"), Optional(DefaultsValue(0.5)));
}

TEST_F(FileDefaultsStoreTest, ForgottenChangesAreSeenAndNeverReachTheFile)
{
    write(R"({"volume":0.5,"enabled":true})");
    const auto defaults = makeFileDefaultsStore(m_file, DefaultsChanges::forgotten);

    EXPECT_THAT(defaults->value("volume"), Optional(DefaultsValue(0.5)));
    defaults->setValue("volume", 0.25);
    defaults->removeValue("enabled");

    EXPECT_THAT(defaults->value("volume"), Optional(DefaultsValue(0.25)));
    EXPECT_THAT(defaults->value("enabled"), Eq(std::nullopt));
    EXPECT_EQ(contents(m_file), R"({"volume":0.5,"enabled":true})");
}

TEST_F(FileDefaultsStoreTest, WhereChangesAreForgottenABrokenFileStaysInItsPlace)
{
    write("no JSON at all");

    const auto defaults = makeFileDefaultsStore(m_file, DefaultsChanges::forgotten);

    EXPECT_THAT(defaults->value("volume"), Eq(std::nullopt));
    EXPECT_EQ(contents(m_file), "no JSON at all");
    EXPECT_FALSE(std::filesystem::exists(m_file.native() + ".broken"));
}

class BrokenSettings : public FileDefaultsStoreFixture,
                       public testing::WithParamInterface<const char*>
{
};

TEST_P(BrokenSettings, AreSetAsideAndDefaultsApply)
{
    write(GetParam());

    const auto defaults = store();
    defaults->registerDefaults({{"volume", 0.8}});

    EXPECT_THAT(defaults->value("volume"), Optional(DefaultsValue(0.8)));
    EXPECT_FALSE(std::filesystem::exists(m_file));
    EXPECT_EQ(contents(m_file.native() + ".broken"), GetParam());
    defaults->setValue("volume", 0.3);
    EXPECT_THAT(store()->value("volume"), Optional(DefaultsValue(0.3)));
}

INSTANTIATE_TEST_SUITE_P(EveryKind, BrokenSettings,
                         testing::Values("", "{", "[1, 2]", "true", "{\"volume\": 0.5",
                                         "{\"a\": \xff}", "no JSON at all"));

TEST_F(FileDefaultsStoreTest, LinkStaysAndTheFileBehindItIsWritten)
{
    const auto target = m_folder.path() / "elsewhere.json";
    std::ofstream(target) << R"({"volume": 0.5})";
    std::filesystem::create_directories(m_file.parent_path());
    std::filesystem::create_symlink(target, m_file);

    store()->setValue("volume", 0.25);

    EXPECT_TRUE(std::filesystem::is_symlink(m_file));
    EXPECT_THAT(contents(target), HasSubstr("0.25"));
}

TEST_F(FileDefaultsStoreTest, FileIsForTheUserAlone)
{
    store()->setValue("volume", 0.25);

    EXPECT_EQ(std::filesystem::status(m_file).permissions(), std::filesystem::perms(0600));
}

TEST_F(FileDefaultsStoreTest, NothingButTheFileIsLeftInTheFolder)
{
    write("{}");
    std::ofstream(m_file.parent_path() / ".clavo-new-a1B2c3") << "half a fi";

    store()->setValue("volume", 0.25);

    for (const auto& entry : std::filesystem::directory_iterator(m_file.parent_path()))
        EXPECT_EQ(entry.path(), m_file);
}

TEST_F(FileDefaultsStoreTest, PipeInTheFilesPlaceIsSetAside)
{
    std::filesystem::create_directories(m_file.parent_path());
    ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0);

    const auto defaults = store();
    defaults->setValue("volume", 0.3);

    EXPECT_TRUE(std::filesystem::is_fifo(m_file.native() + ".broken"));
    EXPECT_THAT(store()->value("volume"), Optional(DefaultsValue(0.3)));
}

TEST_F(FileDefaultsStoreTest, FolderInTheFilesPlaceIsSetAside)
{
    std::filesystem::create_directories(m_file);

    const auto defaults = store();
    defaults->setValue("volume", 0.3);

    EXPECT_THAT(store()->value("volume"), Optional(DefaultsValue(0.3)));
}

} // namespace
} // namespace clavo
