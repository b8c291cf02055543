// SPDX-License-Identifier: MIT
//
// What the question whether input is secret costs at every event: of all watchers where no terminal
// is in front, and of windows with terminals.
#include "platform/Platform.h"
#include "platform/procfs/TerminalSecureInput.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <vector>

#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace
{

/// Terminals of this process, with a program in each that does nothing.
class Terminals
{
public:
    explicit Terminals(std::size_t count) : m_terminals(count)
    {
        for (auto& terminal : m_terminals) {
            terminal.process = forkpty(&terminal.master, nullptr, nullptr, nullptr);
            if (terminal.process == 0) {
                while (write(STDOUT_FILENO, "x", 1) == 1)
                    pause();
            }
            char sign = 0; // That the terminal is the process's.
            if (read(terminal.master, &sign, 1) != 1)
                std::abort();
        }
    }
    ~Terminals()
    {
        for (const auto& terminal : m_terminals) {
            kill(terminal.process, SIGKILL);
            waitpid(terminal.process, nullptr, 0);
            close(terminal.master);
        }
    }
    Terminals(const Terminals&) = delete;
    Terminals& operator=(const Terminals&) = delete;

    /// Of the last one, which is asked last.
    void setEcho(bool isOn) const
    {
        const auto master = m_terminals.back().master;
        termios modes{};
        tcgetattr(master, &modes);
        modes.c_lflag = isOn ? modes.c_lflag | ECHO : modes.c_lflag & ~tcflag_t{ECHO};
        tcsetattr(master, TCSANOW, &modes);
    }

private:
    struct Terminal {
        int master = -1;
        pid_t process = -1;
    };
    std::vector<Terminal> m_terminals;
};

void withoutTerminal(benchmark::State& state)
{
    const auto platform = clavo::makePlatform();
    while (state.KeepRunning())
        benchmark::DoNotOptimize(platform.secureInput->reason());
}
BENCHMARK(withoutTerminal);

void withTerminals(benchmark::State& state)
{
    const Terminals terminals(static_cast<std::size_t>(state.range(0)));
    const auto secureInput =
        clavo::makeTerminalSecureInput(clavo::TerminalSecureInput::Unknown::noTerminal);
    secureInput->setFocus(getpid());
    terminals.setEcho(false);
    while (!secureInput->isEnabled())
        QCoreApplication::processEvents();
    terminals.setEcho(true);
    while (state.KeepRunning())
        benchmark::DoNotOptimize(secureInput->reason());
}
BENCHMARK(withTerminals)->Arg(1)->Arg(8);

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
