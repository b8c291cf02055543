// SPDX-License-Identifier: MIT
#pragma once

#include "latency/Keyboard.h"

#include <array>
#include <cstdint>
#include <memory>

struct xcb_connection_t;

namespace clavo::latency
{

/// The keyboard of the X server, by its test extension.
class XTestKeyboard final : public Keyboard
{
public:
    /// Nothing when there is no X server or it lacks the extension.
    static std::unique_ptr<XTestKeyboard> open();

    [[nodiscard]] std::optional<std::uint8_t> key(char character) const override;
    Moment press(std::uint8_t key) override;
    Moment release(std::uint8_t key) override;

    /// How long the X server takes to answer a question.
    [[nodiscard]] nanoseconds roundTrip();

private:
    struct Close {
        void operator()(xcb_connection_t* connection) const;
    };

    explicit XTestKeyboard(xcb_connection_t* connection) : m_connection(connection) {}
    bool readLayout();
    Moment send(std::uint8_t type, std::uint8_t key);

    std::unique_ptr<xcb_connection_t, Close> m_connection;
    std::array<std::uint8_t, 256> m_keys = {}; // By character; 0 if no key types it.
};

} // namespace clavo::latency
