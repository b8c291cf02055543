// SPDX-License-Identifier: MIT
#include "latency/Typing.h"

#include <chrono>
#include <random>
#include <thread>

namespace clavo::latency
{
namespace
{

using namespace std::chrono_literals;
using std::chrono::microseconds;
using std::chrono::steady_clock;

constexpr unsigned seed = 1;

/// Keeps events from falling into step with the periods of the graph.
nanoseconds jitter(std::mt19937& random)
{
    return microseconds(std::uniform_int_distribution(0, 20'000)(random));
}

} // namespace

void tap(Keyboard& keyboard, std::uint8_t key, nanoseconds hold)
{
    keyboard.press(key);
    std::this_thread::sleep_for(hold);
    keyboard.release(key);
}

std::string randomText(std::size_t count)
{
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::size_t> letter(0, letters.size() - 1);
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += letters[letter(random)];
    return text;
}

Sent pressKeys(Keyboard& keyboard, std::string_view text)
{
    Sent sent;
    std::mt19937 random(seed);
    auto next = steady_clock::now();
    for (const char character : text) {
        const auto key = keyboard.key(character).value();
        std::this_thread::sleep_until(next);
        sent.presses.push_back(keyboard.press(key));
        std::this_thread::sleep_until(next + 15ms);
        keyboard.release(key);
        next += 40ms + jitter(random);
    }
    sent.all = sent.presses;
    return sent;
}

Sent typeText(Keyboard& keyboard, std::string_view text)
{
    Sent sent;
    std::mt19937 random(seed);
    auto next = steady_clock::now();
    for (const char character : text) {
        const auto key = keyboard.key(character).value();
        std::this_thread::sleep_until(next);
        sent.presses.push_back(keyboard.press(key));
        sent.all.push_back(sent.presses.back());
        std::this_thread::sleep_until(next + 80ms);
        sent.all.push_back(keyboard.release(key));
        next += 140ms + jitter(random);
    }
    return sent;
}

void sendEvents(Keyboard& keyboard, std::size_t count, nanoseconds spacing)
{
    auto next = steady_clock::now();
    for (std::size_t i = 0; i < count; ++i, next += spacing) {
        const auto key = keyboard.key(letters[i / 2 % letters.size()]).value();
        std::this_thread::sleep_until(next);
        if (i % 2 == 0)
            keyboard.press(key);
        else
            keyboard.release(key);
    }
}

} // namespace clavo::latency
