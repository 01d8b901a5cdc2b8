#include "host/json_value.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>
#include <vector>

#include "host/input_error.h"
#include "host/nearest_names.h"
#include "host/number_text.h"
#include "host/printable.h"
#include "host/text.h"

namespace host {
namespace {

using nlohmann::json;

constexpr std::size_t mostNameBytes = 1000;
// Of a text that a message quotes.
constexpr std::size_t mostQuoted = 100;

std::string PlaceText(std::string_view key) {
    const bool plain = !key.empty() && std::all_of(key.begin(), key.end(), [](char letter) {
        return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
               (letter >= 'a' && letter <= 'z') || letter == '_';
    });
    return plain ? "." + std::string(key.substr(0, mostQuoted)) : "[" + Quoted(key) + "]";
}

std::string PlaceText(std::size_t index) {
    return "[" + std::to_string(index) + "]";
}

[[noreturn]] void Throw(const std::string& path, std::string place, const std::string& fault) {
    if (place.starts_with('.')) place.erase(0, 1);
    throw InputError(path + ": " + place + (place.empty() ? "" : ": ") + fault);
}

// Looks at a text for what a tree of values no longer shows or shouldn't be made of.
class Inspection final : public json::json_sax_t {
  public:
    Inspection(const std::string& filePath, std::string_view wholeText)
        : path(filePath), text(wholeText) {}

    bool null() override { return Count(); }
    bool boolean(bool) override { return Count(); }
    bool number_integer(number_integer_t) override { return Count(); }
    bool number_unsigned(number_unsigned_t) override { return Count(); }
    bool number_float(number_float_t, const string_t&) override { return Count(); }
    bool string(string_t&) override { return Count(); }
    bool binary(binary_t&) override { return Count(); }
    bool start_object(std::size_t) override { return Open(false); }
    bool start_array(std::size_t) override { return Open(true); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(string_t& name) override {
        Level& level = levels.back();
        level.key = name;
        if (!level.keys.insert(name).second) {
            level.key.clear();
            Complain("the key " + Quoted(name) + " stands twice");
        }
        return true;
    }

    bool parse_error(std::size_t position, const std::string&,
                     const json::exception& fault) override {
        const std::string_view before = text.substr(0, position == 0 ? 0 : position - 1);
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        const std::size_t column = before.size() - (before.rfind('\n') + 1) + 1;
        throw InputError(path + ": line " + std::to_string(line) + ", column " +
                         std::to_string(column) + ": this is not JSON" + Reason(fault.what()));
    }

  private:
    struct Level {
        bool isArray;
        std::size_t count = 0;
        std::string key{};
        std::set<std::string> keys{};
    };

    // The library's words, as far as they don't repeat the text.
    static std::string Reason(const std::string& words) {
        const std::size_t unexpected = words.find("unexpected ");
        if (words.find("number overflow") != std::string::npos) return ": a number is too large";
        if (unexpected == std::string::npos) return "";
        return ": " + Printable(words.substr(unexpected));
    }

    bool Count() {
        if (!levels.empty()) ++levels.back().count;
        return true;
    }

    bool Open(bool isArray) {
        if (levels.size() == mostJsonLevels) {
            Complain("more than " + std::to_string(mostJsonLevels) + " levels in each other");
        }
        levels.push_back({isArray});
        return true;
    }

    bool Close() {
        levels.pop_back();
        return Count();
    }

    [[noreturn]] void Complain(const std::string& fault) const {
        // A few levels tell where it is.
        constexpr std::size_t mostShown = 8;
        std::string place;
        for (std::size_t i = 0; i < std::min(levels.size(), mostShown); ++i) {
            const Level& level = levels[i];
            if (level.isArray) {
                place += PlaceText(level.count);
            } else if (!level.key.empty()) {
                place += PlaceText(level.key);
            }
        }
        Throw(path, std::move(place), fault);
    }

    const std::string& path;
    std::string_view text;
    std::vector<Level> levels;
};

}  // namespace

std::string Quoted(std::string_view text) {
    // What is no UTF-8, such as the rest of a character that was cut, isn't shown as it is.
    const std::string whole = ToUtf8(FromUtf8(text.substr(0, mostQuoted)).data());
    return "\"" + Printable(whole) + (text.size() > mostQuoted ? "...\"" : "\"");
}

json ParseJson(const std::string& path, std::string_view text) {
    Inspection inspection(path, text);
    json::sax_parse(text, &inspection);
    return json::parse(text);
}

void JsonValue::Complain(const std::string& fault) const {
    Throw(path, Place(), fault);
}

std::string JsonValue::Place() const {
    std::vector<const JsonValue*> chain;
    for (const JsonValue* each = this; each->parent; each = each->parent)
        chain.push_back(each);
    std::string place;
    for (auto each = chain.rbegin(); each != chain.rend(); ++each) {
        place += (*each)->index ? PlaceText(*(*each)->index) : PlaceText((*each)->key);
    }
    return place;
}

bool JsonValue::Bool() const {
    if (!value.is_boolean()) Complain("must be true or false");
    return value.get<bool>();
}

long long JsonValue::Whole(long long lowest, long long highest) const {
    const double number = value.is_number() ? value.get<double>() : 0.5;
    if (std::floor(number) != number) Complain("must be a whole number");
    const auto low = static_cast<double>(lowest);
    const auto high = static_cast<double>(highest);
    if (number < low || number > high) {
        ComplainOfRange(std::to_string(lowest), std::to_string(highest));
    }
    return static_cast<long long>(number);
}

double JsonValue::Number(double lowest, double highest) const {
    if (!value.is_number()) Complain("must be a number");
    const auto number = value.get<double>();
    if (number < lowest || number > highest) {
        ComplainOfRange(NumberText(lowest), NumberText(highest));
    }
    return number;
}

void JsonValue::ComplainOfRange(const std::string& lowest, const std::string& highest) const {
    Complain("must lie between " + lowest + " and " + highest);
}

const std::string& JsonValue::Text(std::size_t mostBytes) const {
    if (!value.is_string()) Complain("must be a text");
    const auto& text = value.get_ref<const std::string&>();
    if (text.size() > mostBytes) {
        Complain("must not be longer than " + std::to_string(mostBytes) + " bytes");
    }
    if (text.find('\0') != std::string::npos) Complain("must not hold a character \\u0000");
    return text;
}

const std::string& JsonValue::Name() const {
    const std::string& name = Text(mostNameBytes);
    if (name.empty()) Complain("must not be empty");
    const bool hasControl = std::any_of(name.begin(), name.end(), [](char letter) {
        const auto code = static_cast<unsigned char>(letter);
        return code < 0x20 || code == 0x7f;
    });
    if (hasControl) Complain("must not hold control characters");
    return name;
}

std::size_t JsonValue::Size() const {
    if (!value.is_array()) Complain("must be a list, between [ and ]");
    return value.size();
}

void JsonValue::ForEach(const std::function<void(const JsonValue&)>& read) const {
    const std::size_t size = Size();
    for (std::size_t i = 0; i < size; ++i)
        read(JsonValue(*this, i, value[i]));
}

void JsonValue::ExpectObject() const {
    if (!value.is_object()) Complain("must be an object, between { and }");
}

void JsonValue::ForEachMember(
    const std::function<void(const std::string& key, const JsonValue&)>& read) const {
    ExpectObject();
    for (const auto& [name, member] : value.items())
        read(name, JsonValue(*this, name, member));
}

void JsonValue::Read(std::initializer_list<Member> members) const {
    ExpectObject();
    for (auto member = value.begin(); member != value.end(); ++member) {
        const std::string& name = member.key();
        const bool known = std::any_of(members.begin(), members.end(),
                                       [&](const Member& each) { return each.key == name; });
        if (known) continue;
        std::vector<std::string> keys;
        for (const Member& each : members)
            keys.emplace_back(each.key);
        Complain(
            "there is no key " + Quoted(name) + " here; the nearest are " +
            Joined(NearestNames(std::string_view(name).substr(0, mostQuoted), std::move(keys))));
    }
    for (const Member& member : members) {
        const auto found = value.find(member.key);
        if (found != value.end()) {
            member.read(JsonValue(*this, member.key, *found));
        } else if (member.needed) {
            Complain("the key \"" + std::string(member.key) + "\" is missing");
        }
    }
}

}  // namespace host
