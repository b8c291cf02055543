// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace clavo
{

/// A pseudo-terminal with an idle process.
class Shell
{
public:
    Shell()
    {
        std::array<char, 64> name{};
        m_process = forkpty(&m_master, name.data(), nullptr, nullptr);
        if (m_process == 0) {
            while (write(STDOUT_FILENO, "x", 1) == 1)
                pause();
        }
        char sign = 0; // That the terminal is the process's.
        EXPECT_EQ(read(m_master, &sign, 1), 1);
        m_file = name.data();
    }
    ~Shell()
    {
        end();
        close(m_master);
    }
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    void set(tcflag_t mode, bool isOn) const
    {
        termios modes{};
        ASSERT_EQ(tcgetattr(m_master, &modes), 0);
        modes.c_lflag = isOn ? modes.c_lflag | mode : modes.c_lflag & ~mode;
        ASSERT_EQ(tcsetattr(m_master, TCSANOW, &modes), 0);
    }

    /// Ends the last process of the terminal.
    void end()
    {
        if (m_process <= 0)
            return;
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
        fcntl(m_master, F_SETFL, O_NONBLOCK);
    }
    /// Whether the terminal's master end has noticed that the last process has ended.
    [[nodiscard]] bool hasHungUp() const
    {
        char byte = 0;
        return read(m_master, &byte, 1) == -1 && errno == EIO;
    }

    [[nodiscard]] const std::string& file() const { return m_file; }
    [[nodiscard]] pid_t leader() const { return m_process; }

private:
    int m_master = -1;
    pid_t m_process = -1;
    std::string m_file;
};

} // namespace clavo
