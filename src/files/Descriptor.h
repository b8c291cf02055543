// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

namespace clavo
{

/// An open file, closed by the destructor; none when the number is negative.
class Descriptor
{
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int number() const { return m_number; }

private:
    int m_number;
};

} // namespace clavo
