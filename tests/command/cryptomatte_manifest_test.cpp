#include "command/cryptomatte_manifest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/cryptomatte_id.h"

namespace command {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// "NAME=ID".
std::vector<std::string> EntriesOf(const Manifest& manifest) {
    std::vector<std::string> entries;
    for (const ManifestEntry& each : manifest.entries)
        entries.push_back(each.name + "=" + HexText(each.id));
    return entries;
}

TEST(Manifest, GivesNamesTheirIds) {
    const Manifest manifest = ReadManifest(
        R"({"bunny":"13851a76", "Red lacquer" : "EE9EC508","W\u00fcrfel":"c959a2b5"})");
    EXPECT_THAT(EntriesOf(manifest),
                ElementsAre("bunny=13851a76", "Red lacquer=ee9ec508", "W\xc3\xbcrfel=c959a2b5"));
    EXPECT_THAT(manifest.warnings, IsEmpty());
    EXPECT_EQ(manifest.NameOf(0x13851a76), "bunny");
    EXPECT_EQ(manifest.NameOf(0x13851a77), "13851a77");
}

TEST(Manifest, MayBeEmpty) {
    EXPECT_THAT(ReadManifest("{}").entries, IsEmpty());
    EXPECT_THAT(ReadManifest("{}").warnings, IsEmpty());
    EXPECT_EQ(ReadManifest("{}").NameOf(1), "00000001");
}

TEST(Manifest, GivesRawHashesTheFlipThatPixelsHave) {
    const Manifest manifest = ReadManifest(R"({"Pot/Lid":"004720e2"})");
    EXPECT_THAT(EntriesOf(manifest), ElementsAre("Pot/Lid=00c720e2"));
    EXPECT_EQ(manifest.NameOf(0x00c720e2), "Pot/Lid");
    // The flipped one stays.
    EXPECT_THAT(EntriesOf(ReadManifest(R"({"Pot/Lid":"00c720e2"})")),
                ElementsAre("Pot/Lid=00c720e2"));
}

TEST(Manifest, TakesIdsThatLackTheirFirstZeros) {
    EXPECT_THAT(EntriesOf(ReadManifest(R"({"a":"4720e2"})")), ElementsAre("a=00c720e2"));
}

TEST(Manifest, CountsEntriesThatAreNoNameWithAnId) {
    const Manifest manifest = ReadManifest(
        R"({"a":"13851a76","b":5,"c":"xyz","d":"","e":"123456789","f":null,"g":[1,"12345678"],)"
        R"("h":{"i":"12345678"},"":"12345678","-":"-1234567","j":"0x123456"})");
    EXPECT_THAT(EntriesOf(manifest), ElementsAre("a=13851a76"));
    EXPECT_THAT(manifest.warnings,
                ElementsAre("10 entries of the manifest are no name with an id of 8 hexadecimal "
                            "digits"));
    EXPECT_THAT(ReadManifest(R"({"b":5})").warnings,
                ElementsAre("1 entry of the manifest is no name with an id of 8 hexadecimal "
                            "digits"));
}

TEST(Manifest, TheFirstNameKeepsAnId) {
    const Manifest manifest = ReadManifest(
        R"({"a":"13851a76","b":"13851a76","a":"13851a76","c":"004720e2","d":"00c720e2","a":"1"})");
    // The same name may have several ids.
    EXPECT_THAT(EntriesOf(manifest), ElementsAre("a=13851a76", "c=00c720e2", "a=00800001"));
    EXPECT_THAT(manifest.warnings,
                ElementsAre("2 names of the manifest have the id of another name "
                            "and can't be told from it"));
}

TEST(Manifest, CopesWithBareQuotationMarksInNames) {
    const Manifest manifest = ReadManifest(
        R"({"19" rim":"13851a76","plain":"42c9679f", "a "b", c" : "00000001" ,"\"x\" \u00fc":"2"})");
    EXPECT_THAT(EntriesOf(manifest), ElementsAre("19\" rim=13851a76", "plain=42c9679f",
                                                 "a \"b\", c=00800001", "\"x\" \xc3\xbc=00800002"));
    EXPECT_THAT(manifest.warnings, ElementsAre("the manifest is not valid JSON; 4 names of it were "
                                               "understood"));
}

TEST(Manifest, KeepsWhatItUnderstandsOfBrokenText) {
    const Manifest manifest =
        ReadManifest(R"({"19" rim":"13851a76","b":5,"c":"nothing",,"d":"42c9679f","e":"12)");
    EXPECT_THAT(EntriesOf(manifest), ElementsAre("19\" rim=13851a76", "d=42c9679f"));
    EXPECT_THAT(manifest.warnings, ElementsAre("the manifest is not valid JSON; 2 names of it were "
                                               "understood, 3 not"));
}

TEST(Manifest, KeepsBackslashesThatEscapeNothing) {
    EXPECT_THAT(EntriesOf(ReadManifest(R"({"a\qb\":"13851a76","\ud83d\ude00\ud83d":"42c9679f"})")),
                ElementsAre("a\\qb\\=13851a76", "\xf0\x9f\x98\x80\\ud83d=42c9679f"));
}

TEST(Manifest, KeepsNamesThatAreNoUtf8) {
    const Manifest manifest = ReadManifest("{\"W\xfcrfel\":\"13851a76\"}");
    EXPECT_THAT(EntriesOf(manifest), ElementsAre("W\xfcrfel=13851a76"));
    EXPECT_THAT(manifest.warnings,
                ElementsAre("the manifest is not valid JSON; 1 name of it was understood"));
}

TEST(Manifest, GivesNothingForOtherText) {
    for (const char* text : {"", "{", "nonsense", "[]", "\"a\"", "5", "{\"", "{\"a", "{\"a\":",
                             "{\"a\":\"", "{\"a\":\"1", "{\"a\"\"b\"", "{,,,", "\"\"\"\"\""}) {
        const Manifest manifest = ReadManifest(text);
        EXPECT_THAT(manifest.entries, IsEmpty()) << text;
        EXPECT_EQ(manifest.warnings.size(), 1U) << text;
    }
}

std::string LargeManifest(bool isJson) {
    std::string text = isJson ? "{" : "{\"bare \" mark\":\"13851a76\",";
    for (int i = 0; i < 200'000; ++i) {
        const std::string name = "/scene/group/object_" + std::to_string(i);
        text += (i > 0 ? ",\"" : "\"") + name + "\":\"" + HexText(CryptomatteID(name)) + "\"";
    }
    return text + "}";
}

// A reader that is quadratic, in names or in marks, doesn't come to an end here.
TEST(Manifest, OfManyNamesIsRead) {
    for (const bool isJson : {true, false}) {
        const std::string text = LargeManifest(isJson);
        const Manifest manifest = ReadManifest(text);
        // Some names of so many share an id.
        EXPECT_GT(manifest.entries.size(), 199'900U);
    }
}

TEST(Manifest, OfQuotationMarksAloneIsRead) {
    for (const std::string_view piece : {"\"", "\" ", "\":\"", "\":", ",", "\\\"", "\" : \" "}) {
        std::string text = "{";
        while (text.size() < 2'000'000)
            text += piece;
        EXPECT_EQ(ReadManifest(text).warnings.size(), 1U) << piece;
    }
}

}  // namespace
}  // namespace command
