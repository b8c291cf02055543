// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace clavo::fuzz
{

/// The fuzzer's bytes as a series of values. Behind its end all values are zero.
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size) : m_rest(data, size) {}

    [[nodiscard]] bool isEmpty() const { return m_rest.empty(); }

    /// The next value, in the machine's own representation.
    template <typename Value> Value take()
    {
        static_assert(std::is_arithmetic_v<Value> && !std::is_same_v<Value, bool>);
        Value value{};
        const auto size = m_rest.size() < sizeof value ? m_rest.size() : sizeof value;
        if (size > 0)
            std::memcpy(&value, m_rest.data(), size);
        m_rest = m_rest.subspan(size);
        return value;
    }

    [[nodiscard]] bool takeBool() { return (take<std::uint8_t>() & 1U) != 0; }
    /// A number below the limit, which is at most 256.
    [[nodiscard]] std::size_t takeBelow(std::size_t limit) { return take<std::uint8_t>() % limit; }

private:
    std::span<const std::uint8_t> m_rest;
};

inline std::string textOf(const std::uint8_t* data, std::size_t size)
{
    return size == 0 ? std::string() : std::string(reinterpret_cast<const char*>(data), size);
}

inline void write(const std::filesystem::path& file, std::string_view content)
{
    std::ofstream(file, std::ios::binary) << content;
}

/// Ends the fuzzer, which keeps the input, unless the statement holds.
inline void require(bool holds, const char* statement)
{
    if (holds)
        return;
    std::fprintf(stderr, "BROKEN: %s\n", statement);
    std::abort();
}

} // namespace clavo::fuzz
