// SPDX-License-Identifier: MIT
#pragma once

/// Marks a function that the audio thread runs: it may not allocate, lock or make system calls.
#if defined(__clang__) && defined(__has_cpp_attribute) && __has_cpp_attribute(clang::nonblocking)
#define CLAVO_NONBLOCKING [[clang::nonblocking]]
#else
#define CLAVO_NONBLOCKING
#endif
