// SPDX-License-Identifier: MIT
#include "platform/systemd/Journal.h"

namespace clavo
{

log::Sink journalSink()
{
    return nullptr;
}

} // namespace clavo
