#include "plugin/parameters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using parameters::Row;

// The contract with saved scenes and scripts, row by row in the order of the descriptor: texts as
// RowText below makes them. Whoever changes a row here breaks scenes that users have saved.
struct Contract {
    ParamID id;
    const char* name;
    const char* type;
    const char* byDefault;
    // "low to high", or the values in the order of the list that offers them.
    const char* range;
    const char* control;
    bool accessor;
    const char* enables;
};

constexpr Contract effectContract[] = {
    {2, "layersProduction", "REFTARG table", "", "", "", true, ""},
    {3, "layersSecondary", "REFTARG table", "", "", "", true, ""},
    {25, "createRenderOutputLayer", "BOOL", "true", "", "0 checkbox 1080", true, ""},
    {27, "unnamed27", "BOOL", "true", "", "", false, ""},
    {36, "premultipliedAlpha", "BOOL", "true", "", "0 checkbox 1129", false, ""},
    {26, "createRenderElementLayers", "BOOL", "true", "", "1 checkbox 1088", true, "6, 58, 60"},
    {6, "renderSetting", "INT", "0", "0, 1", "1 radio 1049, 1050", false, ""},
    {0, "filename", "FILENAME", "", "", "own edit 1062", true, ""},
    {22, "compression", "INT", "1", "", "", false, ""},
    {35, "usePS7Extensions", "BOOL", "true", "", "", true, ""},
    {15, "createNodeIDLayer", "BOOL", "false", "", "6 checkbox 1055", false, ""},
    {16, "createMtlIDLayer", "BOOL", "false", "", "6 checkbox 1054", false, ""},
    {17, "createNodeRenderIDLayer", "BOOL", "false", "", "6 checkbox 1053", false, ""},
    {18, "outputNodeIDs", "BOOL", "false", "", "2 checkbox 1039", true, "23, 19, 31, 38"},
    {38, "outputNodeIDsLayerSet", "BOOL", "true", "", "2 check button 1010", false, ""},
    {23, "outputNodeIDsAs", "INT", "1", "0, 5, 1, 4", "2 combo 1105", false, ""},
    {19, "nodeIDList", "STRING", "1, 3 [Name], 5-8", "", "2 edit 1075", true, ""},
    {20, "outputMtlIDs", "BOOL", "false", "", "2 checkbox 1040", true, "24, 21, 32, 39"},
    {39, "outputMtlIDsLayerSet", "BOOL", "true", "", "2 check button 1009", false, ""},
    {24, "outputMtlIDsAs", "INT", "1", "0, 5, 1, 4", "2 combo 1106", false, ""},
    {21, "mtlIDList", "STRING", "1, 3 [Name], 5-8", "", "2 edit 1076", true, ""},
    {28, "outputObjects", "BOOL", "false", "", "2 checkbox 1041", true, "29, 30, 33, 40"},
    {40, "outputObjectsLayerSet", "BOOL", "true", "", "2 check button 1007", false, ""},
    {29, "outputObjectsAs", "INT", "1", "0, 5, 1, 4", "2 combo 1109", false, ""},
    {30, "objectList", "INODE table", "", "", "2 node list box 1094", false, ""},
    {34, "createNormalLayer", "BOOL", "false", "", "6 checkbox 1060", false, ""},
    {41, "embedCameraInfo", "BOOL", "true", "", "4 checkbox 1130", false, ""},
    {42, "embedHelpersInfo", "BOOL", "false", "", "4 checkbox 1131", false, "43"},
    {43, "embedHelpersWildcard", "STRING", "*", "", "4 edit 1133", false, ""},
    {37, "unnamed37", "BOOL", "false", "", "", false, ""},
    {44, "legacyBitDepth", "INT", "8", "", "", true, ""},
    {45, "resolution", "FLOAT", "72.0", "1.0 to 10000.0", "0 spinner 1144, 1145", false, ""},
    {46, "bitDepth", "INT", "16", "8, 16, 32", "0 radio 1107, 1108, 1110", true, ""},
    {47, "outputRenderAs", "INT", "2", "0, 1, 2, 3, 4", "0 combo 1143", false, ""},
    {48, "outputSceneLayers", "BOOL", "false", "", "5 checkbox 1149", true, "49, 50"},
    {49, "outputSceneLayersLayerGroup", "BOOL", "true", "", "5 check button 1150", false, ""},
    {50, "outputSceneLayersAs", "INT", "1", "0, 5, 1, 4", "5 combo 1152", false, ""},
    {51, "sceneLayerAppDataChunkId", "INT", "", "", "", false, ""},
    {53, "matchRenderOutputFilename", "BOOL", "true", "", "0 checkbox 1156", true, "124"},
    {52, "createNonClampedColorLayer", "BOOL", "false", "", "6 checkbox 1061", false, ""},
    {54, "gammaCorrectRender", "BOOL", "true", "", "Advanced 1164", false, ""},
    {55, "legacyGammaAll", "BOOL", "false", "", "", false, ""},
    {56, "vrayColorCorrections", "BOOL", "true", "", "Advanced 1167", false, ""},
    {57, "compatibility", "INT", "1", "2, 1, 0", "Advanced 1168", false, ""},
    {58, "createRenderElementsLayerSet", "BOOL", "false", "", "1 check button 1184", false, ""},
    {59, "renderElementsLayerSetName", "STRING", "", "", "", false, ""},
    {60, "createRenderElementsLayerSetMaskFromAlpha", "BOOL", "false", "", "1 checkbox 1186", false,
     ""},
    {61, "unnamed61", "BOOL", "false", "", "", false, ""},
    {62, "unnamed62", "STRING", "", "", "", false, ""},
    {63, "sceneLayersLayerSetName", "STRING", "", "", "", false, ""},
    {64, "nodeIdsLayerSetName", "STRING", "", "", "", false, ""},
    {65, "mtlIDsLayerSetName", "STRING", "", "", "", false, ""},
    {66, "objectsLayerSetName", "STRING", "", "", "", false, ""},
    {74, "namedSelectionSetsLayerSetName", "STRING", "", "", "", false, ""},
    {67, "createGBufferLayerSet", "BOOL", "false", "", "", false, ""},
    {68, "gbufferLayerSetName", "STRING", "", "", "", false, ""},
    {69, "gbufferObjectIdLayerName", "STRING", "", "", "", false, ""},
    {70, "gbufferMaterialIdLayerName", "STRING", "", "", "", false, ""},
    {71, "outputNamedSelectionSets", "BOOL", "false", "", "7 checkbox 1187", true, "72, 73"},
    {72, "createNamedSelectionSetsLayerSet", "BOOL", "true", "", "7 check button 1189", false, ""},
    {73, "outputNamedSelectionSetsAs", "INT", "1", "0, 5, 1, 4", "7 combo 1190", false, ""},
    {75, "namedSelectionSetsList", "STRING table", "", "", "own list view 1192", false, ""},
    {76, "shadowPassSource", "FILENAME", "", "", "", false, ""},
    {77, "customLayerSet1Name", "STRING", "", "", "", false, ""},
    {78, "filterEmptyLayersAndChannelsForAnimations", "BOOL", "false", "", "", false, ""},
    {79, "filterEmptyMattes", "BOOL", "true", "", "", false, ""},
    {80, "filterEmptyRenderElements", "BOOL", "false", "", "", false, ""},
    {81, "filterEmptyLayerSets", "BOOL", "false", "", "", false, ""},
    {82, "createZDepthChannel", "BOOL", "false", "", "", false, ""},
    {83, "zDepthCoverageThreshold", "PCNT_FRAC", "0.05", "", "", false, ""},
    {84, "zDepthExtendToBack", "PCNT_FRAC", "0.0", "", "", false, ""},
    {85, "zDepthChannelName", "STRING", "", "", "", false, ""},
    {86, "createCurvesAdjustmentLayer", "BOOL", "false", "", "", false, ""},
    {87, "curvesAdjustmentLayerName", "STRING", "", "", "", false, ""},
    {88, "renderOutputLayerName", "STRING", "", "", "", false, ""},
    {89, "unnamed89", "BOOL", "false", "", "", false, ""},
    {90, "unnamed90", "BOOL", "true", "", "", false, ""},
    {91, "shadowPassLayerStyle", "INT", "0", "", "", false, ""},
    {92, "renderSRGBCorrect", "BOOL", "false", "", "", false, ""},
    {93, "renderOrder", "INT", "100", "0 to 2000", "", false, ""},
    {94, "renderElementsOrder", "INT", "200", "0 to 2000", "", false, ""},
    {95, "maxLayersOrder", "INT", "300", "0 to 2000", "", false, ""},
    {96, "namedSelectionSetsOrder", "INT", "400", "0 to 2000", "", false, ""},
    {97, "nodeIDsOrder", "INT", "500", "0 to 2000", "", false, ""},
    {98, "mtlIDsOrder", "INT", "600", "0 to 2000", "", false, ""},
    {99, "objectsOrder", "INT", "700", "0 to 2000", "", false, ""},
    {100, "gbufferOrder", "INT", "800", "0 to 2000", "", false, ""},
    {101, "customLayerSet1Order", "INT", "0", "0 to 2000", "", false, ""},
    {106, "customLayerSet2Order", "INT", "0", "0 to 2000", "", false, ""},
    {120, "customLayerSet3Order", "INT", "0", "0 to 2000", "", false, ""},
    {112, "shadowPassLayerOrder", "INT", "900", "0 to 2000", "", false, ""},
    {115, "backgroundLayerOrder", "INT", "1000", "0 to 2000", "", false, ""},
    {118, "depthLayerOrder", "INT", "150", "0 to 2000", "", false, ""},
    {102, "customLayerSet1", "BOOL", "false", "", "", false, ""},
    {103, "customLayerSet1OpenInUI", "BOOL", "false", "", "", false, ""},
    {104, "customLayerSet1Visible", "BOOL", "true", "", "", false, ""},
    {105, "customLayerSet2", "BOOL", "false", "", "", false, ""},
    {107, "customLayerSet2OpenInUI", "BOOL", "false", "", "", false, ""},
    {108, "customLayerSet2Visible", "BOOL", "true", "", "", false, ""},
    {109, "customLayerSet2MaskFromRenderAlpha", "BOOL", "false", "", "", false, ""},
    {110, "customLayerSet2Name", "STRING", "", "", "", false, ""},
    {119, "customLayerSet3", "BOOL", "false", "", "", false, ""},
    {121, "customLayerSet3OpenInUI", "BOOL", "false", "", "", false, ""},
    {122, "customLayerSet3Visible", "BOOL", "true", "", "", false, ""},
    {123, "customLayerSet3Name", "STRING", "", "", "", false, ""},
    {111, "shadowPassLayerName", "STRING", "", "", "", false, ""},
    {113, "backgroundLayer", "BOOL", "false", "", "", false, ""},
    {114, "backgroundLayerName", "STRING", "", "", "", false, ""},
    {116, "depthLayer", "BOOL", "false", "", "", false, ""},
    {117, "depthLayerName", "STRING", "", "", "", false, ""},
    {124, "fileFormat", "INT", "0", "0, 1", "0 combo 1195", false, ""},
    {126, "colorCorrectConfig", "INT", "3", "3, 1, 0, 2", "Advanced 1217", false, ""},
    {127, "matteLayersVisible", "BOOL", "true", "", "Advanced 1169, inverted", false, ""},
    {128, "saveDenoiserExtraChannels", "BOOL", "false", "", "Advanced 1170", false, ""},
    {129, "gammaCorrectConfig", "INT", "3", "3, 1, 0, 2", "Advanced 1216", false, ""},
    {130, "autoSort", "BOOL", "true", "", "1 check button 1079", false, ""},
};

constexpr Contract layerContract[] = {
    {0, "renderElement", "REFTARG", "", "", "", false, ""},
    {1, "enabled", "BOOL", "true", "", "own list view 1043", false, ""},
    {2, "visible", "BOOL", "true", "", "own checkbox 1058", false, ""},
    {4, "mask", "BOOL", "false", "", "own checkbox 1057", false, ""},
    {5, "transparency", "BOOL", "true", "", "own checkbox 1056", false, ""},
    {6, "premultiply", "BOOL", "true", "", "own checkbox 1092", false, ""},
    {3, "blendingMode", "INT", "0",
     "0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, "
     "25, 26",
     "own combo 1045", false, ""},
    {7, "outputAs", "INT", "0", "0, 1", "own radio 1112, 1114", false, ""},
    {8, "groupWithPrevious", "BOOL", "false", "", "own checkbox 1059", false, ""},
    {9, "split", "BOOL", "false", "", "own checkbox 1159", false, ""},
    {10, "gammaCorrect", "BOOL", "true", "", "own checkbox 1160", false, ""},
    {11, "mergeDown", "BOOL", "false", "", "", false, ""},
    {12, "colorCorrect", "BOOL", "false", "", "own checkbox 1060", false, ""},
};

// The same form for a row of the table.

std::string TypeText(parameters::Type type) {
    using parameters::Type;
    switch (type) {
        case Type::Bool:
            return "BOOL";
        case Type::Int:
            return "INT";
        case Type::Float:
            return "FLOAT";
        case Type::Fraction:
            return "PCNT_FRAC";
        case Type::String:
            return "STRING";
        case Type::Filename:
            return "FILENAME";
        case Type::Reference:
            return "REFTARG";
        case Type::ReferenceTable:
            return "REFTARG table";
        case Type::NodeTable:
            return "INODE table";
        case Type::StringTable:
            return "STRING table";
    }
    return "unknown";
}

std::string NumberText(double number, bool real) {
    std::ostringstream text;
    text << number;
    if (real && text.str().find('.') == std::string::npos) text << ".0";
    return text.str();
}

bool IsReal(const Row& row) {
    return row.type == parameters::Type::Float || row.type == parameters::Type::Fraction;
}

std::string DefaultText(const Row& row) {
    switch (row.type) {
        case parameters::Type::Bool:
            return row.number != 0.0 ? "true" : "false";
        // Drawn anew for each object.
        case parameters::Type::Int:
            return row.name == "sceneLayerAppDataChunkId" ? "" : NumberText(row.number, false);
        case parameters::Type::Float:
        case parameters::Type::Fraction:
            return NumberText(row.number, true);
        default:
            return std::string(row.text);
    }
}

template <class Numbers>
std::string ListText(const Numbers& numbers) {
    std::string text;
    for (const auto number : numbers)
        text += (text.empty() ? "" : ", ") + std::to_string(number);
    return text;
}

std::string RangeText(const Row& row) {
    if (row.HasRange()) {
        return NumberText(row.low, IsReal(row)) + " to " + NumberText(row.high, IsReal(row));
    }
    std::vector<int> values;
    for (const parameters::Choice& choice : row.choices)
        values.push_back(choice.value);
    return ListText(values);
}

std::string ControlText(const Row& row) {
    using parameters::ControlKind;
    static constexpr const char* kinds[] = {"",       "checkbox",  "check button",  "combo",
                                            "edit",   "list view", "node list box", "radio",
                                            "spinner"};
    const parameters::Control& control = row.control;
    if (control.kind == ControlKind::None) return "";
    std::vector<int> ids;
    std::copy_if(control.ids.begin(), control.ids.end(), std::back_inserter(ids),
                 [](int id) { return id != 0; });
    std::string text;
    if (control.place == parameters::advancedDialog) {
        text = "Advanced " + ListText(ids);
    } else {
        const std::string place = control.unbound ? "own" : std::to_string(control.place);
        text = place + ' ' + kinds[static_cast<int>(control.kind)] + ' ' + ListText(ids);
    }
    return text + (control.inverted ? ", inverted" : "");
}

std::string EnablesText(const Row& row) {
    return ListText(
        std::vector<ParamID>(row.enables.begin(), row.enables.begin() + row.enableCount));
}

template <class Rows, std::size_t count>
void ExpectContract(const Rows& rows, const Contract (&contract)[count]) {
    ASSERT_EQ(std::size(rows), count);
    for (std::size_t i = 0; i < count; ++i) {
        const Row& row = rows[i];
        const Contract& expected = contract[i];
        EXPECT_EQ(row.id, expected.id);
        EXPECT_EQ(row.name, expected.name);
        EXPECT_EQ(TypeText(row.type), expected.type) << row.name;
        EXPECT_EQ(DefaultText(row), expected.byDefault) << row.name;
        EXPECT_EQ(RangeText(row), expected.range) << row.name;
        EXPECT_EQ(ControlText(row), expected.control) << row.name;
        EXPECT_EQ(row.accessor, expected.accessor) << row.name;
        EXPECT_EQ(EnablesText(row), expected.enables) << row.name;
    }
}

TEST(Parameters, OfTheEffectKeepTheContract) {
    ExpectContract(parameters::effectRows, effectContract);
}

TEST(Parameters, OfALayerKeepTheContract) {
    ExpectContract(parameters::layerRows, layerContract);
}

template <class Rows>
void ExpectUnique(const Rows& rows) {
    std::set<ParamID> ids;
    std::set<std::string_view> names;
    for (const Row& row : rows) {
        EXPECT_TRUE(ids.insert(row.id).second) << row.id;
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_FALSE(row.name.empty()) << row.id;
        EXPECT_FALSE(row.meaning.empty()) << row.name;
    }
}

TEST(Parameters, HaveIDsAndNamesOfTheirOwnAndAMeaning) {
    ExpectUnique(parameters::effectRows);
    ExpectUnique(parameters::layerRows);
}

TEST(Parameters, LeaveTheFreeIDsFree) {
    const std::set<ParamID> free = {1, 4, 5, 7, 8, 9, 10, 11, 12, 13, 14, 31, 32, 33, 125};
    for (const Row& row : parameters::effectRows)
        EXPECT_EQ(free.count(row.id), 0U) << row.id;
}

TEST(Parameters, AreInternalByTheirID) {
    std::set<ParamID> internal = {3, 27, 37, 44, 55, 74};
    for (ParamID id = 58; id <= 70; ++id)
        internal.insert(id);
    for (ParamID id = 76; id <= 123; ++id)
        internal.insert(id);
    for (ParamID id = -1; id <= 200; ++id) {
        EXPECT_EQ(parameters::IsInternal(id), internal.count(id) == 1) << id;
    }
}

TEST(Parameters, OnlyFilenameNamesARenderOutput) {
    for (const Row& row : parameters::effectRows) {
        EXPECT_EQ(row.assetType, row.name == "filename" ? 8 : 0) << row.name;
    }
}

TEST(Parameters, DefaultsAreAmongTheirChoicesAndInTheirRange) {
    for (const Row& row : parameters::effectRows) {
        if (row.HasRange()) {
            EXPECT_GE(row.number, row.low) << row.name;
            EXPECT_LE(row.number, row.high) << row.name;
        }
        if (row.choices.empty()) continue;
        EXPECT_TRUE(std::any_of(row.choices.begin(), row.choices.end(),
                                [&row](const parameters::Choice& choice) {
                                    return choice.value == static_cast<int>(row.number);
                                }))
            << row.name;
    }
}

TEST(Parameters, ChoicesHaveTheirLabels) {
    const auto labels = [](std::string_view name) {
        for (const Row& row : parameters::effectRows) {
            if (row.name != name) continue;
            std::vector<std::pair<int, std::string>> texts;
            for (const parameters::Choice& choice : row.choices) {
                texts.emplace_back(choice.value, choice.label);
            }
            return texts;
        }
        return std::vector<std::pair<int, std::string>>();
    };
    using Labels = std::vector<std::pair<int, std::string>>;
    for (const char* name : {"outputNodeIDsAs", "outputMtlIDsAs", "outputObjectsAs",
                             "outputSceneLayersAs", "outputNamedSelectionSetsAs"}) {
        EXPECT_EQ(labels(name), (Labels{{0, "Channels"},
                                        {5, "Layers (Render Cut-out)"},
                                        {1, "Layers (Alpha Matte)"},
                                        {4, "Layers (Luminance Matte)"}}));
    }
    EXPECT_EQ(labels("outputRenderAs"), (Labels{{0, "Layer with Transparency"},
                                                {1, "Layer (No Transparency)"},
                                                {2, "Layer + Mask"},
                                                {3, "Layer + Disabled Mask"},
                                                {4, "Layer + Alpha Channel"}}));
    EXPECT_EQ(labels("fileFormat"), (Labels{{0, "PSD"}, {1, "PSB"}}));
    EXPECT_EQ(labels("bitDepth"), (Labels{{8, "8 Bits"}, {16, "16 Bits"}, {32, "32 Bits (HDR)"}}));
    EXPECT_EQ(labels("compatibility"),
              (Labels{{2, "Maximize Compatibility (Produces larger files)"},
                      {1, "Good Compatibility (Default)"},
                      {0, "Minimize Filesize (Reduced compatibility)"}}));
    for (const char* name : {"gammaCorrectConfig", "colorCorrectConfig"}) {
        EXPECT_EQ(labels(name), (Labels{{3, "Create Adjustment Layer"},
                                        {1, "Apply to Render and specific Render Elements"},
                                        {0, "Apply to Render only"},
                                        {2, "Apply to Render and all Render Elements"}}));
    }
}

TEST(Parameters, ControlsOfARadioAreAsManyAsItsChoices) {
    for (const Row& row : parameters::effectRows) {
        if (row.control.kind != parameters::ControlKind::Radio) continue;
        const auto used = std::count_if(row.control.ids.begin(), row.control.ids.end(),
                                        [](int id) { return id != 0; });
        EXPECT_EQ(static_cast<std::size_t>(used), row.choices.size()) << row.name;
    }
}

TEST(Parameters, ControlsOfTheEffectAreBoundOnce) {
    std::set<int> controls;
    for (const Row& row : parameters::effectRows) {
        for (const int id : row.control.ids) {
            if (id == 0) continue;
            EXPECT_TRUE(controls.insert(id).second) << row.name << ", control " << id;
        }
    }
}

TEST(Parameters, AreFoundByNameWhileCompiling) {
    static_assert("bitDepth"_param == 46);
    static_assert("filename"_param == 0);
    static_assert("blendingMode"_layerParam == 3);
    SUCCEED();
}

}  // namespace
