// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>

namespace clavo
{

/// While it lives no file of this process grows beyond a size: to a writer, a disk that fills up in
/// the middle of a file.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_signalHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &m_previous), 0);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = m_previous.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_previous);
        static_cast<void>(std::signal(SIGXFSZ, m_signalHandler));
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    using SignalHandler = void (*)(int);

    SignalHandler m_signalHandler;
    rlimit m_previous{};
};

} // namespace clavo
