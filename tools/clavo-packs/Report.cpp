// SPDX-License-Identifier: MIT
#include "clavo-packs/Report.h"

#include <fmt/format.h>

#include <optional>
#include <string_view>

namespace clavo
{
namespace
{

/// The values that a figure may have.
struct Range {
    double lowest = 0;
    double highest = 0;

    static Range around(double value, double distance)
    {
        return {value - distance, value + distance};
    }
    static Range within(double value, double factor) { return {value / factor, value * factor}; }

    [[nodiscard]] bool holds(double value) const { return value >= lowest && value <= highest; }
};

/// How far a pack may be from the one keyboard that was recorded. Two keyboards of the same make
/// differ as much in tone as two keys of one; decays depend on the desk and, if long, on the room.
constexpr double centroidFactor = 1.25;
constexpr double t20Factor = 1.6;
constexpr double t60Factor = 2.5;
constexpr double crestDistance = 3;
constexpr double releaseDistance = 2;

class Table
{
public:
    explicit Table(const Recipe& recipe) : m_text(fmt::format("{}: {}\n", recipe.id, recipe.detail))
    {
    }

    void add(std::string_view figure, std::string_view unit, double value,
             const std::optional<Range>& range, int decimals = 0)
    {
        m_text += fmt::format("  {:<28}{:>8.{}f} {:<4}", figure, value, decimals, unit);
        if (range)
            m_text += fmt::format("{:>8.{}f} … {:.{}f}{}", range->lowest, decimals, range->highest,
                                  decimals, range->holds(value) ? "" : "  outside");
        m_text += '\n';
    }

    std::string text() && { return std::move(m_text); }

private:
    std::string m_text;
};

std::optional<Range> decayRange(std::optional<double> seconds, double factor)
{
    return seconds ? std::optional(Range::within(1000 * *seconds, factor)) : std::nullopt;
}

void addSound(Table& table, std::string_view name, const SoundFigures& figures,
              const Recipe::Reference::Sound& reference)
{
    const auto titled = [name](std::string_view figure) {
        return fmt::format("{} {}", name, figure);
    };
    table.add(titled("centroid"), "Hz", figures.centroid,
              Range::within(reference.centroid, centroidFactor));
    table.add(titled("T20"), "ms", 1000 * figures.t20, decayRange(reference.t20, t20Factor));
    table.add(titled("T60"), "ms", 1000 * figures.t60, decayRange(reference.t60, t60Factor));
}

void addLargeKey(Table& table, std::string_view name, const PackFigures::LargeKey& key, Range level,
                 Range centroid)
{
    table.add(fmt::format("{} above rows", name), "dB", key.level, level, 1);
    table.add(fmt::format("{} centroid of rows'", name), "", key.centroid, centroid, 2);
}

} // namespace

std::string reportOf(const Recipe& recipe, const PackFigures& figures)
{
    const Recipe::Reference& reference = recipe.reference;
    Table table(recipe);
    table.add("loudness", "LUFS", figures.loudness, Range::around(packLoudness, 1), 1);
    table.add("highest peak", "", figures.peak, Range{0, 0.97}, 2);
    addSound(table, "press", figures.press, reference.press);
    table.add("press crest", "dB", figures.press.crest,
              Range::around(reference.crest, crestDistance), 1);
    table.add("press length to -40 dB", "ms", 1000 * figures.press.length, Range{55, 110});
    addSound(table, "release", figures.release, reference.release);
    table.add("release length to -40 dB", "ms", 1000 * figures.release.length, {});
    table.add("release above press", "dB", figures.releaseLevel,
              Range::around(reference.releaseLevel, releaseDistance), 1);
    table.add("centroid spread in a row", "%", 100 * figures.centroidSpread, Range{8, 28});
    table.add("level spread in a row", "dB", figures.levelSpread, Range{1.3, 2.0}, 1);
    addLargeKey(table, "space", figures.largeKeys.at(KeySlot::space), {1, 3}, {0.65, 0.78});
    addLargeKey(table, "enter", figures.largeKeys.at(KeySlot::enter), {0, 2}, {0.7, 0.9});
    addLargeKey(table, "backspace", figures.largeKeys.at(KeySlot::backspace), {0.5, 2.5},
                {0.6, 0.9});
    return std::move(table).text();
}

} // namespace clavo
