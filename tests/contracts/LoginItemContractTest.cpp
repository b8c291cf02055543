// SPDX-License-Identifier: MIT
#include "contracts/LoginItemContract.h"

#include "fakes/FakeLoginItem.h"
#include "fakes/TemporaryFolder.h"
#include "platform/procfs/Processes.h"
#include "platform/xdg/AutostartEntry.h"

namespace clavo
{
namespace
{

struct FakeHost {
    LoginItem& item() { return fake; }

    FakeLoginItem fake;
};

struct AutostartHost {
    LoginItem& item() { return *entry; }

    TemporaryFolder folder;
    std::unique_ptr<LoginItem> entry =
        makeAutostartEntry({.user = folder.path(), .system = {}}, runningProgram());
};

using Hosts = testing::Types<FakeHost, AutostartHost>;
INSTANTIATE_TYPED_TEST_SUITE_P(EveryItem, LoginItemContract, Hosts);

} // namespace
} // namespace clavo
