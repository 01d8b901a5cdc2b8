#include "command/cryptomatte_manifest.h"

#include <charconv>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "command/cryptomatte_id.h"

namespace command {
namespace {

using Json = nlohmann::json;

constexpr std::size_t mostDigits = 8;

// An id; nothing for text that is no hexadecimal number of up to 32 bits.
std::optional<std::uint32_t> ParseID(std::string_view digits) {
    if (digits.empty() || digits.size() > mostDigits) return std::nullopt;
    std::uint32_t id = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, fault] = std::from_chars(digits.data(), end, id, 16);
    if (fault != std::errc() || stop != end) return std::nullopt;
    return id;
}

// Takes entries, and counts those that can't be taken.
class Collector {
  public:
    void Take(std::string name, std::string_view digits) {
        const std::optional<std::uint32_t> hash = ParseID(digits);
        if (!hash || name.empty()) {
            ++unreadable;
            return;
        }
        const std::uint32_t id = PixelID(*hash);
        const std::size_t before = manifest.index.Size();
        const std::uint32_t number = manifest.index.Add(id);
        if (manifest.index.Size() > before) {
            manifest.entries.push_back({std::move(name), id});
        } else if (manifest.entries[number].name != name) {
            ++doubles;
        }
    }
    void Lose() { ++unreadable; }

    Manifest Finish(bool isJson) {
        const auto count = [](std::size_t number, const char* one, const char* several) {
            return std::to_string(number) + (number == 1 ? one : several);
        };
        if (!isJson) {
            manifest.warnings.push_back(
                "the manifest is not valid JSON; " +
                count(manifest.entries.size(), " name of it was understood",
                      " names of it were understood") +
                (unreadable > 0 ? ", " + std::to_string(unreadable) + " not" : ""));
        } else if (unreadable > 0) {
            manifest.warnings.push_back(
                count(unreadable, " entry of the manifest is", " entries of the manifest are") +
                " no name with an id of 8 hexadecimal digits");
        }
        if (doubles > 0) {
            manifest.warnings.push_back(
                count(doubles, " name of the manifest has", " names of the manifest have") +
                " the id of another name and can't be told from it");
        }
        return std::move(manifest);
    }

  private:
    Manifest manifest;
    std::size_t unreadable = 0;
    std::size_t doubles = 0;
};

// Hears the JSON reader. What isn't a member of the outermost object with text as its value is an
// entry that can't be read.
class Listener : public nlohmann::json_sax<Json> {
  public:
    explicit Listener(Collector& entries) : collector(entries) {}

    // The text is an object.
    [[nodiscard]] bool IsObject() const { return isObject; }

    bool null() override { return Other(); }
    bool boolean(bool) override { return Other(); }
    bool number_integer(number_integer_t) override { return Other(); }
    bool number_unsigned(number_unsigned_t) override { return Other(); }
    bool number_float(number_float_t, const string_t&) override { return Other(); }
    bool binary(binary_t&) override { return Other(); }
    bool string(string_t& value) override {
        if (!isObject || depth != 1) return Other();
        collector.Take(std::move(name), value);
        return true;
    }
    bool start_object(std::size_t) override {
        if (depth == 0) isObject = true;
        return Open();
    }
    bool end_object() override { return Close(); }
    bool start_array(std::size_t) override { return Open(); }
    bool end_array() override { return Close(); }
    bool key(string_t& value) override {
        if (depth == 1) name = std::move(value);
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const Json::exception&) override {
        return false;
    }

  private:
    bool Other() {
        if (depth == 1) collector.Lose();
        return true;
    }
    bool Open() {
        if (depth == 1) collector.Lose();
        ++depth;
        return true;
    }
    bool Close() {
        --depth;
        return true;
    }

    Collector& collector;
    std::string name;
    std::size_t depth = 0;
    bool isObject = false;
};

bool IsBlank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r';
}

// Cuts blanks and then `letter` off the front; false, with only blanks gone, when another stands
// there.
bool Skip(std::string_view& text, char letter) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    if (text.empty() || text.front() != letter) return false;
    text.remove_prefix(1);
    return true;
}

bool EndsEntry(std::string_view text) {
    return Skip(text, ',') || Skip(text, '}') || text.empty();
}

// What stands behind a quotation mark that may end a name.
struct NameEnd {
    enum class Kind { InsideName, Entry, BrokenEntry } kind = Kind::InsideName;
    std::string_view value{};
    // Behind the value.
    std::string_view rest{};
};

NameEnd ReadNameEnd(std::string_view text) {
    if (!Skip(text, ':')) return {};
    if (Skip(text, '"')) {
        // Ids are short; the text between quotation marks that are far apart is part of a name.
        const std::size_t quote = text.substr(0, 64).find('"');
        if (quote == std::string_view::npos || !EndsEntry(text.substr(quote + 1))) return {};
        const std::string_view value = text.substr(0, quote);
        return {ParseID(value) ? NameEnd::Kind::Entry : NameEnd::Kind::BrokenEntry, value,
                text.substr(quote + 1)};
    }
    // A number, true, false or null.
    std::size_t length = 0;
    const std::string_view word = text.substr(0, 32);
    while (length < word.size() &&
           std::string_view("+-.0123456789aeflnrstuE").find(word[length]) != std::string_view::npos)
        ++length;
    if (length == 0 || !EndsEntry(text.substr(length))) return {};
    return {NameEnd::Kind::BrokenEntry, {}, text.substr(length)};
}

void AppendUtf8(std::string& text, std::uint32_t code) {
    const auto byte = [&](std::uint32_t value) {
        text += static_cast<char>(static_cast<unsigned char>(value));
    };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xc0 | code >> 6);
        byte(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        byte(0xe0 | code >> 12);
        byte(0x80 | (code >> 6 & 0x3f));
        byte(0x80 | (code & 0x3f));
    } else {
        byte(0xf0 | code >> 18);
        byte(0x80 | (code >> 12 & 0x3f));
        byte(0x80 | (code >> 6 & 0x3f));
        byte(0x80 | (code & 0x3f));
    }
}

// The number of "XXXX" at `at`.
std::optional<std::uint32_t> CodeUnit(std::string_view text, std::size_t at) {
    if (text.size() < 4 || at > text.size() - 4) return std::nullopt;
    return ParseID(text.substr(at, 4));
}

// Escapes taken back; what is none stays as it stands.
std::string Unescaped(std::string_view text) {
    constexpr std::string_view letters = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            plain += text[i];
            continue;
        }
        if (const std::size_t letter = letters.find(text[i + 1]);
            letter != std::string_view::npos) {
            plain += meanings[letter];
            ++i;
            continue;
        }
        std::optional<std::uint32_t> code =
            text[i + 1] == 'u' ? CodeUnit(text, i + 2) : std::nullopt;
        std::size_t length = 5;
        if (code && *code >> 10 == 0xd800 >> 10 && text.substr(i + 6, 2) == "\\u") {
            const std::optional<std::uint32_t> low = CodeUnit(text, i + 8);
            if (low && *low >> 10 == 0xdc00 >> 10) {
                code = 0x10000 + ((*code & 0x3ff) << 10 | (*low & 0x3ff));
                length = 11;
            }
        }
        if (!code || *code >> 11 == 0xd800 >> 11) {
            plain += text[i];
            continue;
        }
        AppendUtf8(plain, *code);
        i += length;
    }
    return plain;
}

// Entries are told by their ends: a quotation mark, a colon, an id in quotation marks, and a comma
// or brace. So a name may hold anything else.
void ReadTolerantly(std::string_view text, Collector& collector) {
    Skip(text, '{');
    while (true) {
        while (Skip(text, ',')) {
        }
        if (text.empty() || text.front() == '}') return;
        if (!Skip(text, '"')) {
            // Not the start of a name: look for the next one.
            collector.Lose();
            const std::size_t comma = text.find(',');
            if (comma == std::string_view::npos) return;
            text.remove_prefix(comma);
            continue;
        }
        NameEnd end;
        std::size_t quote = text.find('"');
        while (quote != std::string_view::npos) {
            end = ReadNameEnd(text.substr(quote + 1));
            if (end.kind != NameEnd::Kind::InsideName) break;
            quote = text.find('"', quote + 1);
        }
        if (quote == std::string_view::npos) return collector.Lose();
        if (end.kind == NameEnd::Kind::Entry) {
            collector.Take(Unescaped(text.substr(0, quote)), end.value);
        } else {
            collector.Lose();
        }
        text = end.rest;
    }
}

}  // namespace

std::string Manifest::NameOf(std::uint32_t id) const {
    const std::uint32_t number = index.Find(id);
    return number == IdIndex::none ? HexText(id) : entries[number].name;
}

Manifest ReadManifest(std::string_view text) {
    Collector collector;
    Listener listener(collector);
    if (Json::sax_parse(text, &listener) && listener.IsObject()) return collector.Finish(true);
    Collector tolerant;
    ReadTolerantly(text, tolerant);
    return tolerant.Finish(false);
}

}  // namespace command
