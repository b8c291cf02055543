// SPDX-License-Identifier: MIT
#include "platform/xdg/DesktopEntry.h"

#include "fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

#include <fstream>

namespace clavo
{
namespace
{

TEST(DesktopEntry, ValuesOfTheMainGroupAreRead)
{
    const auto entry = DesktopEntry::parse("# comment\n[Desktop Entry]\nName = Clavo \r\n"
                                           "#Exec=no\n\nHidden=true\nOther=false");

    EXPECT_EQ(entry.text("Name"), "Clavo");
    EXPECT_EQ(entry.text("Exec"), "");
    EXPECT_EQ(entry.boolean("Hidden"), true);
    EXPECT_EQ(entry.boolean("Other"), false);
    EXPECT_EQ(entry.boolean("Name"), std::nullopt);
    EXPECT_EQ(entry.boolean("Missing"), std::nullopt);
}

TEST(DesktopEntry, OtherGroupsDoNotCount)
{
    const auto entry = DesktopEntry::parse("Hidden=true\n[Desktop Action x]\nExec=a\n"
                                           "[Desktop Entry]\nName=b\n[Other]\nName=c\n");

    EXPECT_EQ(entry.boolean("Hidden"), std::nullopt);
    EXPECT_EQ(entry.text("Exec"), "");
    EXPECT_EQ(entry.text("Name"), "b");
}

TEST(DesktopEntry, EscapesAreResolved)
{
    const auto entry = DesktopEntry::parse("[Desktop Entry]\nA=\\sa\\\\b\\nc\\td\\q\\\n");

    EXPECT_EQ(entry.text("A"), " a\\b\nc\td\\q\\");
}

TEST(DesktopEntry, AnyTextComesBackFromItsEscapedForm)
{
    for (const std::string text :
         {"", "/usr/bin/clavo", " a b ", "back\\slash", "tab\tline\nend", "\\s", "é\"$`%"})
        EXPECT_EQ(DesktopEntry::parse("[Desktop Entry]\nA=" + escaped(text) + "\n").text("A"),
                  text);
}

TEST(DesktopEntry, ReservedCharactersOfACommandAreQuoted)
{
    EXPECT_EQ(quotedForExec("/usr/bin/clavo"), R"("/usr/bin/clavo")");
    EXPECT_EQ(quotedForExec("/a b/$c`d\"e\\f%g"), R"("/a b/\$c\`d\"e\\f%%g")");
}

TEST(DesktopEntry, AnyProgramComesBackFromItsCommand)
{
    for (const std::string program : {"/usr/bin/clavo", "/a b/clavo", "/a\"b", "/$HOME`x`\\",
                                      "/100%", "/%%f", "/tab\tnew\nline"})
        EXPECT_EQ(programOfExec(quotedForExec(program) + " --option"), program);
}

TEST(DesktopEntry, ProgramOfACommandStandsBeforeTheArguments)
{
    EXPECT_EQ(programOfExec("clavo"), "clavo");
    EXPECT_EQ(programOfExec("  /usr/bin/clavo --a %u"), "/usr/bin/clavo");
    EXPECT_EQ(programOfExec(""), "");
    EXPECT_EQ(programOfExec("   "), "");
    EXPECT_EQ(programOfExec("\"/usr/bin/clavo"), "") << "the quote does not end";
    EXPECT_EQ(programOfExec("\"/usr/bin\\"), "");
}

TEST(DesktopEntry, WhatIsNoFileHasNoEntry)
{
    const TemporaryFolder folder;
    const auto file = folder.path() / "clavo.desktop";

    EXPECT_FALSE(DesktopEntry::read(file));
    std::filesystem::create_directory(file);
    EXPECT_FALSE(DesktopEntry::read(file));
    std::filesystem::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(DesktopEntry::read(file));
}

TEST(DesktopEntry, BrokenFileHasNoValues)
{
    const TemporaryFolder folder;
    const auto file = folder.path() / "clavo.desktop";
    for (const std::string text :
         {"", "\n\n", "[Desktop Entry", "\xff\xfe=\x01", "=", "[Desktop Entry]\n="}) {
        std::ofstream(file, std::ios::trunc) << text;

        const auto entry = DesktopEntry::read(file);

        ASSERT_TRUE(entry);
        EXPECT_EQ(entry->text("Exec"), "");
    }
}

} // namespace
} // namespace clavo
