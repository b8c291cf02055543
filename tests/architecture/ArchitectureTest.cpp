// SPDX-License-Identifier: MIT
#include "architecture/SourceTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

TEST(Architecture, TheProjectKeepsItsRules)
{
    EXPECT_THAT(brokenRules(CLAVO_SOURCE_FOLDER), IsEmpty());
}

/// A made-up tree in a folder of its own.
class Tree : public testing::Test
{
protected:
    Tree()
    {
        auto name = (fs::temp_directory_path() / "clavo-tree-XXXXXX").string();
        m_root = mkdtemp(name.data());
    }
    ~Tree() override { fs::remove_all(m_root); }

    void write(const fs::path& file, std::string_view text)
    {
        writeWithoutLicence(file, "// SPDX-License-Identifier: MIT\n" + std::string(text));
    }

    void writeWithoutLicence(const fs::path& file, std::string_view text)
    {
        fs::create_directories((m_root / file).parent_path());
        std::ofstream(m_root / file) << text;
    }

    [[nodiscard]] std::vector<std::string> broken() const { return brokenRules(m_root); }

private:
    fs::path m_root;
};

TEST_F(Tree, ALayerMayIncludeItselfAndThoseBelow)
{
    write("src/audio/SoundEngine.h", "#include \"audio/Voice.h\"\n#include \"synth/Buffer.h\"\n");

    EXPECT_THAT(broken(), IsEmpty());
}

TEST_F(Tree, ALayerMayNotIncludeOneAbove)
{
    write("src/synth/Buffer.h", "#pragma once\n  #  include \"audio/SoundEngine.h\"\n");

    EXPECT_THAT(broken(), ElementsAre("src/synth/Buffer.h:3: src/synth/ does not know audio"));
}

TEST_F(Tree, AHeaderIsNamedFromTheSourceFolder)
{
    write("src/synth/Buffer.cpp", "#include \"Buffer.h\"\n#include \"../audio/Voice.h\"\n");

    EXPECT_THAT(broken(),
                ElementsAre("src/synth/Buffer.cpp:2: Buffer.h is not named from src/",
                            "src/synth/Buffer.cpp:3: ../audio/Voice.h is not named from src/"));
}

TEST_F(Tree, AFolderOutsideTheLayersMayIncludeNoLayer)
{
    write("src/extra/Thing.cpp", "#include \"log/Log.h\"\n");

    EXPECT_THAT(broken(),
                ElementsAre("src/extra/Thing.cpp:2: src/extra/ has no place among the layers"));
}

TEST_F(Tree, ThePlatformMayIncludeThePorts)
{
    write("src/platform/x11/Tap.h", "#include \"input/EventTap.h\"\n#include \"app/Access.h\"\n"
                                    "#include \"platform/x11/XServer.h\"\n");

    EXPECT_THAT(broken(), IsEmpty());
}

TEST_F(Tree, ThePlatformMayNotIncludeTheInterface)
{
    write("src/platform/x11/Tap.h", "#include \"ui/Theme.h\"\n");

    EXPECT_THAT(broken(), ElementsAre("src/platform/x11/Tap.h:2: src/platform/ does not know ui"));
}

TEST_F(Tree, ATechnologyMayIncludeThoseBelow)
{
    write("src/platform/x11/Tap.h", "#include \"platform/evdev/Codes.h\"\n"
                                    "#include \"platform/Platform.h\"\n");

    EXPECT_THAT(broken(), IsEmpty());
}

TEST_F(Tree, ATechnologyMayNotIncludeOneAbove)
{
    write("src/platform/evdev/Codes.h", "#include \"platform/x11/Tap.h\"\n");
    write("src/platform/cloud/Tap.h", "#include \"platform/x11/Tap.h\"\n");

    EXPECT_THAT(
        broken(),
        ElementsAre(
            "src/platform/cloud/Tap.h:2: src/platform/cloud/ has no place among the "
            "technologies",
            "src/platform/evdev/Codes.h:2: src/platform/evdev/ does not know platform/x11"));
}

TEST_F(Tree, ACompositionSeesEveryTechnologyAndNoneSeesIt)
{
    write("src/platform/linux/Platform.cpp", "#include \"platform/x11/Tap.h\"\n");
    write("src/platform/macos/Platform.cpp", "#include \"platform/linux/Session.h\"\n");
    write("src/platform/x11/Tap.h", "#include \"platform/linux/Session.h\"\n");

    EXPECT_THAT(broken(), ElementsAre("src/platform/macos/Platform.cpp:2: src/platform/macos/ does "
                                      "not know platform/linux",
                                      "src/platform/x11/Tap.h:2: src/platform/x11/ does not know "
                                      "platform/linux"));
}

TEST_F(Tree, TheProgramSeesEverythingAndThePlatformThroughOneHeader)
{
    write("src/program/main.cpp", "#include \"ui/View.h\"\n#include \"platform/Platform.h\"\n");
    write("src/program/App.cpp", "#include \"platform/x11/Tap.h\"\n");

    EXPECT_THAT(broken(), ElementsAre("src/program/App.cpp:2: src/platform/ is seen through its "
                                      "Platform.h alone"));
}

TEST_F(Tree, NobodyElseSeesThePlatform)
{
    write("src/app/State.cpp", "#include \"platform/Platform.h\"\n");
    write("src/ui/View.cpp", "#include \"platform/Platform.h\"\n");

    EXPECT_THAT(broken(), ElementsAre("src/app/State.cpp:2: src/app/ does not know platform",
                                      "src/ui/View.cpp:2: src/ui/ does not know platform"));
}

TEST_F(Tree, TheLowerLayersDoWithoutQt)
{
    write("src/input/Monitor.cpp",
          "#include <QTimer>\n#include <QtCore/QString>\n#include <qobject.h>\n#include <queue>\n");
    write("src/app/State.cpp", "#include <QTimer>\n");

    EXPECT_THAT(broken(), ElementsAre("src/input/Monitor.cpp:2: src/input/ does without Qt",
                                      "src/input/Monitor.cpp:3: src/input/ does without Qt",
                                      "src/input/Monitor.cpp:4: src/input/ does without Qt"));
}

TEST_F(Tree, OnlyThePlatformTellsOperatingSystemsApart)
{
    constexpr std::string_view conditions = "#ifdef __linux__\n"
                                            "#elif defined(__APPLE__)\n"
                                            "#elif defined(DEBUG) && \\\n    defined(_WIN32)\n"
                                            "#endif\n"
                                            "#if defined(Q_OS_LINUX)\n#endif\n";
    write("src/platform/Choice.cpp", conditions);
    write("src/audio/Choice.cpp", conditions);
    write("tests/Choice.cpp", "#ifndef __linux__\n#endif\n");

    constexpr auto rule = ": only src/platform/ tells operating systems apart";
    EXPECT_THAT(broken(), ElementsAre(std::string("src/audio/Choice.cpp:2") + rule,
                                      std::string("src/audio/Choice.cpp:3") + rule,
                                      std::string("src/audio/Choice.cpp:4") + rule,
                                      std::string("src/audio/Choice.cpp:7") + rule,
                                      std::string("tests/Choice.cpp:2") + rule));
}

TEST_F(Tree, OtherConditionsAreFree)
{
    write("src/audio/Choice.cpp", "#ifdef __clang__\n#endif\n#ifdef linux_is_mentioned\n#endif\n");

    EXPECT_THAT(broken(), IsEmpty());
}

TEST_F(Tree, EverySourceAndScriptNamesTheLicence)
{
    writeWithoutLicence("src/log/Log.h", "#pragma once\n");
    writeWithoutLicence("src/log/CMakeLists.txt", "");
    writeWithoutLicence("run", "#!/usr/bin/env bash\necho run\n");
    writeWithoutLicence("test", "#!/usr/bin/env bash\n# SPDX-License-Identifier: MIT\n");
    writeWithoutLicence("README.md", "text\n");

    EXPECT_THAT(broken(), ElementsAre("run:1: the licence line is missing",
                                      "src/log/CMakeLists.txt:1: the licence line is missing",
                                      "src/log/Log.h:1: the licence line is missing"));
}

TEST_F(Tree, AFolderHasANameThatSaysSomething)
{
    write("src/app/utils/Text.h", "");
    write("tests/helpers/Text.h", "");

    EXPECT_THAT(broken(), ElementsAre("src/app/utils: the folder's name says nothing",
                                      "tests/helpers: the folder's name says nothing"));
}

TEST_F(Tree, AFileHasAtMostFourHundredLines)
{
    write("src/log/Long.cpp", std::string(399, '\n'));
    write("src/log/TooLong.cpp", std::string(400, '\n'));

    EXPECT_THAT(broken(), ElementsAre("src/log/TooLong.cpp:401: a file has at most 400 lines"));
}

TEST_F(Tree, WhatIsBuiltIsNotLookedAt)
{
    writeWithoutLicence("build/dev/generated.cpp", "");
    writeWithoutLicence(".git/hooks/sample", "#!/bin/sh\n");

    EXPECT_THAT(broken(), IsEmpty());
}

} // namespace
} // namespace clavo
