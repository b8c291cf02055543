// SPDX-License-Identifier: MIT
//
// Runs as root for whoever asks, and trusts nothing that comes with the question: no path, no
// environment, no open file, and of the arguments one word.
#include "clavo-grant-input/InputGrant.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <string>
#include <string_view>

namespace
{

constexpr int misuseStatus = 2;

constexpr auto usage =
    R"(Usage: clavo-grant-input [--revoke]

Lets the programs of whoever sits at this machine read its keyboards and mice, which Clavo needs
outside X11. Each of those programs can then read what is typed, also in password fields.
--revoke takes it back. Takes root: pkexec clavo-grant-input

Exit status: 0 done, 1 not possible, 2 command line not understood.
)";

/// Lets go of all that the caller may have prepared. False where that does not work.
bool shedSurroundings()
{
    if (::clearenv() != 0 || ::chdir("/") != 0)
        return false;
    ::umask(S_IWGRP | S_IWOTH);
    for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
        // Else the rule might be opened as the standard output.
        if (::fcntl(number, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != number)
            return false;
    }
    if (::close_range(STDERR_FILENO + 1, ~0U, 0) != 0)
        return false;
    const rlimit unlimited{.rlim_cur = RLIM_INFINITY, .rlim_max = RLIM_INFINITY};
    static_cast<void>(::setrlimit(RLIMIT_FSIZE, &unlimited)); // Only root may.
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int signal : {SIGXFSZ, SIGPIPE, SIGHUP, SIGINT, SIGTERM, SIGQUIT, SIGTSTP})
        std::signal(signal, SIG_IGN); // Nothing is left half done.
    return std::signal(SIGCHLD, SIG_DFL) != SIG_ERR;
}

int run(std::span<char*> arguments)
{
    if (!shedSurroundings()) {
        std::fputs("clavo-grant-input: the surroundings are not safe\n", stderr);
        return EXIT_FAILURE;
    }
    const auto isRevoking = arguments.size() == 2 && std::string_view(arguments[1]) == "--revoke";
    if (arguments.size() != 1 && !isRevoking) {
        std::fputs(usage, stderr);
        return misuseStatus;
    }
    const auto problem =
        isRevoking ? clavo::revokeInput(CLAVO_SYSTEM_ROOT) : clavo::grantInput(CLAVO_SYSTEM_ROOT);
    if (problem) {
        std::fputs(("clavo-grant-input: " + *problem + "\n").c_str(), stderr);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char* argv[])
try {
    return run({argv, static_cast<std::size_t>(argc)});
} catch (const std::exception& error) {
    std::fputs(error.what(), stderr);
    return EXIT_FAILURE;
}
