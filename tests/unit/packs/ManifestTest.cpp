// SPDX-License-Identifier: MIT
#include "packs/Manifest.h"

#include "unit/packs/PackFiles.h"

#include <gmock/gmock.h>

#include <fmt/format.h>

#include <array>
#include <string>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// A manifest in which one member has another value.
std::string manifestWith(std::string_view member, std::string_view value)
{
    constexpr std::array<std::pair<std::string_view, std::string_view>, 7> members{{
        {"id", R"("i")"},
        {"name", R"("n")"},
        {"detail", R"("d")"},
        {"category", R"("tactile")"},
        {"credit", R"("c")"},
        {"press", R"({"30": "a"})"},
        {"release", R"({})"},
    }};
    std::string json;
    for (const auto& [name, usual] : members) {
        json += json.empty() ? "{" : ", ";
        json.append("\"").append(name).append("\": ").append(name == member ? value : usual);
    }
    return json + "}";
}

TEST(Manifest, HoldsItsMembersAsWritten)
{
    const auto manifest = parseManifest(
        R"({"id": "red", "name": "Röd ☃", "detail": "light", "category": "Odd", "credit": "me",
            "press": {"30": "a", "x": "b"}, "release": {"030": "c/d"}})");

    ASSERT_TRUE(manifest);
    EXPECT_EQ(
        *manifest,
        (Manifest{
            "red", "Röd ☃", "light", "Odd", "me", {{"30", "a"}, {"x", "b"}}, {{"030", "c/d"}}}));
}

TEST(Manifest, MapsMayBeEmpty)
{
    const auto manifest = parseManifest(manifestWith("press", "{}"));

    ASSERT_TRUE(manifest);
    EXPECT_THAT(manifest->press, IsEmpty());
    EXPECT_THAT(manifest->release, IsEmpty());
}

TEST(Manifest, CreditMayBeAbsentOrNull)
{
    const auto null = parseManifest(manifestWith("credit", "null"));
    const auto absent = parseManifest(
        R"({"id": "", "name": "", "detail": "", "category": "", "press": {}, "release": {}})");

    ASSERT_TRUE(null);
    EXPECT_EQ(null->credit, std::nullopt);
    ASSERT_TRUE(absent);
    EXPECT_EQ(absent->credit, std::nullopt);
}

TEST(Manifest, UnknownMembersArePassedOver)
{
    const auto manifest = parseManifest(
        R"({"id": "i", "extra": {"id": 5, "press": {"30": [1, null, {"press": "x"}]}},
            "name": "n", "Press": 1, "detail": "d", "list": ["id", {"id": 2}, null, true, 1.5],
            "category": "c", "press": {"30": "a"}, "none": null, "release": {}, "number": -3})");

    ASSERT_TRUE(manifest);
    EXPECT_EQ(manifest->id, "i");
    EXPECT_THAT(manifest->press, ElementsAre(Pair("30", "a")));
}

TEST(Manifest, RepeatedMemberCountsOnceWithItsLastValue)
{
    const auto manifest = parseManifest(
        R"({"id": "first", "id": "last", "name": "", "detail": "", "category": "",
            "press": {"30": "a", "30": "b"}, "release": {"1": "x"}, "release": {"2": "y"}})");

    ASSERT_TRUE(manifest);
    EXPECT_EQ(manifest->id, "last");
    EXPECT_THAT(manifest->press, ElementsAre(Pair("30", "b")));
    EXPECT_THAT(manifest->release, ElementsAre(Pair("2", "y")));
}

class ManifestText : public testing::TestWithParam<const char*>
{
};
INSTANTIATE_TEST_SUITE_P(Member, ManifestText, testing::Values("id", "name", "detail", "category"));

TEST_P(ManifestText, IsNothingButAString)
{
    EXPECT_TRUE(parseManifest(manifestWith(GetParam(), R"("")")));
    for (const char* const value :
         {"null", "true", "1", "-1", "1.5", "{}", "[]", R"(["text"])", R"({"text": "text"})"})
        EXPECT_FALSE(parseManifest(manifestWith(GetParam(), value))) << value;
}

TEST(Manifest, CreditIsNothingButAStringOrNull)
{
    for (const char* const value : {"false", "1", "-1", "1.5", "{}", "[]", R"([null])"})
        EXPECT_FALSE(parseManifest(manifestWith("credit", value))) << value;
}

class ManifestMap : public testing::TestWithParam<const char*>
{
};
INSTANTIATE_TEST_SUITE_P(Member, ManifestMap, testing::Values("press", "release"));

TEST_P(ManifestMap, IsNothingButAnObjectOfStrings)
{
    for (const char* const value :
         {"null", "true", "1", "-1", "1.5", R"("text")", "[]", R"(["text"])", R"({"30": null})",
          R"({"30": true})", R"({"30": 1})", R"({"30": -1})", R"({"30": 1.5})", R"({"30": {}})",
          R"({"30": []})", R"({"30": ["a"]})", R"({"30": {"30": "a"}})", R"({"30": "a", "31": 1})"})
        EXPECT_FALSE(parseManifest(manifestWith(GetParam(), value))) << value;
}

TEST(Manifest, MissingMemberIsNoManifest)
{
    for (const std::string member : {"id", "name", "detail", "category", "press", "release"}) {
        auto json = manifestWith("", "");
        json.replace(json.find('"' + member + '"'), member.size() + 2, R"("other")");
        EXPECT_FALSE(parseManifest(json)) << member;
    }
}

TEST(Manifest, WhatIsNoJsonObjectIsNoManifest)
{
    for (const char* const json :
         {"", " ", "null", "1", "1.5", R"("text")", "[]", "{}", "id = red", "\x7f\x45LF"})
        EXPECT_FALSE(parseManifest(json)) << json;
    EXPECT_FALSE(parseManifest("[" + manifestText() + "]"));
    EXPECT_FALSE(parseManifest(manifestText() + "x"));
    EXPECT_FALSE(parseManifest(manifestText() + manifestText()));
    EXPECT_FALSE(parseManifest(std::string(1000, '\0')));
}

TEST(Manifest, TruncatedTextIsNoManifest)
{
    const auto json = manifestText(R"("30": "a", "31": "b")", R"("30": "cö☃")");

    ASSERT_TRUE(parseManifest(json));
    for (std::size_t length = 0; length < json.size(); ++length)
        EXPECT_FALSE(parseManifest(std::string_view(json).substr(0, length))) << length;
}

TEST(Manifest, InvalidUtf8IsNoManifest)
{
    for (const char* const bytes : {"\xff", "\xc3", "\xc0\xaf", "\xed\xa0\x80", "\xf5\x80\x80\x80"})
        EXPECT_FALSE(parseManifest(manifestText("", "", bytes)));
    EXPECT_FALSE(parseManifest(manifestText("\"30\": \"\xff\"")));
}

TEST(Manifest, DepthOfTheTextDoesNotMatter)
{
    const std::string open(1000000, '[');
    const std::string close(1000000, ']');
    std::string objects;
    for (int i = 0; i < 100000; ++i)
        objects += R"({"press":)";

    EXPECT_FALSE(parseManifest(open));
    EXPECT_FALSE(parseManifest(objects));
    EXPECT_FALSE(parseManifest(manifestWith("press", open + close)));
    EXPECT_FALSE(parseManifest(R"({"other": )" + open));
    auto json = manifestText();
    json.insert(1, R"("other": )" + open + close + ", ");
    EXPECT_TRUE(parseManifest(json));
}

TEST(Manifest, HoldsThousandsOfKeys)
{
    std::string press = R"("0": "first")";
    for (int scancode = 1; scancode < 50000; ++scancode)
        press += fmt::format(R"(, "{}": "sound-{}")", scancode, scancode);

    const auto manifest = parseManifest(manifestText(press));

    ASSERT_TRUE(manifest);
    EXPECT_EQ(manifest->press.size(), 50000);
    EXPECT_EQ(manifest->press.at("4321"), "sound-4321");
}

} // namespace
} // namespace clavo
