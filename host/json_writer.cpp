#include "host/json_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/number_text.h"

namespace host {
namespace {

// A whole number would lose the sign of zero.
std::string WithSignOfZero(std::string text) {
    if (text == "-0") text = "-0.0";
    return text;
}

}  // namespace

JsonWriter& JsonWriter::OpenObject(JsonLayout layout) {
    return Open('{', '}', layout);
}

JsonWriter& JsonWriter::OpenList(JsonLayout layout) {
    return Open('[', ']', layout);
}

JsonWriter& JsonWriter::Open(char begin, char end, JsonLayout layout) {
    BeginValue();
    text_ += begin;
    const bool inLines = layout == JsonLayout::Lines && (levels_.empty() || levels_.back().inLines);
    levels_.push_back({end, inLines});
    deepest_ = std::max(deepest_, levels_.size());
    return *this;
}

JsonWriter& JsonWriter::Close() {
    const Level level = levels_.back();
    levels_.pop_back();
    if (level.inLines && !level.isEmpty) BreakLine();
    text_ += level.end;
    return *this;
}

JsonWriter& JsonWriter::Key(std::string_view key) {
    BeginValue();
    text_ += nlohmann::json(key).dump();
    text_ += ": ";
    afterKey_ = true;
    return *this;
}

void JsonWriter::BeginValue() {
    if (std::exchange(afterKey_, false) || levels_.empty()) return;
    Level& level = levels_.back();
    if (!level.isEmpty) text_ += level.inLines ? "," : ", ";
    level.isEmpty = false;
    if (level.inLines) BreakLine();
}

void JsonWriter::BreakLine() {
    text_ += '\n';
    text_.append(2 * levels_.size(), ' ');
}

void JsonWriter::Word(std::string_view text) {
    BeginValue();
    text_ += text;
}

void JsonWriter::Real(float value) {
    std::array<char, 32> shortest{};
    const auto written = std::to_chars(shortest.data(), shortest.data() + shortest.size(), value);
    // The digits that tell a float from its neighbours may, as a double, lie just between two.
    double read = 0.0;
    std::from_chars(shortest.data(), written.ptr, read);
    const bool isInRange = read >= -std::numeric_limits<float>::max() &&
                           read <= double{std::numeric_limits<float>::max()};
    const bool isExact = isInRange && static_cast<float>(read) == value;
    if (!isExact) return Real(double{value});
    Word(WithSignOfZero({shortest.data(), written.ptr}));
}

void JsonWriter::Real(double value) {
    Word(WithSignOfZero(NumberText(value)));
}

void JsonWriter::Text(std::string_view utf8) {
    Word(nlohmann::json(utf8).dump());
}

std::string JsonWriter::Take() {
    text_ += '\n';
    return std::exchange(text_, {});
}

}  // namespace host
