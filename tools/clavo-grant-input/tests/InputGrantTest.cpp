// SPDX-License-Identifier: MIT
#include "clavo-grant-input/InputGrant.h"
#include "clavo-grant-input/tests/UdevSystem.h"
#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <cstdint>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Optional;

namespace fs = std::filesystem;

constexpr auto triggering = "trigger --subsystem-match=input --action=change --settle";

class InputGrantTest : public testing::Test
{
protected:
    TemporaryFolder folder;
    UdevSystem system{folder.path()};
};

TEST_F(InputGrantTest, WritesTheRuleAndHasUdevFollowIt)
{
    EXPECT_EQ(grantInput(system.root), std::nullopt);

    EXPECT_THAT(contentOf(system.rule()), EndsWith(R"(
SUBSYSTEM=="input", KERNEL=="event*", ENV{ID_INPUT_KEYBOARD}=="1", TAG+="uaccess"
SUBSYSTEM=="input", KERNEL=="event*", ENV{ID_INPUT_MOUSE}=="1", TAG+="uaccess"
SUBSYSTEM=="input", KERNEL=="event*", ENV{ID_INPUT_TOUCHPAD}=="1", TAG+="uaccess"
)"));
    EXPECT_THAT(system.calls(), ElementsAre("control --reload", triggering));
    EXPECT_THAT(system.ruleNames(), ElementsAre("70-clavo-input.rules"));
}

TEST_F(InputGrantTest, AnOlderRuleForAllDevicesIsReplacedAndTakenBack)
{
    const std::string older = "SUBSYSTEM==\"input\", KERNEL==\"event*\", TAG+=\"uaccess\"\n";
    writeFile(system.rule(), older);
    EXPECT_EQ(grantInput(system.root), std::nullopt);
    EXPECT_THAT(contentOf(system.rule()), Not(HasSubstr(older)));

    writeFile(system.rule(), older);
    EXPECT_EQ(revokeInput(system.root), std::nullopt);
    EXPECT_THAT(system.ruleNames(), IsEmpty());
}

TEST_F(InputGrantTest, NamesTheRuleBeforeTheOneThatGivesDevicesToTheSeat)
{
    EXPECT_EQ(grantInput(system.root), std::nullopt);

    EXPECT_LT(system.ruleNames().front(), std::string("73-seat-late.rules"));
}

TEST_F(InputGrantTest, RuleIsReadableByAllUsersAndWritableByRootOnly)
{
    EXPECT_EQ(grantInput(system.root), std::nullopt);

    EXPECT_EQ(fs::status(system.rule()).permissions(), fs::perms(0644));
}

TEST_F(InputGrantTest, ReplacesWhatIsInThePlaceOfTheRule)
{
    const auto other = folder.path() / "other";
    writeFile(other, "somebody's");
    fs::create_directories(system.rules());
    fs::create_symlink(other, system.rule());

    EXPECT_EQ(grantInput(system.root), std::nullopt);

    EXPECT_FALSE(fs::is_symlink(system.rule()));
    EXPECT_EQ(contentOf(other), "somebody's");
}

TEST_F(InputGrantTest, ChangesNothingWhereThereIsNoUdev)
{
    fs::remove(system.udevadm());

    EXPECT_THAT(grantInput(system.root), Optional(HasSubstr("there is no udevadm")));

    EXPECT_FALSE(fs::exists(system.rules()));
}

TEST_F(InputGrantTest, SaysWhereTheRuleCannotBeWritten)
{
    writeFile(system.root / "etc" / "udev", "no folder");

    EXPECT_THAT(grantInput(system.root), Optional("cannot write " + system.rule().string() +
                                                  "; this takes root, as pkexec gives it"));
    EXPECT_THAT(system.calls(), IsEmpty());
}

TEST_F(InputGrantTest, SaysThatUdevDoesNotListen)
{
    system.setUdevadm("exit 1");

    EXPECT_THAT(grantInput(system.root), Optional(HasSubstr("from the next start of the machine")));
    EXPECT_TRUE(fs::exists(system.rule()));
}

TEST_F(InputGrantTest, IsTakenBack)
{
    ASSERT_EQ(grantInput(system.root), std::nullopt);
    writeFile(system.rules() / "99-other.rules", "another's");

    EXPECT_EQ(revokeInput(system.root), std::nullopt);

    EXPECT_THAT(system.ruleNames(), ElementsAre("99-other.rules"));
    EXPECT_THAT(system.calls(),
                ElementsAre("control --reload", triggering, "control --reload", triggering));
}

TEST_F(InputGrantTest, IsTakenBackWhereItWasNeverGiven)
{
    EXPECT_EQ(revokeInput(system.root), std::nullopt);
}

TEST_F(InputGrantTest, SaysWhereUdevCannotBeAskedToTakeItBack)
{
    ASSERT_EQ(grantInput(system.root), std::nullopt);
    fs::remove(system.udevadm());

    EXPECT_THAT(revokeInput(system.root), Optional(HasSubstr("the rule is gone, but")));
    EXPECT_FALSE(fs::exists(system.rule()));
}

/// The rights of single users, as an older rule or the present one gave them.
class InputRightsTest : public InputGrantTest
{
protected:
    InputRightsTest()
    {
        for (const auto& device : {keyboard, other}) {
            writeFile(device, "");
            isSupported = isSupported &&
                          ::setxattr(device.c_str(), attribute, &rights, sizeof rights, 0) == 0;
        }
    }
    void SetUp() override
    {
        if (!isSupported)
            GTEST_SKIP() << "the file system has no such rights";
    }

    [[nodiscard]] static bool hasRights(const fs::path& device)
    {
        return ::getxattr(device.c_str(), attribute, nullptr, 0) > 0;
    }

    const fs::path keyboard = system.root / "dev" / "input" / "event0";
    const fs::path other = system.root / "dev" / "input" / "js0";

private:
    static constexpr auto attribute = "system.posix_acl_access";
    struct Entry {
        std::uint16_t tag, permissions;
        std::uint32_t id;
    };
    struct Rights { // In the kernel's format: owner, user 1000, group, mask, others.
        std::uint32_t version = 2;
        std::array<Entry, 5> entries{
            {{1, 6, ~0U}, {2, 6, 1000}, {4, 6, ~0U}, {16, 6, ~0U}, {32, 0, ~0U}}};
    } const rights;
    bool isSupported = true;
};

TEST_F(InputRightsTest, AreTakenFromTheDevices)
{
    EXPECT_EQ(revokeInput(system.root), std::nullopt);

    EXPECT_FALSE(hasRights(keyboard));
    EXPECT_TRUE(hasRights(other));
}

TEST_F(InputRightsTest, OfAnOlderRuleAreTakenAtTheGrantOfTheNewOne)
{
    writeFile(system.rule(), "an older rule");

    EXPECT_EQ(grantInput(system.root), std::nullopt);

    EXPECT_FALSE(hasRights(keyboard))
        << "udev, asked next, gives them again where the rule says so";
}

TEST_F(InputRightsTest, StayWhenTheSameIsGrantedAgain)
{
    EXPECT_EQ(grantInput(system.root), std::nullopt);
    EXPECT_EQ(grantInput(system.root), std::nullopt);

    EXPECT_TRUE(hasRights(keyboard));
}

} // namespace
} // namespace clavo
