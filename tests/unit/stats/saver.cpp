// SPDX-License-Identifier: MIT
//
// Records keys into the statistics of a folder and saves them at each, until it is killed. Writes
// one byte to the standard output when it is ready and one after each save.
#include "fakes/SimulatedTime.h"
#include "stats/StatsStore.h"

#include <unistd.h>

#include <cstdlib>

int main(int argc, char* argv[])
{
    if (argc != 2)
        return EXIT_FAILURE;
    clavo::StatsSurroundings surroundings;
    clavo::SimulatedTime time;
    surroundings.makeTimer = [&time] { return time.makeTimer(); };
    surroundings.runInBackground = [](const std::function<void()>& save) { save(); };
    clavo::StatsStore stats(argv[1], std::move(surroundings));
    constexpr char step = '.';
    while (::write(STDOUT_FILENO, &step, 1) == 1) {
        stats.record(true);
        time.elapse();
    }
    return EXIT_FAILURE;
}
