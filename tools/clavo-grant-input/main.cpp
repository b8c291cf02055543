// SPDX-License-Identifier: MIT
//
// Runs as root for any permitted user and trusts nothing of its caller: no path, no environment, no
// open file, and only one word of the arguments.
#include "clavo-grant-input/InputGrant.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <string>
#include <string_view>

namespace
{

constexpr int misuseStatus = 2;

// Looks like that of the other tools. Their option parser needs a library, which a program that
// runs as root does not load.
constexpr auto help =
    R"(Usage: clavo-grant-input [--revoke]

Lets the programs of the person who sits at this machine read and write its keyboards, mice and
touchpads. Clavo needs to read them outside X11. Each of those programs can then read what is typed,
also in password fields, and can write: send keys and clicks as if the person had made them.
Takes root: pkexec clavo-grant-input

Options:
      --revoke   take it back; a program that has a device open keeps it until the device is unplugged
                 or the session ends
  -h, --help     print this text
      --version  print the version

Exit status: 0 done, 1 not possible, 2 command line not understood.
)";
constexpr auto misuse = "clavo-grant-input: only --revoke is understood\n"
                        "Try 'clavo-grant-input --help'.\n";

/// Discards everything that the caller may have prepared. False when that fails.
bool shedSurroundings()
{
    if (::clearenv() != 0 || ::chdir("/") != 0)
        return false;
    ::umask(S_IWGRP | S_IWOTH);
    for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
        // Otherwise the rule's file could become the standard output.
        if (::fcntl(number, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != number)
            return false;
    }
    if (::close_range(STDERR_FILENO + 1, ~0U, 0) != 0)
        return false;
    const rlimit unlimited{.rlim_cur = RLIM_INFINITY, .rlim_max = RLIM_INFINITY};
    static_cast<void>(::setrlimit(RLIMIT_FSIZE, &unlimited)); // Fails unless root.
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int signal : {SIGXFSZ, SIGPIPE, SIGHUP, SIGINT, SIGTERM, SIGQUIT, SIGTSTP})
        std::signal(signal, SIG_IGN); // A signal must not interrupt a change.
    return std::signal(SIGCHLD, SIG_DFL) != SIG_ERR;
}

int run(std::span<char*> arguments)
{
    if (!shedSurroundings()) {
        std::fputs("clavo-grant-input: the surroundings are not safe\n", stderr);
        return EXIT_FAILURE;
    }
    auto words = arguments.subspan(std::min<std::size_t>(arguments.size(), 1));
    if (!words.empty() && words.back() == std::string_view("--"))
        words = words.first(words.size() - 1); // The end of the options.
    const std::string_view option = words.size() == 1 ? words.front() : "";
    if (option == "-h" || option == "--help") {
        std::fputs(help, stdout);
        return EXIT_SUCCESS;
    }
    if (option == "--version") {
        std::fputs("clavo-grant-input " CLAVO_VERSION "\n", stdout);
        return EXIT_SUCCESS;
    }
    const auto isRevoking = option == "--revoke";
    if (arguments.empty() || (!words.empty() && !isRevoking)) {
        std::fputs(misuse, stderr);
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
