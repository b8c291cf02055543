// SPDX-License-Identifier: MIT
#include "platform/systemd/Journal.h"

#define SD_JOURNAL_SUPPRESS_LOCATION
#include <systemd/sd-journal.h>

#include <syslog.h>
#include <unistd.h>

#include <string_view>

namespace clavo
{
namespace
{

int priority(log::Level level)
{
    switch (level) {
    case log::Level::debug:
        return LOG_DEBUG;
    case log::Level::notice:
        return LOG_NOTICE;
    case log::Level::error:
        break;
    }
    return LOG_ERR;
}

void writeToJournal(log::Level level, std::string_view line)
{
    sd_journal_send("MESSAGE=%.*s", static_cast<int>(line.size()), line.data(), "PRIORITY=%i",
                    priority(level), "SUBSYSTEM=app.clavo.Clavo", "CATEGORY=app",
                    "SYSLOG_IDENTIFIER=clavo", nullptr);
}

} // namespace

// libsystemd drops lines silently if no journal runs, so its socket is checked.
log::Sink journalSink()
{
    return access("/run/systemd/journal/socket", W_OK) == 0 ? writeToJournal : nullptr;
}

} // namespace clavo
