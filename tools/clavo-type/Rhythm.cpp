// SPDX-License-Identifier: MIT
#include "clavo-type/Rhythm.h"

#include "synth/SplitMix64.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <map>
#include <numeric>
#include <string_view>

namespace clavo
{
namespace
{

constexpr std::int64_t leftShift = 56;
constexpr std::int64_t rightShift = 60;

/// The times of a stroke in seconds.
struct Timing {
    double press = 0;     // When the key goes down.
    double hold = 0;      // How long it stays down.
    double shiftLead = 0; // How long before it the shift key goes down.
};

double intervalOf(double wpm)
{
    return 60 / (5 * wpm);
}

class Schedule
{
public:
    void add(double seconds, std::int64_t code, bool down)
    {
        const std::chrono::duration<double> time(seconds);
        m_events.push_back(
            {std::chrono::round<std::chrono::microseconds>(time), {.code = code, .down = down}});
    }

    /// The events in the order of their times, the first one at 0.
    std::vector<KeyEvent> takeEvents()
    {
        std::ranges::stable_sort(m_events, {}, &KeyEvent::time);
        if (!m_events.empty()) {
            const auto start = m_events.front().time;
            for (auto& event : m_events)
                event.time -= start;
        }
        return std::move(m_events);
    }

private:
    std::vector<KeyEvent> m_events;
};

/// The latest release of a key that leaves it up for the fraction `free` of the time between two
/// presses.
double latestRelease(double press, double nextPress, double free)
{
    return nextPress - free * (nextPress - press);
}

void addKeys(Schedule& schedule, std::span<const Keystroke> strokes,
             std::span<const Timing> timings)
{
    std::map<std::int64_t, double> nextPress; // By key. The loop starts at the end of the text.
    for (std::size_t i = strokes.size(); i-- > 0;) {
        const auto [press, hold, lead] = timings[i];
        auto release = press + hold;
        const auto code = strokes[i].code;
        if (const auto next = nextPress.find(code); next != nextPress.end())
            release = std::min(release, latestRelease(press, next->second, 0.25));
        nextPress[code] = press;
        schedule.add(press, code, true);
        schedule.add(release, code, false);
    }
}

void addShift(Schedule& schedule, std::span<const Keystroke> strokes,
              std::span<const Timing> timings)
{
    // Fractions of the time between two presses:
    constexpr double before = 0.4; // the last one, in which shift goes down,
    constexpr double after = 0.2;  // and the last one, in which it is up again.
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        if (!strokes[i].isShifted)
            continue;
        const auto code = isLeftHand(strokes[i]) ? rightShift : leftShift;
        auto press = timings[i].press - timings[i].shiftLead;
        if (i > 0)
            press = std::max(press, latestRelease(timings[i - 1].press, timings[i].press, before));
        schedule.add(press, code, true);
        while (i + 1 < strokes.size() && strokes[i + 1].isShifted)
            ++i;
        auto release = timings[i].press + timings[i].hold;
        if (i + 1 < strokes.size())
            release =
                std::min(release, latestRelease(timings[i].press, timings[i + 1].press, after));
        schedule.add(release, code, false);
    }
}

std::vector<KeyEvent> eventsOf(std::span<const Keystroke> strokes, std::span<const Timing> timings)
{
    Schedule schedule;
    addShift(schedule, strokes, timings);
    addKeys(schedule, strokes, timings);
    return schedule.takeEvents();
}

/// Whether a typist knows this pair of letters by heart.
bool isFamiliar(char first, char second)
{
    constexpr std::string_view pairs =
        "th he in er an re nd on en at ou ed ha to or it is hi es ng";
    const char pair[] = {first, second};
    return first != ' ' && second != ' ' &&
           pairs.find(std::string_view(pair, 2)) != std::string_view::npos;
}

/// The time from one key to the next as a fraction of the mean.
double reach(const Keystroke& from, const Keystroke& to)
{
    if (from.code == to.code)
        return 0.95;
    if (isFamiliar(from.character, to.character))
        return 0.78;
    if (isThumb(from) || isThumb(to) || isLeftHand(from) != isLeftHand(to))
        return 0.85;
    return from.finger == to.finger ? 1.35 : 1;
}

/// The pause for thought before a stroke as a fraction of the mean time between two strokes.
double pauseBefore(std::span<const Keystroke> strokes, std::size_t i)
{
    const auto previous = strokes[i - 1].character;
    if (previous == '\n')
        return 2;
    if (previous != ' ')
        return 0;
    const std::string_view end(&strokes[i < 2 ? 0 : i - 2].character, 1);
    return end.find_first_of(".!?") == 0 ? 1.6 : end.find_first_of(",;:") == 0 ? 0.9 : 0.35;
}

/// The random deviations of a person.
class Hand
{
public:
    explicit Hand(std::uint64_t seed) : m_random{seed} {}

    /// A factor around 1 with about this standard deviation, skewed as reaction times are.
    double spread(double deviation)
    {
        const auto x = deviation * deviate();
        return 1 + x + x * x / 2;
    }

    /// The tempo, which wanders slowly around 1.
    double drift()
    {
        m_drift = 0.97 * m_drift + 0.02 * deviate();
        return 1 + m_drift;
    }

private:
    /// A number of mean 0 and variance 1, close to normal and within ±3. It is computed by addition
    /// alone, which gives the same value on every machine.
    double deviate() { return m_random.noise() + m_random.noise() + m_random.noise(); }

    SplitMix64 m_random;
    double m_drift = 0;
};

/// The time before each stroke as a fraction of the mean; 0 before the first.
std::vector<double> pace(std::span<const Keystroke> strokes, Hand& hand)
{
    std::vector<double> parts(strokes.size());
    for (std::size_t i = 1; i < strokes.size(); ++i) {
        const auto shift = strokes[i].isShifted && !strokes[i - 1].isShifted ? 0.25 : 0;
        const auto way = reach(strokes[i - 1], strokes[i]) + shift + pauseBefore(strokes, i);
        parts[i] = way * hand.spread(0.16) * hand.drift();
    }
    const auto sum = std::accumulate(parts.begin(), parts.end(), 0.0);
    for (double& part : std::span(parts).subspan(1)) // None of a single stroke, whose sum is 0.
        part *= static_cast<double>(strokes.size() - 1) / sum;
    return parts;
}

} // namespace

std::vector<KeyEvent> evenRhythm(std::span<const Keystroke> strokes, double wpm)
{
    const auto interval = intervalOf(wpm);
    std::vector<Timing> timings(strokes.size());
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        timings[i] = {.press = static_cast<double>(i) * interval,
                      .hold = std::min(0.08, interval / 2),
                      .shiftLead = 0.06};
    }
    return eventsOf(strokes, timings);
}

std::vector<KeyEvent> humanRhythm(std::span<const Keystroke> strokes, double wpm,
                                  std::uint64_t seed)
{
    if (strokes.empty())
        return {};
    const auto interval = intervalOf(wpm);
    Hand hand(seed);
    const auto parts = pace(strokes, hand);
    std::vector<Timing> timings(strokes.size());
    double time = 0;
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        time += parts[i] * interval;
        timings[i] = {.press = time,
                      .hold = std::min(0.095, 1.6 * interval) * hand.spread(0.18),
                      .shiftLead = 0.07 * hand.spread(0.2)};
    }
    return eventsOf(strokes, timings);
}

} // namespace clavo
