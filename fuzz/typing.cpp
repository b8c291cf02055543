// SPDX-License-Identifier: MIT
// The command line of clavo-type, and the rhythm in which it types.
#include "clavo-type/Options.h"
#include "clavo-type/Rhythm.h"
#include "fuzz/Input.h"

#include <algorithm>
#include <set>
#include <vector>

using namespace clavo;
using fuzz::require;

namespace
{

/// The arguments: the lines of a text.
std::vector<std::string> argumentsOf(std::string text)
{
    std::ranges::replace(text, '\0', '\n');
    std::vector<std::string> arguments;
    for (std::size_t end = 0; (end = text.find('\n')) != std::string::npos; text.erase(0, end + 1))
        arguments.push_back(text.substr(0, end));
    return arguments;
}

auto read(const std::vector<std::string>& arguments)
{
    std::vector<const char*> all;
    for (const auto& argument : arguments)
        all.push_back(argument.c_str());
    ToolOptions few("tool", "", {{"file", {}, "FILE"}, {"humanize", {}}});
    if (!few.read(all)) {
        for (const auto& name : few.options())
            require(few.isSet(name.c_str()), "an option that is given is set");
    }
    return readTypingOptions(all);
}

TypingOptions checked(const std::variant<TypingOptions, ToolOptions::Answer>& read)
{
    if (const auto* const answer = std::get_if<ToolOptions::Answer>(&read)) {
        const std::string_view text = answer->text;
        if (answer->status == 0)
            require(text.starts_with("Usage: clavo-type ") || text.starts_with("clavo-type "),
                    "help and version are answers");
        else
            require(answer->status == 2 && text.starts_with("clavo-type: ") &&
                        text.ends_with("\nTry 'clavo-type --help'.\n"),
                    "misuse is told");
        return {};
    }
    auto options = std::get<TypingOptions>(read);
    require(options.wpm >= 1 && options.wpm <= 1000, "the tempo has limits");
    require(!options.text || options.file.empty(), "there is one text");
    require(!options.pack.empty(), "there is a pack");
    return options;
}

void checkRhythm(const std::vector<KeyEvent>& events, const std::vector<Keystroke>& strokes)
{
    require(std::ranges::is_sorted(events, {}, &KeyEvent::time), "events come in order");
    require(events.empty() || events.front().time.count() == 0, "the first one comes at once");
    std::set<std::int64_t> down;
    std::vector<std::int64_t> pressed;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const auto& [time, key] = events[i];
        if (key.down)
            require(down.insert(key.code).second, "a key goes down when it is up");
        else
            require(down.erase(key.code) == 1, "a key comes up when it is down");
        const auto isShift = key.code == 56 || key.code == 60;
        if (key.down && !isShift)
            pressed.push_back(key.code);
        const bool isShifted = pressed.size() > 0 && strokes[pressed.size() - 1].isShifted;
        require(!key.down || isShift || isShifted == (down.contains(56) || down.contains(60)),
                "shift is held for the characters that take it");
    }
    require(down.empty(), "every key comes up");
    require(std::ranges::equal(pressed, strokes, {}, {}, &Keystroke::code), "the text is typed");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto text = fuzz::textOf(data, size);
    auto arguments = argumentsOf(text);
    const auto options = checked(read(arguments));

    std::string joined;
    for (const auto& argument : arguments)
        joined += (&argument == &arguments.front() ? "" : " ") + argument;
    arguments.insert(arguments.begin(), "--");
    const auto literal = checked(read(arguments));
    require(literal.text.value_or("") == joined, "what follows -- is text, byte for byte");
    const auto output = checked(read({"--output=" + joined})).output;
    require(output == joined, "a file's name is taken byte for byte");

    const auto [strokes, skipped] = keystrokesOf(text);
    require(strokes.size() + skipped <= size, "a character has at least one byte");
    checkRhythm(evenRhythm(strokes, options.wpm), strokes);
    checkRhythm(humanRhythm(strokes, options.wpm, options.seed.value_or(0)), strokes);
    return 0;
}
