#include "plugin/parameter_blocks.h"

#include <array>
#include <cassert>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "plugin/parameters.h"

namespace plugin {
namespace {

using parameters::Choice;
using parameters::Control;
using parameters::ControlKind;
using parameters::Row;
using parameters::Type;

ParamType2 HostType(Type type) {
    switch (type) {
        case Type::Bool:
            return TYPE_BOOL;
        case Type::Int:
            return TYPE_INT;
        case Type::Float:
            return TYPE_FLOAT;
        case Type::Fraction:
            return TYPE_PCNT_FRAC;
        case Type::String:
            return TYPE_STRING;
        case Type::Filename:
            return TYPE_FILENAME;
        case Type::Reference:
            return TYPE_REFTARG;
        case Type::ReferenceTable:
            return TYPE_REFTARG_TAB;
        case Type::NodeTable:
            return TYPE_INODE_TAB;
        case Type::StringTable:
            return TYPE_STRING_TAB;
    }
    return TYPE_VOID;
}

// The table's names and texts are ASCII.
std::basic_string<MCHAR> HostText(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

void AddDefault(ParamBlockDesc2& desc, const Row& row) {
    switch (row.type) {
        case Type::Bool:
        case Type::Int:
            desc.ParamOption(row.id, p_default, static_cast<int>(row.number), p_end);
            break;
        case Type::Float:
        case Type::Fraction:
            desc.ParamOption(row.id, p_default, row.number, p_end);
            break;
        case Type::String:
        case Type::Filename:
            desc.ParamOption(row.id, p_default, HostText(row.text).c_str(), p_end);
            break;
        default:
            break;
    }
}

void AddRange(ParamBlockDesc2& desc, const Row& row) {
    if (row.type == Type::Int) {
        desc.ParamOption(row.id, p_range, static_cast<int>(row.low), static_cast<int>(row.high),
                         p_end);
    } else {
        desc.ParamOption(row.id, p_range, row.low, row.high, p_end);
    }
}

// The longest: a combo of five items.
constexpr std::size_t longestOption = 16;

// One tag with as many values as there are. The rest of the open list is p_end.
void AddOption(ParamBlockDesc2& desc, ParamID id, int tag, std::vector<int> values) {
    assert(values.size() < longestOption);
    values.resize(longestOption, p_end);
    [&]<std::size_t... index>(std::index_sequence<index...>) {
        desc.ParamOption(id, tag, values[index]...);
    }
    (std::make_index_sequence<longestOption>{});
}

void AppendValues(std::vector<int>& values, const Row& row) {
    values.push_back(p_vals);
    for (const Choice& choice : row.choices)
        values.push_back(choice.value);
}

std::vector<int> RadioValues(const Row& row) {
    const auto count = static_cast<int>(row.choices.size());
    std::vector<int> values{row.control.place, TYPE_RADIO, count};
    for (std::size_t i = 0; i < row.choices.size(); ++i)
        values.push_back(row.control.ids[i]);
    AppendValues(values, row);
    return values;
}

std::vector<int> ComboValues(const Row& row) {
    const auto count = static_cast<int>(row.choices.size());
    std::vector<int> values{row.control.place, TYPE_INT_COMBOBOX, row.control.ids[0], count};
    for (const Choice& choice : row.choices)
        values.push_back(choice.text);
    AppendValues(values, row);
    return values;
}

void AddControl(ParamBlockDesc2& desc, const Row& row) {
    const Control& control = row.control;
    const int id = control.ids[0];
    switch (control.kind) {
        case ControlKind::CheckBox:
            AddOption(desc, row.id, p_ui, {control.place, TYPE_SINGLECHEKBOX, id});
            break;
        case ControlKind::CheckButton:
            AddOption(desc, row.id, p_ui, {control.place, TYPE_CHECKBUTTON, id});
            break;
        case ControlKind::Edit:
            AddOption(desc, row.id, p_ui, {control.place, TYPE_EDITBOX, id});
            break;
        case ControlKind::NodeListBox:
            // Its buttons are the effect's own.
            AddOption(desc, row.id, p_ui, {control.place, TYPE_NODELISTBOX, id, 0, 0, 0});
            break;
        case ControlKind::Radio:
            AddOption(desc, row.id, p_ui, RadioValues(row));
            break;
        case ControlKind::Combo:
            AddOption(desc, row.id, p_ui, ComboValues(row));
            break;
        case ControlKind::Spinner:
            desc.ParamOption(row.id, p_ui, control.place, static_cast<int>(TYPE_SPINNER),
                             static_cast<int>(EDITTYPE_POS_FLOAT), id, control.ids[1], control.step,
                             p_end);
            break;
        case ControlKind::None:
        case ControlKind::ListView:
            break;
    }
}

void AddEnabling(ParamBlockDesc2& desc, const Row& row) {
    std::vector<int> values{row.enableCount};
    values.insert(values.end(), row.enables.begin(), row.enables.begin() + row.enableCount);
    AddOption(desc, row.id, p_enable_ctrls, std::move(values));
}

// The layer block's reference parameter is the owner's own reference 1.
constexpr int renderElementReference = 1;

void AddRow(ParamBlockDesc2& desc, const Row& row, std::string_view internalName,
            PBAccessor* accessor) {
    const std::basic_string<MCHAR> name = HostText(internalName);
    if (row.IsTable()) {
        desc.AddParam(row.id, name.c_str(), HostType(row.type), 0, P_VARIABLE_SIZE, 0, p_end);
    } else if (row.type == Type::Reference) {
        desc.AddParam(row.id, name.c_str(), HostType(row.type), P_OWNERS_REF, 0, p_refno,
                      renderElementReference, p_end);
    } else {
        desc.AddParam(row.id, name.c_str(), HostType(row.type), 0, 0, p_end);
    }
    AddDefault(desc, row);
    if (row.HasRange()) AddRange(desc, row);
    if (row.accessor && accessor) desc.ParamOption(row.id, p_accessor, accessor, p_end);
    if (row.assetType != 0) desc.ParamOption(row.id, p_assetTypeID, row.assetType, p_end);
    if (row.control.IsBoundByHost()) AddControl(desc, row);
    if (row.enableCount > 0) AddEnabling(desc, row);
}

struct MapArguments {
    int id;
    int dialogTemplate;
    int title;
    int testFlags;
    int rollupFlags;
    ParamMap2UserDlgProc* procedure;
};

constexpr MapArguments ArgumentsOf(const parameters::Rollup& rollup) {
    return {rollup.map, rollup.dialogTemplate,       rollup.title,
            0,          rollup.startsClosed ? 1 : 0, nullptr};
}

// The rollups stand in the constructor's open list of arguments; a tuple spreads the table there.
template <std::size_t... index>
std::unique_ptr<ParamBlockDesc2> NewEffectDesc(ClassDesc2& owner, std::index_sequence<index...>) {
    constexpr std::array<MapArguments, sizeof...(index)> maps{
        ArgumentsOf(parameters::rollups[index])...};
    const auto flatten = [](const MapArguments& map) {
        return std::make_tuple(map.id, map.dialogTemplate, map.title, map.testFlags,
                               map.rollupFlags, map.procedure);
    };
    return std::apply(
        [&owner](auto... arguments) {
            constexpr USHORT flags = P_AUTO_CONSTRUCT | P_AUTO_UI | P_MULTIMAP | P_VERSION;
            return std::make_unique<ParamBlockDesc2>(
                BlockID{0}, _M("params"), 0, &owner, flags, parameters::effectBlock.version,
                parameters::effectBlock.reference, static_cast<int>(std::size(parameters::rollups)),
                arguments..., int{p_end});
        },
        std::tuple_cat(flatten(maps[index])...));
}

}  // namespace

std::unique_ptr<ParamBlockDesc2> MakeEffectBlockDesc(ClassDesc2& owner, PBAccessor* accessor) {
    auto desc = NewEffectDesc(owner, std::make_index_sequence<std::size(parameters::rollups)>{});
    for (const Row& row : parameters::effectRows) {
        const bool internal = parameters::IsInternal(row.id);
        AddRow(*desc, row, internal ? std::string_view{} : row.name, accessor);
    }
    return desc;
}

std::unique_ptr<ParamBlockDesc2> MakeLayerBlockDesc(ClassDesc2& owner) {
    constexpr USHORT flags = P_AUTO_CONSTRUCT | P_VERSION;
    auto desc = std::make_unique<ParamBlockDesc2>(BlockID{0}, _M("params"), 0, &owner, flags,
                                                  parameters::layerBlock.version,
                                                  parameters::layerBlock.reference, int{p_end});
    for (const Row& row : parameters::layerRows)
        AddRow(*desc, row, row.name, nullptr);
    return desc;
}

}  // namespace plugin
