// SPDX-License-Identifier: MIT
#include "clavo-type/Options.h"

#include <fmt/format.h>

#include <charconv>
#include <cstddef>
#include <stdexcept>

namespace clavo
{
namespace
{

constexpr double slowest = 1;
constexpr double fastest = 1000;

class Misused : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

template <typename Number> bool parsed(std::string_view text, Number& number)
{
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

/// The arguments one after the other, an option's value in either spelling: "--wpm 90", "--wpm=90".
class Arguments
{
public:
    explicit Arguments(std::span<const char* const> arguments) : m_left(arguments) {}

    [[nodiscard]] bool isEmpty() const { return m_left.empty(); }

    std::string_view takeText()
    {
        const std::string_view text = m_left.front();
        m_left = m_left.subspan(1);
        return text;
    }

    std::string_view takeName()
    {
        m_name = takeText();
        m_value = {};
        const auto equals = m_name.find('=');
        m_hasValue = m_name.starts_with("--") && equals != std::string_view::npos;
        if (m_hasValue) {
            m_value = m_name.substr(equals + 1);
            m_name = m_name.substr(0, equals);
        }
        return m_name;
    }

    /// Of the option just taken.
    std::string_view takeValue()
    {
        if (!m_hasValue && !isEmpty())
            m_value = takeText();
        const auto value = m_value;
        if (value.empty())
            throw Misused(fmt::format("{} needs a value", m_name));
        return value;
    }

    void expectNoValue() const
    {
        if (m_hasValue)
            throw Misused(fmt::format("{} takes no value", m_name));
    }

private:
    std::span<const char* const> m_left;
    std::string_view m_name;
    bool m_hasValue = false;  // In the same argument.
    std::string_view m_value; // Of the option, as far as it has been read.
};

void addText(TypingOptions& options, std::string_view text)
{
    if (options.text)
        options.text->append(" ").append(text);
    else
        options.text = text;
}

double wpmOf(std::string_view value)
{
    double wpm = 0;
    if (!parsed(value, wpm) || !(wpm >= slowest && wpm <= fastest))
        throw Misused(fmt::format("--wpm is a number from {} to {}", slowest, fastest));
    return wpm;
}

std::uint64_t seedOf(std::string_view value)
{
    std::uint64_t seed = 0;
    if (!parsed(value, seed))
        throw Misused("--seed is a whole number from 0 to 18446744073709551615");
    return seed;
}

/// Nothing: help is asked for.
std::optional<TypingOptions> read(Arguments arguments)
{
    TypingOptions options;
    while (!arguments.isEmpty()) {
        const auto name = arguments.takeName();
        if (name == "--help" || name == "-h") {
            return std::nullopt;
        } else if (name == "--humanize") {
            arguments.expectNoValue();
            options.isHuman = true;
        } else if (name == "-o" || name == "--output") {
            options.output = arguments.takeValue();
        } else if (name == "-f" || name == "--file") {
            options.file = arguments.takeValue();
        } else if (name == "--pack") {
            options.pack = arguments.takeValue();
        } else if (name == "--wpm") {
            options.wpm = wpmOf(arguments.takeValue());
        } else if (name == "--seed") {
            options.seed = seedOf(arguments.takeValue());
        } else if (name == "--") {
            while (!arguments.isEmpty())
                addText(options, arguments.takeText());
        } else if (name.starts_with("-")) {
            throw Misused(
                fmt::format("unknown option {}; a text that begins so comes after --", name));
        } else {
            addText(options, name);
        }
    }
    if (options.text && !options.file.empty())
        throw Misused("a text and --file exclude each other");
    return options;
}

} // namespace

std::variant<TypingOptions, TypingHelp, TypingMisuse>
readTypingOptions(std::span<const char* const> arguments)
{
    try {
        if (auto options = read(Arguments(arguments)))
            return *std::move(options);
        return TypingHelp{};
    } catch (const Misused& misused) {
        return TypingMisuse{misused.what()};
    }
}

std::string_view typingHelp()
{
    return R"(Usage: clavo-type [OPTION]… [TEXT…]

Types a text on a keyboard that is not there: Clavo's sounds, to the speakers or into a file. The
text is TEXT, a file's or the standard input; every character counts, line ends with Return. Nothing
of yours is read or written but what is named here: no settings, no statistics.

Options:
  -f, --file FILE     type this file
  -o, --output FILE   write a WAV file instead, faster than real time: 44.1 kHz, stereo, 24 bits
      --pack ID       the sound pack; cherrymx-red-abs if not given, custom:ID for one of yours
      --wpm NUMBER    the tempo in words of five characters a minute, 1 to 1000; 80 if not given
      --humanize      the rhythm of a person: uneven, with pauses, keys overlapping
      --seed NUMBER   the same sounds and the same rhythm every time
      --help          print this text

Keys are those of a US keyboard. Characters that it has no key for are left out and counted.

Exit status: 0 done, 1 not possible, 2 command line not understood.
)";
}

} // namespace clavo
