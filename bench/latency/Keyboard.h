// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Recording.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

struct xcb_connection_t;

namespace clavo::latency
{

/// A keyboard whose keys are pressed by the X server's test extension.
class Keyboard
{
public:
    /// Nothing when there is no X server or it lacks the extension.
    static std::optional<Keyboard> open();

    /// The key that types this character without a modifier; '\n' is Return. Nothing when the
    /// layout has none.
    [[nodiscard]] std::optional<std::uint8_t> key(char character) const
    {
        const auto key = m_keys[static_cast<unsigned char>(character)];
        return key != 0 ? std::optional(key) : std::nullopt;
    }

    /// Both return the moment just before the event left for the X server.
    Moment press(std::uint8_t key);
    Moment release(std::uint8_t key);

    /// How long the X server takes to answer a question.
    [[nodiscard]] nanoseconds roundTrip();

private:
    struct Close {
        void operator()(xcb_connection_t* connection) const;
    };

    explicit Keyboard(xcb_connection_t* connection) : m_connection(connection) {}
    bool readLayout();
    Moment send(std::uint8_t type, std::uint8_t key);

    std::unique_ptr<xcb_connection_t, Close> m_connection;
    std::array<std::uint8_t, 256> m_keys = {}; // By character; 0 where no key types it.
};

} // namespace clavo::latency
