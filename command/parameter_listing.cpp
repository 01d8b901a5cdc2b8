#include "command/parameter_listing.h"

#include <nlohmann/json.hpp>

#include "command/number_text.h"
#include "command/setting.h"

namespace command {
namespace {

using parameters::Row;
using parameters::Type;
using Json = nlohmann::ordered_json;

bool HoldsObjects(Type type) {
    return type == Type::Reference || type == Type::ReferenceTable || type == Type::NodeTable;
}

Json DefaultJson(const Row& row) {
    switch (row.type) {
        case Type::Bool:
            return row.number != 0;
        case Type::Int:
            return static_cast<int>(row.number);
        case Type::Float:
        case Type::Fraction:
            return row.number;
        case Type::String:
        case Type::Filename:
            return row.text;
        default:
            return nullptr;
    }
}

std::string DefaultText(const Row& row) {
    const Json value = DefaultJson(row);
    return value.is_null() ? "" : value.is_number() ? NumberText(row.number) : value.dump();
}

std::string ListAsJson(std::span<const Row> rows) {
    Json list = Json::array();
    for (const Row& row : rows) {
        Json entry;
        entry["name"] = row.name;
        entry["id"] = row.id;
        entry["type"] = TypeName(row.type);
        entry["default"] = DefaultJson(row);
        entry["range"] = nullptr;
        if (row.HasRange()) entry["range"] = {row.low, row.high};
        entry["values"] = Json::array();
        for (const parameters::Choice& choice : row.choices) {
            entry["values"].push_back({{"value", choice.value}, {"label", choice.label}});
        }
        entry["settable"] = !HoldsObjects(row.type);
        entry["meaning"] = row.meaning;
        list.push_back(std::move(entry));
    }
    return list.dump(2) + "\n";
}

// A vertical bar would end the cell.
std::string Cell(std::string_view text) {
    std::string cell;
    for (const char letter : text) {
        if (letter == '|') cell += '\\';
        cell += letter;
    }
    return cell;
}

std::string Code(std::string_view text) {
    return text.empty() ? "" : "`" + Cell(text) + "`";
}

std::string ListAsMarkdown(std::span<const Row> rows) {
    std::string list =
        "| Name | Id | Type | Default | Range or values | Meaning |\n"
        "|---|---|---|---|---|---|\n";
    for (const Row& row : rows) {
        list += "| " + Code(row.name) + " | " + std::to_string(row.id) + " | " +
                std::string(TypeName(row.type)) + " | " + Code(DefaultText(row)) + " | " +
                Cell(AllowedValues(row)) + " | " + Cell(row.meaning) + " |\n";
    }
    return list;
}

std::string ListAsText(std::span<const Row> rows) {
    std::string list;
    for (const Row& row : rows) {
        list += std::string(row.name) + "  #" + std::to_string(row.id) + "  " +
                std::string(TypeName(row.type));
        const std::string byDefault = DefaultText(row);
        if (!byDefault.empty()) list += "  default " + byDefault;
        list += "\n    " + std::string(row.meaning) + "\n";
        const std::string allowed = AllowedValues(row);
        if (!allowed.empty()) list += "    " + allowed + "\n";
    }
    return list;
}

}  // namespace

std::string ListParameters(std::span<const Row> rows, ListingForm form) {
    switch (form) {
        case ListingForm::Json:
            return ListAsJson(rows);
        case ListingForm::Markdown:
            return ListAsMarkdown(rows);
        case ListingForm::Text:
            break;
    }
    return ListAsText(rows);
}

}  // namespace command
