// The effect's parameter block as scenes of every version hold it.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

#include "host/saved_objects.h"
#include "plugin/parameters.h"

// A value that is not the default, within the range and one of the choices.
inline host::SavedValue UnlikeDefault(const parameters::Row& row) {
    using parameters::Type;
    const int byDefault = static_cast<int>(row.number);
    switch (row.type) {
        case Type::Bool:
            return byDefault == 0 ? 1 : 0;
        case Type::Int:
            if (!row.choices.empty()) {
                return row.choices.front().value != byDefault ? row.choices.front().value
                                                              : row.choices.back().value;
            }
            return row.HasRange() ? static_cast<int>(row.low) + 7 : byDefault + 7;
        case Type::Float:
            return 96.5F;
        case Type::Fraction:
            return 0.25F;
        case Type::Reference:
            return host::SavedReference{};
        default: {
            const std::string text = "own " + std::string(row.name);
            return MSTR(std::basic_string<MCHAR>(text.begin(), text.end()));
        }
    }
}

inline ParamType2 SavedType(parameters::Type type) {
    using parameters::Type;
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

// Of version 1, 2, 3 or 4, or of the numbering before them, above 100. All that the version had has
// another value than its default, legacyBitDepth is 8, and the tables are empty; before version 4
// the layers of the object and material groups, and of the scene layers, are of the two kinds
// that later versions no longer have.
inline host::SavedBlock EffectBlockOfVersion(DWORD version) {
    const auto among = [](ParamID id, std::initializer_list<ParamID> ids) {
        return std::find(ids.begin(), ids.end(), id) != ids.end();
    };
    const auto isBefore = [version](DWORD other) { return version < other || version > 100; };
    const auto isYounger = [&](ParamID id) {
        return (isBefore(4) && among(id, {"autoSort"_param})) ||
               (isBefore(3) && among(id, {"colorCorrectConfig"_param, "matteLayersVisible"_param,
                                          "gammaCorrectConfig"_param})) ||
               (isBefore(2) &&
                among(id, {"filterEmptyLayersAndChannelsForAnimations"_param,
                           "filterEmptyRenderElements"_param, "filterEmptyLayerSets"_param,
                           "createRenderElementsLayerSet"_param,
                           "createRenderElementsLayerSetMaskFromAlpha"_param, "unnamed61"_param,
                           "createGBufferLayerSet"_param, "createZDepthChannel"_param,
                           "createCurvesAdjustmentLayer"_param})) ||
               (version > 100 && among(id, {"bitDepth"_param, "matchRenderOutputFilename"_param}));
    };
    host::SavedBlock block{0, version, {}};
    for (const parameters::Row& row : parameters::effectRows) {
        if (isYounger(row.id)) continue;
        host::SavedParameter parameter{row.id, SavedType(row.type), {}};
        if (row.id == "legacyBitDepth"_param) {
            parameter.values = {8};
        } else if (isBefore(4) &&
                   among(row.id, {"outputSceneLayersAs"_param, "outputMtlIDsAs"_param})) {
            parameter.values = {2};
        } else if (isBefore(4) &&
                   among(row.id, {"outputNodeIDsAs"_param, "outputObjectsAs"_param})) {
            parameter.values = {3};
        } else if (!row.IsTable()) {
            parameter.values = {UnlikeDefault(row)};
        }
        block.parameters.push_back(parameter);
    }
    return block;
}
