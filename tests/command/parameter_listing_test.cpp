#include "command/parameter_listing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace command {
namespace {

using parameters::Choice;
using parameters::Row;
using parameters::Type;

constexpr Choice choices[] = {{0, "None"}, {2, "a|b"}};
const std::array<Row, 5> rows{
    parameters::Bool(1, "on", true, "Whether"),
    parameters::Int(2, "kind", 2, "Which").OneOf(choices),
    parameters::Real(3, "size", Type::Float, 72.5, "How large").Within(1, 10),
    parameters::Text(4, "name", "a \"b\"", "What"),
    parameters::Other(5, "nodes", Type::NodeTable, "Objects"),
};

TEST(ParameterListing, TextTellsEachInAFewLines) {
    EXPECT_EQ(ListParameters(rows, ListingForm::Text),
              "on  #1  Bool  default true\n    Whether\n"
              "kind  #2  Int  default 2\n    Which\n    0 = None, 2 = a|b\n"
              "size  #3  Float  default 72.5\n    How large\n    1 to 10\n"
              "name  #4  String  default \"a \\\"b\\\"\"\n    What\n"
              "nodes  #5  NodeTable\n    Objects\n");
}

TEST(ParameterListing, MarkdownIsATable) {
    EXPECT_EQ(ListParameters(rows, ListingForm::Markdown),
              "| Name | Id | Type | Default | Range or values | Meaning |\n"
              "|---|---|---|---|---|---|\n"
              "| `on` | 1 | Bool | `true` |  | Whether |\n"
              "| `kind` | 2 | Int | `2` | 0 = None, 2 = a\\|b | Which |\n"
              "| `size` | 3 | Float | `72.5` | 1 to 10 | How large |\n"
              "| `name` | 4 | String | `\"a \\\"b\\\"\"` |  | What |\n"
              "| `nodes` | 5 | NodeTable |  |  | Objects |\n");
}

TEST(ParameterListing, JsonHasTheSameKeysForEach) {
    const auto list = nlohmann::json::parse(ListParameters(rows, ListingForm::Json));
    ASSERT_EQ(list.size(), rows.size());
    for (const auto& entry : list) {
        for (const char* key :
             {"name", "id", "type", "default", "range", "values", "settable", "meaning"}) {
            EXPECT_TRUE(entry.contains(key)) << key;
        }
    }
    EXPECT_EQ(list[0]["default"], true);
    EXPECT_EQ(list[1]["default"], 2);
    EXPECT_EQ(list[1]["values"][1], (nlohmann::json{{"value", 2}, {"label", "a|b"}}));
    EXPECT_EQ(list[2]["range"], (nlohmann::json{1.0, 10.0}));
    EXPECT_EQ(list[3]["default"], "a \"b\"");
    EXPECT_TRUE(list[4]["default"].is_null());
    EXPECT_EQ(list[4]["settable"], false);
    EXPECT_EQ(list[0]["settable"], true);
}

TEST(ParameterListing, TheEffectsOwnTableIsListedWhole) {
    const auto table = plugin::EffectParameters();
    const std::string markdown = ListParameters(table, ListingForm::Markdown);
    EXPECT_EQ(std::count(markdown.begin(), markdown.end(), '\n'),
              static_cast<std::ptrdiff_t>(table.size() + 2));
    EXPECT_THAT(markdown, testing::HasSubstr("| `bitDepth` | 46 | Int | `16` |"));
}

}  // namespace
}  // namespace command
