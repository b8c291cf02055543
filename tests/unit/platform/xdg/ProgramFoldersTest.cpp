// SPDX-License-Identifier: MIT
#include "platform/xdg/ProgramFolders.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

/// A variable of the environment, as it was before at the end.
class Variable
{
public:
    explicit Variable(const char* name) : m_name(name)
    {
        if (const auto* value = std::getenv(name))
            m_before = value;
    }
    ~Variable()
    {
        if (m_before)
            ::setenv(m_name, m_before->c_str(), 1);
        else
            clear();
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

    void set(const char* value) const { ::setenv(m_name, value, 1); }
    void clear() const { ::unsetenv(m_name); }

private:
    const char* m_name;
    std::optional<std::string> m_before;
};

class UserFolder : public testing::Test
{
protected:
    [[nodiscard]] static fs::path homeInThePasswordDatabase()
    {
        const auto* entry = ::getpwuid(::getuid());
        return entry ? entry->pw_dir : "/";
    }

    Variable m_home{"HOME"};
    Variable m_configuration{"XDG_CONFIG_HOME"};
};

TEST_F(UserFolder, IsTheOneOfTheVariable)
{
    m_configuration.set("/elsewhere");

    EXPECT_EQ(settingsFile(), "/elsewhere/Clavo/settings.json");
}

TEST_F(UserFolder, IsBelowHomeWithoutTheVariable)
{
    m_configuration.clear();
    m_home.set("/home/typist");

    EXPECT_EQ(settingsFile(), "/home/typist/.config/Clavo/settings.json");
}

TEST_F(UserFolder, RelativePathInTheVariableDoesNotCount)
{
    m_configuration.set("elsewhere");
    m_home.set("/home/typist");

    EXPECT_EQ(settingsFile(), "/home/typist/.config/Clavo/settings.json");
}

TEST_F(UserFolder, IsBelowTheHomeOfThePasswordDatabaseWithoutHome)
{
    m_configuration.clear();
    const auto expected = homeInThePasswordDatabase() / ".config/Clavo/settings.json";

    m_home.clear();
    EXPECT_EQ(settingsFile(), expected);
    m_home.set("");
    EXPECT_EQ(settingsFile(), expected);
    m_home.set("here");
    EXPECT_EQ(settingsFile(), expected);
}

} // namespace
} // namespace clavo
