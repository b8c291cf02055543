// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include <malloc.h>

namespace clavo
{

void returnFreedMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace clavo
