// SPDX-License-Identifier: MIT
#include "FileDefaultsStoreFixture.h"

#include <gmock/gmock.h>

#include <sys/resource.h>
#include <sys/stat.h>

namespace clavo
{
namespace
{

using testing::Optional;

/// Lets this process open no file.
class NoDescriptors
{
public:
    NoDescriptors()
    {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const ::rlimit none{.rlim_cur = 0, .rlim_max = m_before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptors() { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

private:
    ::rlimit m_before = {};
};

using EditedSettings = FileDefaultsStoreFixture;

TEST_F(EditedSettings, ChangeKeepsAnEditThatWasMadeMeanwhile)
{
    write(R"({"volume": 0.8, "enabled": true, "old": 1})");
    const auto running = store();
    write(R"({"volume": 0.3, "enabled": true, "mouseSounds": true})");

    running->setValue("enabled", false);

    EXPECT_EQ(contents(m_file), R"({
    "enabled": false,
    "mouseSounds": true,
    "volume": 0.3
}
)");
}

TEST_F(EditedSettings, EditThatWasMadeMeanwhileAppliesAtTheNextStart)
{
    write(R"({"volume": 0.8})");
    const auto running = store();
    write(R"({"volume": 0.3})");

    running->setValue("enabled", false);

    EXPECT_THAT(running->value("volume"), Optional(DefaultsValue(0.8)));
    EXPECT_THAT(store()->value("volume"), Optional(DefaultsValue(0.3)));
}

TEST_F(EditedSettings, RemovalKeepsAnEditThatWasMadeMeanwhile)
{
    write(R"({"volume": 0.8, "enabled": true})");
    const auto running = store();
    write(R"({"volume": 0.3, "enabled": true})");

    running->removeValue("enabled");

    EXPECT_EQ(contents(m_file), "{\n    \"volume\": 0.3\n}\n");
}

TEST_F(EditedSettings, EditThatIsBrokenIsSetAsideAndAllSettingsAreWrittenAnew)
{
    write(R"({"volume": 0.5})");
    const auto running = store();
    write(R"({"volume": 0.3,)");

    running->setValue("enabled", false);

    EXPECT_EQ(contents(m_file.native() + ".broken"), R"({"volume": 0.3,)");
    EXPECT_THAT(store()->value("volume"), Optional(DefaultsValue(0.5)));
    EXPECT_THAT(store()->value("enabled"), Optional(DefaultsValue(false)));
}

TEST_F(EditedSettings, EverySettingIsWrittenAnewWhereTheFileWasRemoved)
{
    write(R"({"volume": 0.5})");
    const auto running = store();
    std::filesystem::remove(m_file);

    running->setValue("enabled", false);

    EXPECT_THAT(store()->value("volume"), Optional(DefaultsValue(0.5)));
}

TEST_F(EditedSettings, ChangeThatCouldNotBeWrittenIsWrittenWithTheNext)
{
    std::ofstream(m_file.parent_path()) << "a file where the folder should be";
    const auto running = store();
    running->setValue("volume", 0.5);
    std::filesystem::remove(m_file.parent_path());
    write(R"({"volume": 0.3, "mouseSounds": true})");

    running->setValue("enabled", false);

    EXPECT_THAT(store()->value("volume"), Optional(DefaultsValue(0.5)));
    EXPECT_THAT(store()->value("enabled"), Optional(DefaultsValue(false)));
    EXPECT_THAT(store()->value("mouseSounds"), Optional(DefaultsValue(true)));
}

#ifndef __SANITIZE_ADDRESS__ // The sanitizer needs a descriptor to check an object.
TEST_F(EditedSettings, FileThatCannotBeReadForLackOfDescriptorsStays)
{
    write(R"({"volume": 0.5})");
    const auto running = store();
    {
        const NoDescriptors limit;
        running->setValue("enabled", false);
    }

    EXPECT_EQ(contents(m_file), R"({"volume": 0.5})");
    running->setValue("mouseSounds", true);
    EXPECT_THAT(store()->value("enabled"), Optional(DefaultsValue(false)));
}
#endif

TEST_F(EditedSettings, PipeThatAppearsMeanwhileIsSetAside)
{
    write(R"({"volume": 0.5})");
    const auto running = store();
    std::filesystem::remove(m_file);
    ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0);

    running->setValue("enabled", false);

    EXPECT_TRUE(std::filesystem::is_fifo(m_file.native() + ".broken"));
    EXPECT_THAT(store()->value("volume"), Optional(DefaultsValue(0.5)));
}

} // namespace
} // namespace clavo
