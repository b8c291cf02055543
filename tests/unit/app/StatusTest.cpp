// SPDX-License-Identifier: MIT
#include "app/Status.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <string>
#include <utility>

namespace clavo
{
namespace
{

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::Optional;
using testing::Pair;
using testing::StartsWith;

Status running()
{
    return {
        .version = "1.2.3",
        .tap = "X11",
        .isListening = true,
        .access = InputAccess::State::granted,
        .idle = std::chrono::seconds(2),
        .output = {.server = "PipeWire",
                   .quantumFrames = 128,
                   .sampleRate = 48000,
                   .searched = {"PipeWire", "PulseAudio"}},
        .isOutputRunning = true,
        .packName = "Red",
        .packID = "cherrymx-red-abs",
    };
}

TEST(StatusJson, HoldsAllOfIt)
{
    auto status = running();
    status.secureReason = SecureReason::passwordField;

    EXPECT_EQ(json::parse(jsonOf(status)), json::parse(R"({
        "version": "1.2.3",
        "input": {"tap": "X11", "listening": true, "access": "granted", "needsRelaunch": false,
                  "secondsSinceEvent": 2, "secure": "passwordField"},
        "output": {"server": "PipeWire", "running": true, "state": "playing",
                   "searched": ["PipeWire", "PulseAudio"], "waitingFor": null, "quantumFrames": 128,
                   "sampleRate": 48000, "quantumMilliseconds": 2.6666666666666665},
        "pack": {"id": "cherrymx-red-abs", "name": "Red"},
        "settings": {"enabled": true, "volume": 0.8, "packID": "cherrymx-red-abs",
                     "keyUpSounds": true, "mouseSounds": false, "scrollSounds": false,
                     "spatial": true}})"));
}

TEST(StatusJson, WhatThereIsNoneOfIsNull)
{
    const auto object = json::parse(jsonOf({}));

    EXPECT_EQ(object["input"]["secondsSinceEvent"], json());
    EXPECT_EQ(object["output"]["server"], json());
    EXPECT_EQ(object["output"]["quantumMilliseconds"], 0.0);
    EXPECT_EQ(object["pack"], json());
}

TEST(StatusJson, HoldsANameThatIsNoText)
{
    auto status = running();
    status.packName = "\xFF\"\n";

    EXPECT_EQ(json::parse(jsonOf(status))["pack"]["name"], "\uFFFD\"\n");
}

TEST(StatusText, SaysWhatTheJsonHolds)
{
    EXPECT_THAT(
        describe(jsonOf(running())),
        Optional(std::string("Clavo 1.2.3\n"
                             "Listening:  yes, to X11; the last event came 2 s ago\n"
                             "Permission: granted\n"
                             "Secret:     no\n"
                             "Output:     PipeWire, 128 frames at 48000 per second, 2.7 ms\n"
                             "Pack:       Red (cherrymx-red-abs)\n"
                             "Sounds:     on, volume 80 %\n"
                             "            releases on, mouse buttons off, wheel off, sides on\n")));
}

TEST(StatusText, SaysWhatIsMissing)
{
    EXPECT_THAT(
        describe(jsonOf({.output = {.server = "", .searched = {"PipeWire", "PulseAudio"}},
                         .isOutputRunning = true})),
        Optional(std::string("Clavo \n"
                             "Listening:  no\n"
                             "Permission: refused; the panel and Clavo's log say what to do\n"
                             "Secret:     no\n"
                             "Output:     none: neither PipeWire nor PulseAudio answers\n"
                             "Pack:       none\n"
                             "Sounds:     on, volume 80 %\n"
                             "            releases on, mouse buttons off, wheel off, sides on\n")));
}

TEST(StatusText, ReportsTheReasonForSilence)
{
    const auto text = [](SecureReason reason) {
        auto status = running();
        status.secureReason = reason;
        return describe(jsonOf(status)).value_or("");
    };

    EXPECT_THAT(text(SecureReason::lockedSession), HasSubstr("Secret:     yes, the session is l"));
    EXPECT_THAT(text(SecureReason::passwordField), HasSubstr("Secret:     yes, a password field"));
    EXPECT_THAT(text(SecureReason::passwordPrompt), HasSubstr("Secret:     yes, the program in f"));
    EXPECT_THAT(text(SecureReason::silentTerminal), HasSubstr("Secret:     yes, the terminal in"));
}

TEST(StatusText, ReportsWhatKeepsItFromListening)
{
    using State = InputAccess::State;
    const auto told = [](State access) {
        auto status = running();
        status.access = access;
        const auto object = jsonOf(status);
        return std::pair(json::parse(object)["input"]["access"].get<std::string>(),
                         describe(object).value_or(""));
    };

    EXPECT_THAT(told(State::granted), Pair("granted", HasSubstr("Permission: granted\n")));
    EXPECT_THAT(told(State::refused), Pair("refused", HasSubstr("Permission: refused; the panel")));
    EXPECT_THAT(told(State::noKeyboard), Pair("noKeyboard", HasSubstr("Permission: no keyboard")));
    EXPECT_THAT(told(State::notInThisLogin),
                Pair("notInThisLogin", HasSubstr("Permission: granted, but not in this login")));
}

TEST(StatusText, AStateOfANewerClavoIsReportedByItsName)
{
    auto object = json::parse(jsonOf(running()));
    object["input"]["access"] = "borrowed";

    EXPECT_THAT(describe(object.dump()), Optional(HasSubstr("Permission: borrowed\n")));
}

TEST(StatusText, ReportsOtherStates)
{
    auto status = running();
    status.needsRelaunch = true;
    status.isOutputRunning = false;
    status.idle.reset();
    status.settings.enabled = false;

    const auto text = describe(jsonOf(status)).value_or("");

    EXPECT_THAT(text, HasSubstr("Permission: granted, but Clavo has to be started anew"));
    EXPECT_THAT(text, HasSubstr("2.7 ms; asleep until the next sound\n"));
    EXPECT_THAT(text, HasSubstr("X11; nothing has come yet\n"));
    EXPECT_THAT(text, HasSubstr("Sounds:     off"));
}

TEST(StatusText, ATapThatHasLostItsKeyboardsSaysThatItWaits)
{
    auto status = running();
    status.access = InputAccess::State::noKeyboard;

    EXPECT_THAT(
        describe(jsonOf(status)),
        Optional(HasSubstr("Listening:  yes, to X11, as soon as it has a keyboard again\n")));
}

TEST(StatusText, WhatAnotherProcessReportsIsSafeForATerminal)
{
    auto object = json::parse(jsonOf(running()));
    object["version"] = "\x1b]0;owned\x07";
    object["input"]["access"] = "\u009b2J";
    object["pack"]["name"] = "\u202egnol\n";
    object["extra\u0085"] = json::array({"\x1b["});
    const auto text = object.dump();

    EXPECT_THAT(describe(text), Optional(AllOf(StartsWith("Clavo \uFFFD]0;owned\uFFFD\n"),
                                               HasSubstr("Permission: \uFFFD2J\n"),
                                               HasSubstr("Pack:       \uFFFDgnol\uFFFD ("))));
    const auto printed = json::parse(printableJson(text).value_or("{}"));
    EXPECT_EQ(printed["version"], "\uFFFD]0;owned\uFFFD");
    EXPECT_EQ(printed["pack"]["name"], "\uFFFDgnol\uFFFD");
    EXPECT_EQ(printed["extra\uFFFD"], json::array({"\uFFFD["}));
}

TEST(StatusText, DeepNestingIsLeftOut)
{
    auto object = json::parse(jsonOf(running()));
    auto text = object.dump();
    text.insert(1, "\"deep\":" + std::string(100'000, '[') + std::string(100'000, ']') + ",");

    EXPECT_EQ(describe(text), describe(object.dump()));
}

TEST(StatusJson, OfAnythingElseIsNotPrinted)
{
    EXPECT_EQ(printableJson("{}"), std::nullopt);
    EXPECT_EQ(printableJson("text"), std::nullopt);
    EXPECT_EQ(printableJson(jsonOf(running())), jsonOf(running()));
}

TEST(StatusText, ReportsAgesInFittingUnits)
{
    const auto text = [](std::int64_t idle) {
        auto status = running();
        status.idle = std::chrono::seconds(idle);
        return describe(jsonOf(status)).value_or("");
    };

    EXPECT_THAT(text(59), HasSubstr("came 59 s ago"));
    EXPECT_THAT(text(119), HasSubstr("came 1 min ago"));
    EXPECT_THAT(text(7300), HasSubstr("came 2 h ago"));
}

TEST(StatusText, ThereIsNoneOfAnythingElse)
{
    for (const auto* text : {"", "{}", "[]", "7", "text", R"({"version": 7})"})
        EXPECT_EQ(describe(text), std::nullopt) << text;
}

TEST(StatusText, ThereIsNoneOfACountThatIsNoInteger)
{
    for (const auto* const count :
         {"/input/secondsSinceEvent", "/output/quantumFrames", "/output/sampleRate"}) {
        auto status = json::parse(jsonOf(running()));
        status[json::json_pointer(count)] = 1e300;
        EXPECT_EQ(describe(status.dump()), std::nullopt) << count;
    }
}

TEST(StatusText, SaysWhatTheProgramIsBuiltWithout)
{
    auto status = running();
    EXPECT_THAT(describe(jsonOf(status)), Optional(Not(HasSubstr("Built without"))));

    status.missing = "PipeWire, X11";

    EXPECT_THAT(describe(jsonOf(status)), Optional(HasSubstr("Built without: PipeWire, X11\n")));
}

} // namespace
} // namespace clavo
