// SPDX-License-Identifier: MIT
#include "platform/procfs/Terminal.h"

#include <fcntl.h>
#include <termios.h>

#include <utility>

namespace clavo
{
namespace
{

int opened(const std::string& file)
{
    return ::open(file.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
}

bool readsWithoutEcho(const Descriptor& terminal)
{
    termios modes{};
    return ::tcgetattr(terminal.number(), &modes) == 0 && (modes.c_lflag & ICANON) != 0 &&
           (modes.c_lflag & ECHO) == 0;
}

} // namespace

Terminal::Terminal(std::string file, pid_t leader)
    : m_file(std::move(file)), m_leader(leader, [this] { m_open.reset(); })
{
    if (m_leader.isWaiting())
        m_open.emplace(opened(m_file));
}

bool Terminal::readsWithoutEcho() const
{
    return m_open ? clavo::readsWithoutEcho(*m_open)
                  : clavo::readsWithoutEcho(Descriptor(opened(m_file)));
}

} // namespace clavo
