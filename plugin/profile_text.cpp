#include "plugin/profile_text.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "effect/utf8.h"
#include "effect/windows1252.h"

namespace plugin {
namespace {

using Units = std::u16string;
using UnitsView = std::u16string_view;

enum class Encoding : std::uint8_t { Utf8, Utf16Little, Utf16Big, Ansi };

struct Mark {
    std::string_view bytes;
    Encoding encoding;
};
// The last one fits every text.
constexpr Mark marks[] = {{"\xEF\xBB\xBF", Encoding::Utf8},
                          {"\xFF\xFE", Encoding::Utf16Little},
                          {"\xFE\xFF", Encoding::Utf16Big},
                          {"", Encoding::Ansi}};

const Mark& MarkOf(std::string_view bytes) {
    return *std::find_if(std::begin(marks), std::end(marks),
                         [bytes](const Mark& mark) { return bytes.starts_with(mark.bytes); });
}

constexpr bool IsUtf16(Encoding encoding) {
    return encoding == Encoding::Utf16Little || encoding == Encoding::Utf16Big;
}

// The text behind its mark. Of 8-bit text each byte is a unit, so that it comes back as it was.
struct Text {
    const Mark& mark;
    Units units;
};

constexpr char16_t Unit(char byte) {
    return static_cast<unsigned char>(byte);
}

Text Decode(std::string_view bytes) {
    Text text{MarkOf(bytes), {}};
    bytes.remove_prefix(text.mark.bytes.size());
    if (!IsUtf16(text.mark.encoding)) {
        std::transform(bytes.begin(), bytes.end(), std::back_inserter(text.units), Unit);
        return text;
    }
    const std::size_t high = text.mark.encoding == Encoding::Utf16Little ? 1 : 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text.units.push_back(
            static_cast<char16_t>(Unit(bytes[i + high]) << 8 | Unit(bytes[i + 1 - high])));
    }
    return text;
}

std::string Encode(const Text& text) {
    std::string bytes(text.mark.bytes);
    for (const char16_t unit : text.units) {
        const auto low = static_cast<char>(unit & 0xFF);
        const auto high = static_cast<char>(unit >> 8);
        if (text.mark.encoding == Encoding::Utf16Big) bytes.push_back(high);
        bytes.push_back(low);
        if (text.mark.encoding == Encoding::Utf16Little) bytes.push_back(high);
    }
    return bytes;
}

constexpr char16_t Lower(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

bool IsCalled(UnitsView units, std::string_view name) {
    return std::equal(units.begin(), units.end(), name.begin(), name.end(),
                      [](char16_t a, char b) { return Lower(a) == Lower(Unit(b)); });
}

// From `first` up to, but not including, `last`.
struct Range {
    std::size_t first;
    std::size_t last;

    bool IsEmpty() const { return first == last; }
    UnitsView In(UnitsView units) const { return units.substr(first, last - first); }
};

// Control-Z ended files once, and counts as a blank.
constexpr UnitsView blanks = u" \t\v\f\x1A";
constexpr UnitsView lineEnds = u"\r\n";

Range Trim(UnitsView units, Range range) {
    while (!range.IsEmpty() && blanks.find(units[range.first]) != UnitsView::npos)
        ++range.first;
    while (!range.IsEmpty() && blanks.find(units[range.last - 1]) != UnitsView::npos)
        --range.last;
    return range;
}

struct Line {
    Range text;
    // Where the next one starts.
    std::size_t next;
};

Line LineAt(UnitsView units, std::size_t start) {
    const std::size_t end = std::min(units.find_first_of(lineEnds, start), units.size());
    const bool both = units.substr(end, 2) == lineEnds;
    return {Trim(units, {start, end}), std::min(end + (both ? 2 : 1), units.size())};
}

bool IsSectionLine(UnitsView line) {
    return line.starts_with(u'[') && line.find(u']') != UnitsView::npos;
}

// Text behind the last bracket is no part of the name.
UnitsView SectionName(UnitsView line) {
    return Trim(line, {1, line.rfind(u']')}).In(line);
}

// Where a key's line and its value are, or would be.
struct Place {
    bool hasSection = false;
    // Behind the section's last line that isn't blank.
    std::size_t sectionEnd = 0;
    std::optional<Range> line;
    // Empty without "=".
    std::optional<Range> value;
};

Place Find(UnitsView units, std::string_view section, std::string_view key) {
    Place place;
    for (std::size_t start = 0; start < units.size() && !place.line;) {
        const auto [text, next] = LineAt(units, start);
        start = next;
        const UnitsView line = text.In(units);
        if (line.empty()) continue;
        if (IsSectionLine(line)) {
            if (place.hasSection) break;
            place.hasSection = IsCalled(SectionName(line), section);
        }
        if (!place.hasSection) continue;
        place.sectionEnd = next;
        const std::size_t equals = text.first + std::min(line.find(u'='), line.size());
        const bool isKey = IsCalled(Trim(units, {text.first, equals}).In(units), key);
        if (isKey) place.line = text;
        if (isKey && equals < text.last) place.value = Trim(units, {equals + 1, text.last});
    }
    return place;
}

std::optional<std::uint8_t> Digit(char16_t unit) {
    constexpr UnitsView digits = u"0123456789abcdef";
    const std::size_t value = digits.find(Lower(unit));
    if (value == UnitsView::npos) return std::nullopt;
    return static_cast<std::uint8_t>(value);
}

// What the value of a key is, as it stands in the file; none without key or "=".
std::optional<UnitsView> ValueIn(UnitsView units, std::string_view section, std::string_view key) {
    if (!IsProfileName(section) || !IsProfileName(key)) return std::nullopt;
    const Place place = Find(units, section, key);
    if (!place.value) return std::nullopt;
    return place.value->In(units);
}

std::uint8_t Checksum(std::span<const std::uint8_t> record) {
    std::uint8_t sum = 0;
    for (const std::uint8_t byte : record)
        sum = static_cast<std::uint8_t>(sum + byte);
    return sum;
}

Units RecordDigits(std::span<const std::uint8_t> record) {
    constexpr UnitsView digits = u"0123456789ABCDEF";
    Units value;
    const auto append = [&value, digits](std::uint8_t byte) {
        value += {digits[byte >> 4], digits[byte & 15]};
    };
    std::for_each(record.begin(), record.end(), append);
    append(Checksum(record));
    return value;
}

UnitsView LineEndOf(UnitsView units) {
    const std::size_t end = units.find_first_of(lineEnds);
    if (end == UnitsView::npos) return lineEnds;
    return units.substr(end, units.substr(end, 2) == lineEnds ? 2 : 1);
}

// Before the line that starts at `at`, or behind the last line, which may have no end yet.
void InsertLine(Units& units, std::size_t at, const Units& line) {
    const Units end(LineEndOf(units));
    const bool isOpen = at > 0 && lineEnds.find(units[at - 1]) == UnitsView::npos;
    units.insert(at, (isOpen ? end : Units()) + line + end);
}

void Set(Units& units, std::string_view section, std::string_view key, const Units& value) {
    const Place place = Find(units, section, key);
    if (place.value) {
        units.replace(place.value->first, place.value->last - place.value->first, value);
        return;
    }
    Units line(u"=");
    line.append(value);
    if (place.line) {
        units.insert(place.line->last, line);
        return;
    }
    line.insert(line.begin(), key.begin(), key.end());
    if (place.hasSection) {
        InsertLine(units, place.sectionEnd, line);
        return;
    }
    Units header(u"[");
    header.append(section.begin(), section.end()).append(u"]");
    InsertLine(units, units.size(), header);
    InsertLine(units, units.size(), line);
}

UnitsView WithoutQuotes(UnitsView value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

MCHAR AnsiCharacter(char16_t byte) {
    const bool isControl = byte >= 0x80 && byte <= 0x9F;
    const char16_t character = isControl ? effect::windows1252Controls[byte - 0x80] : byte;
    return static_cast<MCHAR>(character ? character : byte);
}

}  // namespace

bool IsProfile(std::string_view bytes) {
    if (bytes.size() > largestProfile) return false;
    const Mark& mark = MarkOf(bytes);
    if (IsUtf16(mark.encoding) && bytes.size() % 2 != 0) return false;
    return Decode(bytes).units.find(u'\0') == Units::npos;
}

bool IsProfileName(std::string_view name) {
    const auto isPrintable = [](char c) { return c >= ' ' && c <= '~'; };
    return !name.empty() && std::all_of(name.begin(), name.end(), isPrintable) &&
           name.front() != ' ' && name.back() != ' ' && name.front() != ';' &&
           name.find_first_of("[]=") == std::string_view::npos;
}

bool FindProfileRecord(std::string_view bytes, std::string_view section, std::string_view key,
                       std::span<std::uint8_t> record) {
    if (!IsProfile(bytes)) return false;
    const Text text = Decode(bytes);
    const std::optional<UnitsView> value = ValueIn(text.units, section, key);
    if (!value || value->size() != 2 * (record.size() + 1)) return false;
    std::vector<std::uint8_t> found;
    for (std::size_t i = 0; i < value->size(); i += 2) {
        const std::optional<std::uint8_t> high = Digit((*value)[i]);
        const std::optional<std::uint8_t> low = Digit((*value)[i + 1]);
        if (!high || !low) return false;
        found.push_back(static_cast<std::uint8_t>(*high << 4 | *low));
    }
    const std::uint8_t checksum = found.back();
    found.pop_back();
    if (checksum != Checksum(found)) return false;
    std::copy(found.begin(), found.end(), record.begin());
    return true;
}

std::optional<MSTR> FindProfileString(std::string_view bytes, std::string_view section,
                                      std::string_view key) {
    if (!IsProfile(bytes)) return std::nullopt;
    const Text text = Decode(bytes);
    const std::optional<UnitsView> found = ValueIn(text.units, section, key);
    if (!found) return std::nullopt;
    const UnitsView value = WithoutQuotes(*found);
    std::basic_string<MCHAR> characters;
    switch (text.mark.encoding) {
        case Encoding::Utf8:
            characters = effect::FromUtf8(std::string(value.begin(), value.end()).c_str());
            break;
        case Encoding::Ansi:
            std::transform(value.begin(), value.end(), std::back_inserter(characters),
                           AnsiCharacter);
            break;
        case Encoding::Utf16Little:
        case Encoding::Utf16Big:
            characters.assign(value.begin(), value.end());
            break;
    }
    return MSTR(characters);
}

bool SetProfileRecord(std::string& bytes, std::string_view section, std::string_view key,
                      std::span<const std::uint8_t> record) {
    if (!IsProfile(bytes) || !IsProfileName(section) || !IsProfileName(key)) return false;
    Text text = Decode(bytes);
    Set(text.units, section, key, RecordDigits(record));
    std::string changed = Encode(text);
    if (!IsProfile(changed)) return false;
    bytes = std::move(changed);
    return true;
}

}  // namespace plugin
