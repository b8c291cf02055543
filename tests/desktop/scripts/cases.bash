# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034
#
# Read by the tests of the scripts. A test is a function named test_…; it fails when a command of it
# does. run_cases runs each in a process and a folder of its own.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)

# expect_equal ACTUAL EXPECTED
expect_equal()
{
    if [[ $1 != "$2" ]]; then
        echo "    '$1' is not '$2'" >&2
        return 1
    fi
}

# expect_match TEXT PATTERN
expect_match()
{
    if [[ ! $1 =~ $2 ]]; then
        echo "    '$1' does not match '$2'" >&2
        return 1
    fi
}

# eventually COMMAND…: waits up to 20 seconds for the command to succeed.
eventually()
{
    local deadline=$((SECONDS + 20))
    until "$@"; do
        if ((SECONDS >= deadline)); then
            echo "    never came true: $*" >&2
            return 1
        fi
        sleep 0.02
    done
}

run_cases()
{
    local name failed=0 folder file
    file=$(readlink -f "$0")
    for name in $(compgen -A function test_); do
        folder=$(mktemp -d)
        # A process of its own, as `set -e` is off within a condition.
        if (cd "$folder" && exec bash "$file" "$name"); then
            echo "ok      $name"
        else
            echo "FAILED  $name"
            failed=1
        fi
        rm -rf "$folder"
    done
    return $failed
}

# main ARGUMENTS…: the last line of a file of tests.
main()
{
    set -euo pipefail
    if [[ $# -gt 0 ]]; then
        "$1"
    else
        run_cases
    fi
}
