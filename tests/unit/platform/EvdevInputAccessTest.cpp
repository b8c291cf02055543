// SPDX-License-Identifier: MIT
#include "platform/linux/EvdevInputAccess.h"

#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fstream>

namespace clavo
{
namespace
{

using evdev::Access;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(EvdevInputAccess, AFolderThatIsMissingOrEmptyHasNoKeyboard)
{
    const TemporaryFolder folder;

    EXPECT_EQ(evdev::accessToKeyboards(folder.path() / "missing"), Access::noKeyboard);
    EXPECT_EQ(evdev::accessToKeyboards(folder.path()), Access::noKeyboard);
}

TEST(EvdevInputAccess, AFileThatIsNoDeviceIsNoKeyboard)
{
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "event0") << "text";
    std::ofstream(folder.path() / "mice") << "text";

    EXPECT_EQ(evdev::accessToKeyboards(folder.path()), Access::noKeyboard);
}

TEST(EvdevInputAccess, ADeviceThatCannotBeReadIsARefusal)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink("nowhere", folder.path() / "event0"); // Root may read the rest.

    EXPECT_EQ(evdev::accessToKeyboards(folder.path()), Access::refused);
}

TEST(EvdevInputAccess, ThereIsAdviceForEveryAccessThatIsMissing)
{
    EXPECT_THAT(adviceOn(Access::granted), IsEmpty());
    EXPECT_THAT(adviceOn(Access::noKeyboard), HasSubstr("aucun clavier"));
    EXPECT_THAT(adviceOn(Access::notInThisLogin), HasSubstr("prochaine ouverture"));
}

TEST(EvdevInputAccess, ARefusalNamesTheTwoCommandsThatEndIt)
{
    const auto advice = adviceOn(Access::refused);

    EXPECT_THAT(advice, HasSubstr("\necho 'SUBSYSTEM==\"input\", KERNEL==\"event*\", "
                                  "TAG+=\"uaccess\"' | sudo tee "
                                  "/etc/udev/rules.d/70-clavo-input.rules\n"));
    EXPECT_THAT(advice, HasSubstr("\nsudo udevadm control --reload && sudo udevadm trigger"));
}

} // namespace
} // namespace clavo
