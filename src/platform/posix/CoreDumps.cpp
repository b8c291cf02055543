// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include <sys/resource.h>

namespace clavo
{

// Not by making the process undumpable: then its /proc/PID/root is no longer readable, by which the
// desktop portal and PipeWire recognise whether a client is sandboxed, and they refuse it. The hard
// limit stays, so that programs started from here may raise theirs.
void preventCoreDumps()
{
    rlimit limit = {};
    if (::getrlimit(RLIMIT_CORE, &limit) != 0)
        return;
    limit.rlim_cur = 0;
    ::setrlimit(RLIMIT_CORE, &limit);
}

} // namespace clavo
