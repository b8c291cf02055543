// SPDX-License-Identifier: MIT
#include "log/Log.h"
#include "platform/Platform.h"
#include "platform/linux/Environment.h"

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
    case log::Level::Debug:
        return LOG_DEBUG;
    case log::Level::Default:
        return LOG_NOTICE;
    case log::Level::Error:
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

// libsystemd drops lines silently where no journal runs, so its socket is looked for.
void sendLogToSystem()
{
    if (environment("CLAVO_LOG_LEVEL") == "debug")
        log::setThreshold(log::Level::Debug);
    if (environment("CLAVO_LOG") != "stderr" && access("/run/systemd/journal/socket", W_OK) == 0)
        log::setSink(writeToJournal);
}

} // namespace clavo
