// A JSON text as a reader of it wants it: every value knows its place, and every complaint names
// the file, the place and the fault in one line.
#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace host {

// Objects and lists in each other.
constexpr std::size_t mostJsonLevels = 256;

// Checks the whole text: JSON in UTF-8, no key twice in an object, no more than mostJsonLevels.
// Throws InputError.
nlohmann::json ParseJson(const std::string& path, std::string_view text);

// In quotes and one line, for a message; a long text is cut.
std::string Quoted(std::string_view text);

// One value of a parsed text, which outlives it. All reads throw InputError for what isn't as
// asked.
class JsonValue {
  public:
    // The whole text.
    JsonValue(const std::string& filePath, const nlohmann::json& json)
        : path(filePath), value(json) {}
    JsonValue(const JsonValue&) = delete;
    JsonValue& operator=(const JsonValue&) = delete;

    [[noreturn]] void Complain(const std::string& fault) const;

    bool Bool() const;
    // A whole number between the two, both included.
    long long Whole(long long lowest, long long highest) const;
    double Number(double lowest, double highest) const;
    // Without NUL; of at most `mostBytes`.
    const std::string& Text(std::size_t mostBytes = 1'000'000) const;
    // A text of 1 to 1000 bytes without control characters.
    const std::string& Name() const;

    bool IsText() const { return value.is_string(); }
    bool IsBool() const { return value.is_boolean(); }
    bool IsNumber() const { return value.is_number(); }
    bool IsObject() const { return value.is_object(); }
    bool IsNull() const { return value.is_null(); }

    // An array's values in turn.
    void ForEach(const std::function<void(const JsonValue&)>& read) const;
    // An array's length.
    std::size_t Size() const;
    // An object's members, whatever their keys.
    void ForEachMember(
        const std::function<void(const std::string& key, const JsonValue&)>& read) const;

    // A member of an object, and what reads it.
    struct Member {
        std::string_view key;
        std::function<void(const JsonValue&)> read;
        bool needed = false;
    };
    // Reads an object's members in the order of the list. Other keys are a fault.
    void Read(std::initializer_list<Member> members) const;

  private:
    JsonValue(const JsonValue& in, std::string_view memberKey, const nlohmann::json& json)
        : path(in.path), value(json), parent(&in), key(memberKey) {}
    JsonValue(const JsonValue& in, std::size_t elementIndex, const nlohmann::json& json)
        : path(in.path), value(json), parent(&in), index(elementIndex) {}

    // "nodes[3].name"; empty for the whole text.
    std::string Place() const;
    void ExpectObject() const;
    [[noreturn]] void ComplainOfRange(const std::string& lowest, const std::string& highest) const;

    const std::string& path;
    const nlohmann::json& value;
    const JsonValue* parent = nullptr;
    std::string_view key;
    std::optional<std::size_t> index;
};

}  // namespace host
