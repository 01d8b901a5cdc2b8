#include "host/json_writer.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace host {
namespace {

using enum JsonLayout;

TEST(JsonWriter, WritesLinesAndWhatStandsInALine) {
    JsonWriter json;
    json.OpenObject(Lines);
    json.Key("a").Whole(-9'000'000'000);
    json.Key("b").OpenList(Lines);
    json.OpenObject(Line).Key("c").OpenList(Lines);
    json.Null();
    json.Bool(true);
    json.Bool(false);
    json.Close().Close();
    json.OpenObject(Lines).Close();
    json.OpenList(Line).Close();
    json.Close();
    json.Key("d \"e\"").Text("f\n\xc3\xbc\x01\\");
    json.Close();
    EXPECT_EQ(json.DeepestLevel(), 4U);
    EXPECT_EQ(json.Take(), R"({
  "a": -9000000000,
  "b": [
    {"c": [null, true, false]},
    {},
    []
  ],
  "d \"e\"": "f\n)"
                           "\xc3\xbc"
                           R"(\u0001\\"
}
)");
}

std::string TextOf(float value) {
    JsonWriter json;
    json.Real(value);
    std::string text = json.Take();
    text.pop_back();
    return text;
}

TEST(JsonWriter, FloatsAreShort) {
    EXPECT_EQ(TextOf(0.1F), "0.1");
    EXPECT_EQ(TextOf(72.0F), "72");
    EXPECT_EQ(TextOf(-0.0F), "-0.0");
    EXPECT_EQ(TextOf(1e-45F), "1e-45");
    // "3.4028235e+38" is more than a float can be.
    EXPECT_EQ(TextOf(std::numeric_limits<float>::max()), "3.4028234663852886e+38");
}

TEST(JsonWriter, DoublesAreAsLongAsTheyMust) {
    JsonWriter json;
    json.OpenList(Line);
    json.Real(54.4);
    json.Real(double{0.1F});
    json.Real(-0.0);
    json.Close();
    EXPECT_EQ(json.Take(), "[54.4, 0.10000000149011612, -0.0]\n");
}

TEST(JsonWriter, FloatsReadBackToTheBit) {
    std::uint32_t bits = 1;
    for (int i = 0; i < 200'000; ++i) {
        bits = bits * 1664525U + 1013904223U;
        const auto value = std::bit_cast<float>(bits);
        if (!std::isfinite(value)) continue;
        const auto read = static_cast<float>(std::strtod(TextOf(value).c_str(), nullptr));
        ASSERT_EQ(std::bit_cast<std::uint32_t>(read), bits) << TextOf(value);
    }
}

}  // namespace
}  // namespace host
