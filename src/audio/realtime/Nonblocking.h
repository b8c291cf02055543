// SPDX-License-Identifier: MIT
#pragma once

/// Marks a function that the audio thread runs: no allocation, lock, system call or file access in
/// it.
#if defined(__clang__) && defined(__has_cpp_attribute) && __has_cpp_attribute(clang::nonblocking)
#define CLAVO_NONBLOCKING [[clang::nonblocking]]
#else
#define CLAVO_NONBLOCKING
#endif
