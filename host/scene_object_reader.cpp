#include "host/scene_object_reader.h"

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "host/exact_text.h"
#include "host/saved_value_types.h"

namespace host {
namespace {

// The file's own size is the limit of texts.
constexpr std::size_t anySize = std::numeric_limits<std::size_t>::max();
constexpr long long mostOf32Bits = std::numeric_limits<std::uint32_t>::max();

// -1 for a letter that is none.
int HexDigit(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    if (letter >= 'a' && letter <= 'f') return letter - 'a' + 10;
    return letter >= 'A' && letter <= 'F' ? letter - 'A' + 10 : -1;
}

std::vector<std::uint8_t> ReadBytes(const JsonValue& value) {
    const std::string& text = value.Text(anySize);
    if (text.size() % 2 != 0) value.Complain("must have two hexadecimal digits a byte");
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t at = 0; at < text.size(); at += 2) {
        const int high = HexDigit(text[at]);
        const int low = HexDigit(text[at + 1]);
        if (high < 0 || low < 0) value.Complain("must have hexadecimal digits only");
        bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
    }
    return bytes;
}

// Host types of 32 bits are wider where `unsigned long` is.
DWORD ReadDWORD(const JsonValue& value) {
    return static_cast<DWORD>(value.Whole(0, mostOf32Bits));
}

// Bytes of a text that is given as UTF-16 units.
std::string TextOfUnits(const JsonValue& value) {
    const std::vector<std::uint8_t> bytes = ReadBytes(value);
    if (bytes.size() % 2 != 0) value.Complain("must have four hexadecimal digits a unit");
    std::basic_string<MCHAR> units;
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        const auto unit = static_cast<MCHAR>(bytes[at] << 8 | bytes[at + 1]);
        if (unit == 0) value.Complain("must not hold a unit 0000");
        units += unit;
    }
    return ToExactText(units.c_str());
}

float ReadFloat(const JsonValue& value) {
    using Limits = std::numeric_limits<float>;
    // Numbers that JSON has no form for.
    static constexpr std::pair<std::string_view, float> words[] = {
        {"inf", Limits::infinity()}, {"-inf", -Limits::infinity()}, {"nan", Limits::quiet_NaN()}};
    if (value.IsText()) {
        for (const auto& [word, number] : words) {
            if (value.Text() == word) return number;
        }
        value.Complain("must be a number, \"inf\", \"-inf\" or \"nan\"");
    }
    const double most = Limits::max();
    return static_cast<float>(value.Number(-most, most));
}

SavedReference ReadReference(const JsonValue& value) {
    if (value.IsNull()) return {};
    if (!value.IsNumber()) value.Complain("must be a handle, or null");
    return {ReadHandle(value)};
}

SavedValue ReadValue(const JsonValue& value, ParamType2 type) {
    switch (type) {
        case TYPE_BOOL:
            if (value.IsBool()) return value.Bool() ? 1 : 0;
            return ReadNumber<int>(value);
        case TYPE_INT:
            return ReadNumber<int>(value);
        case TYPE_FLOAT:
        case TYPE_PCNT_FRAC:
            return ReadFloat(value);
        case TYPE_STRING:
        case TYPE_FILENAME:
            return FromExactText(ReadExactText(value));
        default:
            return ReadReference(value);
    }
}

SavedParameter ReadParameter(const JsonValue& value) {
    SavedParameter parameter;
    std::optional<ParamType2> type;
    bool isGiven = false;
    value.Read({
        {"id", [&](const JsonValue& id) { parameter.id = ReadNumber<ParamID>(id); }, true},
        {"type",
         [&](const JsonValue& name) {
             type = ParameterTypeNamed(name.Text());
             if (!type) name.Complain("must be one of " + ParameterTypeNames());
             parameter.type = *type;
         },
         true},
        {"value",
         [&](const JsonValue& one) {
             isGiven = true;
             parameter.values.push_back(ReadValue(one, *type));
         }},
        {"values",
         [&](const JsonValue& list) {
             if (isGiven) list.Complain("stands beside \"value\"; leave one of them");
             isGiven = true;
             parameter.type = static_cast<ParamType2>(*type | TYPE_TAB);
             parameter.values.reserve(list.Size());
             list.ForEach([&](const JsonValue& each) {
                 parameter.values.push_back(ReadValue(each, *type));
             });
         }},
    });
    if (!isGiven) value.Complain("has neither \"value\" nor, for a table, \"values\"");
    return parameter;
}

SavedBlock ReadBlock(const JsonValue& value) {
    SavedBlock block;
    value.Read({
        {"id", [&](const JsonValue& id) { block.id = ReadNumber<BlockID>(id); }, true},
        {"version", [&](const JsonValue& version) { block.version = ReadDWORD(version); }, true},
        {"parameters",
         [&](const JsonValue& list) {
             block.parameters.reserve(list.Size());
             list.ForEach(
                 [&](const JsonValue& each) { block.parameters.push_back(ReadParameter(each)); });
         },
         true},
    });
    return block;
}

std::variant<SavedReference, SavedBlock> ReadObjectReference(const JsonValue& value) {
    if (!value.IsObject()) return ReadReference(value);
    SavedBlock block;
    value.Read({{"block", [&](const JsonValue& inner) { block = ReadBlock(inner); }, true}});
    return block;
}

std::vector<SavedChunk> ReadChunks(const JsonValue& list) {
    std::vector<SavedChunk> chunks;
    list.ForEach([&](const JsonValue& value) {
        SavedChunk& chunk = chunks.emplace_back();
        value.Read({
            {"id", [&](const JsonValue& id) { chunk.id = ReadNumber<USHORT>(id); }, true},
            {"data", [&](const JsonValue& data) { chunk.bytes = ReadBytes(data); }},
            {"chunks", [&](const JsonValue& inner) { chunk.chunks = ReadChunks(inner); }},
        });
    });
    return chunks;
}

SavedObject ReadObject(const JsonValue& value) {
    SavedObject object;
    value.Read({
        {"handle", [&](const JsonValue& handle) { object.handle = ReadHandle(handle); }, true},
        {"superClass", [&](const JsonValue& id) { object.superClass = ReadDWORD(id); }, true},
        {"class", [&](const JsonValue& id) { object.classID = ReadClassID(id); }, true},
        {"chunks", [&](const JsonValue& list) { object.chunks = ReadChunks(list); }},
        {"appData", [&](const JsonValue& list) { object.appData = ReadAppData(list); }},
        {"references",
         [&](const JsonValue& list) {
             object.references.reserve(list.Size());
             list.ForEach([&](const JsonValue& each) {
                 object.references.push_back(ReadObjectReference(each));
             });
         }},
    });
    return object;
}

}  // namespace

Handle ReadHandle(const JsonValue& value) {
    return static_cast<Handle>(value.Whole(1, mostOf32Bits));
}

Class_ID ReadClassID(const JsonValue& value) {
    std::vector<DWORD> numbers;
    if (value.Size() != 2) value.Complain("must be two numbers");
    value.ForEach([&](const JsonValue& each) { numbers.push_back(ReadDWORD(each)); });
    return {numbers[0], numbers[1]};
}

std::string ReadExactText(const JsonValue& value) {
    if (!value.IsObject()) return value.Text(anySize);
    std::string text;
    value.Read({{"utf16", [&](const JsonValue& units) { text = TextOfUnits(units); }, true}});
    return text;
}

std::vector<SavedAppData> ReadAppData(const JsonValue& list) {
    std::vector<SavedAppData> chunks;
    std::set<std::array<DWORD, 4>> owners;
    list.ForEach([&](const JsonValue& value) {
        SavedAppData& chunk = chunks.emplace_back();
        value.Read({
            {"class", [&](const JsonValue& id) { chunk.owner = ReadClassID(id); }, true},
            {"superClass", [&](const JsonValue& id) { chunk.ownerSuperClass = ReadDWORD(id); },
             true},
            {"subID", [&](const JsonValue& id) { chunk.subID = ReadDWORD(id); }, true},
            {"data", [&](const JsonValue& data) { chunk.bytes = ReadBytes(data); }, true},
        });
        const std::array<DWORD, 4> owner = {chunk.owner.PartA(), chunk.owner.PartB(),
                                            chunk.ownerSuperClass, chunk.subID};
        if (!owners.insert(owner).second) value.Complain("the data of this owner stands twice");
    });
    return chunks;
}

std::vector<SavedObject> ReadObjects(const JsonValue& list) {
    const auto complainOfCount = [](const JsonValue& value, std::size_t most, const char* what) {
        value.Complain("there are more than " + std::to_string(most) + " " + what);
    };
    std::vector<SavedObject> objects;
    if (list.Size() > mostObjects) complainOfCount(list, mostObjects, "objects");
    objects.reserve(list.Size());
    std::size_t effects = 0;
    list.ForEach([&](const JsonValue& value) {
        objects.push_back(ReadObject(value));
        effects += objects.back().superClass == RENDER_EFFECT_CLASS_ID ? 1 : 0;
        if (effects > mostEffects) complainOfCount(value, mostEffects, "effects");
    });
    return objects;
}

}  // namespace host
