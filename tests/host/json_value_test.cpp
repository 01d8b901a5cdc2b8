#include "host/json_value.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/input_error.h"
#include "tests/host/fault_text.h"

namespace host {
namespace {

const std::string path = "a.json";

// What reading the text with `read` complains of.
template <class Read>
std::string Complaint(const std::string& text, Read read) {
    return FaultText<InputError>([&] {
        const nlohmann::json json = ParseJson(path, text);
        read(JsonValue(path, json));
    });
}

std::string Complaint(const std::string& text) {
    return Complaint(text, [](const JsonValue&) {});
}

TEST(JsonValue, ReadsEveryKind) {
    const nlohmann::json json = ParseJson(
        path, R"({"on": true, "whole": -3, "real": 0.5, "text": "\u00fc", "list": [1, 2.0]})");
    bool on = false;
    long long whole = 0;
    double real = 0.0;
    std::string text;
    std::vector<long long> list;
    JsonValue(path, json)
        .Read({
            {"on", [&](const JsonValue& value) { on = value.Bool(); }},
            {"whole", [&](const JsonValue& value) { whole = value.Whole(-3, 3); }},
            {"real", [&](const JsonValue& value) { real = value.Number(0.0, 1.0); }},
            {"text", [&](const JsonValue& value) { text = value.Name(); }},
            {"list",
             [&](const JsonValue& value) {
                 value.ForEach([&](const JsonValue& each) { list.push_back(each.Whole(1, 2)); });
             }},
            {"absent", [&](const JsonValue& value) { value.Complain("should not be read"); }},
        });
    EXPECT_TRUE(on);
    EXPECT_EQ(whole, -3);
    EXPECT_EQ(real, 0.5);
    EXPECT_EQ(text, "\xc3\xbc");
    EXPECT_EQ(list, (std::vector<long long>{1, 2}));
}

TEST(JsonValue, WhatIsNoJsonTellsLineAndColumn) {
    EXPECT_EQ(Complaint("{\n  \"a\": 1,\n}"),
              "a.json: line 3, column 1: this is not JSON: unexpected '}'; expected string "
              "literal");
    EXPECT_EQ(Complaint("{} x").substr(0, 41), "a.json: line 1, column 4: this is not JSO");
    EXPECT_EQ(Complaint("").substr(0, 42), "a.json: line 1, column 1: this is not JSON");
    EXPECT_EQ(Complaint("\"\xff\"").substr(0, 42), "a.json: line 1, column 2: this is not JSON");
    EXPECT_EQ(Complaint("[NaN]").substr(0, 42), "a.json: line 1, column 2: this is not JSON");
}

TEST(JsonValue, ANumberBeyondAllNumbersIsRefused) {
    EXPECT_EQ(Complaint("[1e999]"),
              "a.json: line 1, column 6: this is not JSON: a number is too large");
}

TEST(JsonValue, AKeyThatStandsTwiceIsRefused) {
    EXPECT_EQ(Complaint(R"({"a": 1, "b": [0, {"c": 1, "c": 2}]})"),
              "a.json: b[1]: the key \"c\" stands twice");
    EXPECT_EQ(Complaint(R"({"a": {"x": 1}, "b": {"x": 1}})"), "");
}

TEST(JsonValue, NestingHasALimit) {
    const auto nested = [](std::size_t levels) {
        return std::string(levels, '[') + std::string(levels, ']');
    };
    EXPECT_EQ(Complaint(nested(256)), "");
    EXPECT_EQ(Complaint(nested(257)),
              "a.json: [0][0][0][0][0][0][0][0]: more than 256 levels in each other");
    EXPECT_EQ(Complaint(std::string(1'000'000, '[')),
              "a.json: [0][0][0][0][0][0][0][0]: more than 256 levels in each other");
}

TEST(JsonValue, ComplaintsTellThePlace) {
    const auto read = [](const JsonValue& whole) {
        whole.ForEachMember([](const std::string&, const JsonValue& list) {
            list.ForEach([](const JsonValue& each) {
                each.ForEachMember(
                    [](const std::string&, const JsonValue& value) { value.Bool(); });
            });
        });
    };
    EXPECT_EQ(Complaint(R"({"a": [{"b": true}, {"c": 1}]})", read),
              "a.json: a[1].c: must be true or false");
    EXPECT_EQ(Complaint(R"({"a b": [{"": 1}]})", read),
              R"(a.json: ["a b"][0][""]: must be true or false)");
    EXPECT_EQ(Complaint("[]", read), "a.json: must be an object, between { and }");
}

TEST(JsonValue, AnUnknownKeyTellsTheNearest) {
    const auto read = [](const JsonValue& whole) {
        whole.Read({{"hidden", [](const JsonValue&) {}}, {"name", [](const JsonValue&) {}}});
    };
    EXPECT_EQ(Complaint(R"({"hiden": true})", read),
              "a.json: there is no key \"hiden\" here; the nearest are hidden");
    EXPECT_EQ(Complaint("{\"x\\n" + std::string(200, 'y') + "\": 1}", read),
              "a.json: there is no key \"x " + std::string(98, 'y') +
                  "...\" here; the nearest are hidden");
}

TEST(JsonValue, AMissingKeyIsTold) {
    EXPECT_EQ(Complaint("{}",
                        [](const JsonValue& whole) {
                            whole.Read({{"name", [](const JsonValue&) {}, true}});
                        }),
              "a.json: the key \"name\" is missing");
}

TEST(JsonValue, WholeNumbersAreWholeAndInRange) {
    const auto read = [](const JsonValue& value) { value.Whole(0, 65535); };
    EXPECT_EQ(Complaint("65535", read), "");
    EXPECT_EQ(Complaint("65536", read), "a.json: must lie between 0 and 65535");
    EXPECT_EQ(Complaint("-1", read), "a.json: must lie between 0 and 65535");
    EXPECT_EQ(Complaint("18446744073709551616", read), "a.json: must lie between 0 and 65535");
    EXPECT_EQ(Complaint("1.5", read), "a.json: must be a whole number");
    EXPECT_EQ(Complaint("\"1\"", read), "a.json: must be a whole number");
    EXPECT_EQ(Complaint("true", read), "a.json: must be a whole number");
    EXPECT_EQ(Complaint("null", read), "a.json: must be a whole number");
}

TEST(JsonValue, NumbersAreInRange) {
    const auto read = [](const JsonValue& value) { value.Number(-0.5, 2.0); };
    EXPECT_EQ(Complaint("-0.5", read), "");
    EXPECT_EQ(Complaint("2.5", read), "a.json: must lie between -0.5 and 2");
    EXPECT_EQ(Complaint("[]", read), "a.json: must be a number");
}

TEST(JsonValue, NamesAreShortAndOfOneLine) {
    const auto read = [](const JsonValue& value) { value.Name(); };
    EXPECT_EQ(Complaint("\"a b/c\"", read), "");
    EXPECT_EQ(Complaint("\"\"", read), "a.json: must not be empty");
    EXPECT_EQ(Complaint("\"" + std::string(1000, 'a') + "\"", read), "");
    EXPECT_EQ(Complaint("\"" + std::string(1001, 'a') + "\"", read),
              "a.json: must not be longer than 1000 bytes");
    EXPECT_EQ(Complaint(R"("a\nb")", read), "a.json: must not hold control characters");
    EXPECT_EQ(Complaint("1", read), "a.json: must be a text");
}

TEST(JsonValue, TextsMayHaveLinesButNoZero) {
    const auto read = [](const JsonValue& value) { value.Text(); };
    EXPECT_EQ(Complaint(R"("a\nb")", read), "");
    EXPECT_EQ(Complaint(R"("a\u0000b")", read), "a.json: must not hold a character \\u0000");
}

TEST(JsonValue, QuotedTextIsOneShortLineOfUtf8) {
    EXPECT_EQ(Quoted("a b"), "\"a b\"");
    EXPECT_EQ(Quoted("a\nb"), "\"a b\"");
    EXPECT_EQ(Quoted(std::string(100, 'x')), "\"" + std::string(100, 'x') + "\"");
    EXPECT_EQ(Quoted(std::string(99, 'x') + "\xc3\xbc"),
              "\"" + std::string(99, 'x') + "\xef\xbf\xbd...\"");
}

TEST(JsonValue, WhatIsNoListIsTold) {
    EXPECT_EQ(Complaint("{}", [](const JsonValue& value) { value.ForEach({}); }),
              "a.json: must be a list, between [ and ]");
}

}  // namespace
}  // namespace host
