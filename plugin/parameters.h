// The one table of the effect's settings. Descriptors, the command's listing, docs/parameters.md
// and the tests come from it. Ids are part of saved scenes and never change; rows stand in the
// order of the descriptors.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string_view>

#include <iparamb2_types.h>

namespace parameters {

enum class Type : std::uint8_t {
    Bool,
    Int,
    Float,
    Fraction,
    String,
    Filename,
    Reference,
    ReferenceTable,
    NodeTable,
    StringTable,
};

enum class ControlKind : std::uint8_t {
    None,
    CheckBox,
    CheckButton,
    Combo,
    Edit,
    ListView,
    NodeListBox,
    Radio,
    Spinner,
};

// Where a control stands: a rollup's map id, or one of these.
constexpr int noPlace = -1;
constexpr int advancedDialog = -2;
constexpr int elementDetail = -3;

struct Control {
    int place = noPlace;
    ControlKind kind = ControlKind::None;
    // Dialog control ids; 0 for those that aren't used. A radio has one a value, in the order of
    // the choices; a spinner its edit field, then its arrows.
    std::array<int, 3> ids{};
    // The control shows the opposite of the value.
    bool inverted = false;
    // Drawn and read by the effect itself, not bound by the host.
    bool unbound = false;
    // What a click of a spinner's arrow adds.
    double step = 0.0;

    constexpr bool IsBoundByHost() const { return place >= 0 && !unbound; }
};

struct Choice {
    int value;
    std::string_view label;
    // The label's number among the library's strings, where the host fills a combo; else 0.
    StringResID text = 0;
};

struct Row {
    ParamID id = 0;
    std::string_view name{};
    Type type = Type::Bool;
    std::string_view meaning{};
    double number = 0.0;
    std::string_view text{};
    // low == high: any value.
    double low = 0.0;
    double high = 0.0;
    // Empty: any value in the range.
    std::span<const Choice> choices{};
    Control control{};
    bool accessor = false;
    // Parameters whose controls are enabled with this one. Some ids have no row: they disable
    // nothing, and stay as they are.
    std::array<ParamID, 4> enables{};
    int enableCount = 0;
    int assetType = 0;

    constexpr bool HasRange() const { return low < high; }
    constexpr bool IsTable() const {
        return type == Type::ReferenceTable || type == Type::NodeTable || type == Type::StringTable;
    }

    // How rows are written.
    constexpr Row In(int place, ControlKind kind, int first, int second = 0, int third = 0) const {
        Row row = *this;
        row.control = {place, kind, {first, second, third}};
        return row;
    }
    constexpr Row Inverted() const {
        Row row = *this;
        row.control.inverted = true;
        return row;
    }
    constexpr Row Stepping(double step) const {
        Row row = *this;
        row.control.step = step;
        return row;
    }
    constexpr Row Unbound() const {
        Row row = *this;
        row.control.unbound = true;
        return row;
    }
    constexpr Row Accessed() const {
        Row row = *this;
        row.accessor = true;
        return row;
    }
    constexpr Row Within(double lowest, double highest) const {
        Row row = *this;
        row.low = lowest;
        row.high = highest;
        return row;
    }
    constexpr Row OneOf(std::span<const Choice> values) const {
        Row row = *this;
        row.choices = values;
        return row;
    }
    constexpr Row Enabling(std::initializer_list<ParamID> ids) const {
        Row row = *this;
        for (ParamID enabled : ids)
            row.enables[static_cast<std::size_t>(row.enableCount++)] = enabled;
        return row;
    }
};

constexpr Row Bool(ParamID id, std::string_view name, bool byDefault, std::string_view meaning) {
    return {.id = id, .name = name, .meaning = meaning, .number = byDefault ? 1.0 : 0.0};
}
constexpr Row Int(ParamID id, std::string_view name, int byDefault, std::string_view meaning) {
    return {.id = id,
            .name = name,
            .type = Type::Int,
            .meaning = meaning,
            .number = static_cast<double>(byDefault)};
}
constexpr Row Real(ParamID id, std::string_view name, Type type, double byDefault,
                   std::string_view meaning) {
    return {.id = id, .name = name, .type = type, .meaning = meaning, .number = byDefault};
}
constexpr Row Text(ParamID id, std::string_view name, std::string_view byDefault,
                   std::string_view meaning) {
    return {.id = id, .name = name, .type = Type::String, .meaning = meaning, .text = byDefault};
}
constexpr Row Other(ParamID id, std::string_view name, Type type, std::string_view meaning) {
    return {.id = id, .name = name, .type = type, .meaning = meaning};
}
constexpr Row Position(ParamID id, std::string_view name, int byDefault, std::string_view meaning) {
    return Int(id, name, byDefault, meaning).Within(0, 2000);
}

inline constexpr Choice outputAsChoices[] = {
    {0, "Channels", 25},
    {5, "Layers (Render Cut-out)", 48},
    {1, "Layers (Alpha Matte)", 26},
    {4, "Layers (Luminance Matte)", 38},
};
inline constexpr Choice outputRenderAsChoices[] = {
    {0, "Layer with Transparency", 43}, {1, "Layer (No Transparency)", 44}, {2, "Layer + Mask", 45},
    {3, "Layer + Disabled Mask", 46},   {4, "Layer + Alpha Channel", 47},
};
inline constexpr Choice fileFormatChoices[] = {{0, "PSD", 60}, {1, "PSB", 61}};
inline constexpr Choice bitDepthChoices[] = {{8, "8 Bits"}, {16, "16 Bits"}, {32, "32 Bits (HDR)"}};
// In the order of the combo.
inline constexpr Choice correctionChoices[] = {
    {3, "Create Adjustment Layer"},
    {1, "Apply to Render and specific Render Elements"},
    {0, "Apply to Render only"},
    {2, "Apply to Render and all Render Elements"},
};
inline constexpr Choice compatibilityChoices[] = {
    {2, "Maximize Compatibility (Produces larger files)"},
    {1, "Good Compatibility (Default)"},
    {0, "Minimize Filesize (Reduced compatibility)"},
};
inline constexpr Choice renderSettingChoices[] = {{0, "0"}, {1, "1"}};
// By number; psdfile/blend_keys.h has their keys.
inline constexpr Choice blendModes[] = {
    {0, "Normal"},         {1, "Dissolve"},           {2, "Darken"},        {3, "Multiply"},
    {4, "Color Burn"},     {5, "Linear Burn"},        {6, "Lighten"},       {7, "Screen"},
    {8, "Color Dodge"},    {9, "Linear Dodge (Add)"}, {10, "Overlay"},      {11, "Soft Light"},
    {12, "Hard Light"},    {13, "Vivid Light"},       {14, "Linear Light"}, {15, "Pin Light"},
    {16, "Difference"},    {17, "Exclusion"},         {18, "Hue"},          {19, "Saturation"},
    {20, "Color"},         {21, "Luminosity"},        {22, "Hard Mix"},     {23, "Darker Color"},
    {24, "Lighter Color"}, {25, "Subtract"},          {26, "Divide"},
};

inline constexpr Choice elementOutputChoices[] = {{0, "Layer"}, {1, "Channel"}};

// The rollups of the effect, in the order in which they are added.
struct Rollup {
    MapID map;
    int dialogTemplate;
    StringResID title;
    bool startsClosed;
};
inline constexpr Rollup rollups[] = {
    {0, 4712, 4, false}, {1, 4714, 24, true}, {5, 122, 49, true},  {7, 28676, 55, true},
    {2, 123, 23, true},  {6, 4715, 53, true}, {4, 4716, 39, true},
};

struct Block {
    int version;
    // The owner's reference that holds the block.
    int reference;
};
inline constexpr Block effectBlock{4, 0};
inline constexpr Block layerBlock{1, 0};

// The block of the effect.
inline constexpr auto effectRows = std::to_array<Row>({
    Other(2, "layersProduction", Type::ReferenceTable, "The render elements and their settings")
        .Accessed(),
    Other(3, "layersSecondary", Type::ReferenceTable,
          "Second list of render elements; kept up to date, never used for output")
        .Accessed(),
    Bool(25, "createRenderOutputLayer", true, "Output the rendered image as a layer")
        .In(0, ControlKind::CheckBox, 1080)
        .Accessed(),
    Bool(27, "unnamed27", true, "Kept for saved scenes; has no effect"),
    Bool(36, "premultipliedAlpha", true,
         "The rendered image and its derived layers stay premultiplied by alpha")
        .In(0, ControlKind::CheckBox, 1129),
    Bool(26, "createRenderElementLayers", true, "Output render elements")
        .In(1, ControlKind::CheckBox, 1088)
        .Accessed()
        .Enabling({6, 58, 60}),
    Int(6, "renderSetting", 0, "Obsolete: the list of render elements is always the first")
        .OneOf(renderSettingChoices)
        .In(1, ControlKind::Radio, 1049, 1050),
    [] {
        Row row = Other(0, "filename", Type::Filename, "Output path").Accessed();
        row.assetType = 8;
        return row.In(0, ControlKind::Edit, 1062).Unbound();
    }(),
    Int(22, "compression", 1,
        "0 writes pixels uncompressed; any other value compresses them: RLE at 8 bits, ZIP at 16, "
        "ZIP with prediction at 32"),
    Bool(35, "usePS7Extensions", true, "Obsolete: always true").Accessed(),
    Bool(15, "createNodeIDLayer", false, "G-Buffer layer of object IDs")
        .In(6, ControlKind::CheckBox, 1055),
    Bool(16, "createMtlIDLayer", false, "G-Buffer layer of material effects IDs")
        .In(6, ControlKind::CheckBox, 1054),
    Bool(17, "createNodeRenderIDLayer", false, "G-Buffer layer of node render IDs")
        .In(6, ControlKind::CheckBox, 1053),
    Bool(18, "outputNodeIDs", false, "A matte for each object ID of the list")
        .In(2, ControlKind::CheckBox, 1039)
        .Accessed()
        .Enabling({23, 19, 31, 38}),
    Bool(38, "outputNodeIDsLayerSet", true, "Put the object ID mattes in a layer set")
        .In(2, ControlKind::CheckButton, 1010),
    Int(23, "outputNodeIDsAs", 1, "What an object ID matte becomes")
        .OneOf(outputAsChoices)
        .In(2, ControlKind::Combo, 1105),
    Text(19, "nodeIDList", "1, 3 [Name], 5-8", "Object IDs, with names in brackets and ranges")
        .In(2, ControlKind::Edit, 1075)
        .Accessed(),
    Bool(20, "outputMtlIDs", false, "A matte for each material effects ID of the list")
        .In(2, ControlKind::CheckBox, 1040)
        .Accessed()
        .Enabling({24, 21, 32, 39}),
    Bool(39, "outputMtlIDsLayerSet", true, "Put the material ID mattes in a layer set")
        .In(2, ControlKind::CheckButton, 1009),
    Int(24, "outputMtlIDsAs", 1, "What a material ID matte becomes")
        .OneOf(outputAsChoices)
        .In(2, ControlKind::Combo, 1106),
    Text(21, "mtlIDList", "1, 3 [Name], 5-8",
         "Material effects IDs, with names in brackets and ranges")
        .In(2, ControlKind::Edit, 1076)
        .Accessed(),
    Bool(28, "outputObjects", false, "A matte for each object of the list")
        .In(2, ControlKind::CheckBox, 1041)
        .Accessed()
        .Enabling({29, 30, 33, 40}),
    Bool(40, "outputObjectsLayerSet", true, "Put the object mattes in a layer set")
        .In(2, ControlKind::CheckButton, 1007),
    Int(29, "outputObjectsAs", 1, "What an object matte becomes")
        .OneOf(outputAsChoices)
        .In(2, ControlKind::Combo, 1109),
    Other(30, "objectList", Type::NodeTable, "The nodes of the object output")
        .In(2, ControlKind::NodeListBox, 1094),
    Bool(34, "createNormalLayer", false, "G-Buffer layer of normals")
        .In(6, ControlKind::CheckBox, 1060),
    Bool(41, "embedCameraInfo", true, "Embed the camera in the document")
        .In(4, ControlKind::CheckBox, 1130),
    Bool(42, "embedHelpersInfo", false, "Embed the point helpers in the document")
        .In(4, ControlKind::CheckBox, 1131)
        .Enabling({43}),
    Text(43, "embedHelpersWildcard", "*", "Which point helpers, by a wildcard over their names")
        .In(4, ControlKind::Edit, 1133),
    Bool(37, "unnamed37", false, "Cleared whenever the rollups are made; has no effect"),
    Int(44, "legacyBitDepth", 8, "Bit depth of old scenes: reads 8 if bitDepth is 8, else 16")
        .Accessed(),
    Real(45, "resolution", Type::Float, 72.0, "Document resolution in dots per inch")
        .Within(1.0, 10000.0)
        .In(0, ControlKind::Spinner, 1144, 1145)
        .Stepping(1.0),
    Int(46, "bitDepth", 16, "Bits a channel of the document")
        .OneOf(bitDepthChoices)
        .In(0, ControlKind::Radio, 1107, 1108, 1110)
        .Accessed(),
    Int(47, "outputRenderAs", 2, "What the rendered image becomes")
        .OneOf(outputRenderAsChoices)
        .In(0, ControlKind::Combo, 1143),
    Bool(48, "outputSceneLayers", false, "A matte for each scene layer")
        .In(5, ControlKind::CheckBox, 1149)
        .Accessed()
        .Enabling({49, 50}),
    Bool(49, "outputSceneLayersLayerGroup", true, "Put the scene layer mattes in a layer set")
        .In(5, ControlKind::CheckButton, 1150),
    Int(50, "outputSceneLayersAs", 1, "What a scene layer matte becomes")
        .OneOf(outputAsChoices)
        .In(5, ControlKind::Combo, 1152),
    Int(51, "sceneLayerAppDataChunkId", 0,
        "Number under which this effect keeps its choice of scene layers; drawn at random"),
    Bool(53, "matchRenderOutputFilename", true, "Derive the output path from the render output")
        .In(0, ControlKind::CheckBox, 1156)
        .Accessed()
        .Enabling({124}),
    Bool(52, "createNonClampedColorLayer", false,
         "G-Buffer layer of colours above white; at 32 bits only")
        .In(6, ControlKind::CheckBox, 1061),
    Bool(54, "gammaCorrectRender", true, "Apply the file gamma, as gammaCorrectConfig says")
        .In(advancedDialog, ControlKind::CheckBox, 1164),
    Bool(55, "legacyGammaAll", false, "Gamma choice of old scenes; read when they are loaded"),
    Bool(56, "vrayColorCorrections", true,
         "Apply V-Ray's frame buffer corrections, as colorCorrectConfig says")
        .In(advancedDialog, ControlKind::CheckBox, 1167),
    Int(57, "compatibility", 1, "The merged image for programs that don't read layers")
        .OneOf(compatibilityChoices)
        .In(advancedDialog, ControlKind::Combo, 1168),
    Bool(58, "createRenderElementsLayerSet", false, "Put the render elements in a layer set")
        .In(1, ControlKind::CheckButton, 1184),
    Text(59, "renderElementsLayerSetName", "", "Empty means \"Render Elements\""),
    Bool(60, "createRenderElementsLayerSetMaskFromAlpha", false,
         "The render's alpha masks the layer set of the render elements")
        .In(1, ControlKind::CheckBox, 1186),
    Bool(61, "unnamed61", false, "Cleared when old scenes are loaded; has no effect"),
    Text(62, "unnamed62", "", "Kept for saved scenes; has no effect"),
    Text(63, "sceneLayersLayerSetName", "", "Empty means \"Scene Layers\""),
    Text(64, "nodeIdsLayerSetName", "", "Empty means \"Object IDs\""),
    Text(65, "mtlIDsLayerSetName", "", "Empty means \"Material IDs\""),
    Text(66, "objectsLayerSetName", "", "Empty means \"Objects\""),
    Text(74, "namedSelectionSetsLayerSetName", "", "Empty means \"Selection Sets\""),
    Bool(67, "createGBufferLayerSet", false, "Put the G-Buffer layers in a layer set"),
    Text(68, "gbufferLayerSetName", "", "Empty means \"G-Buffer\""),
    Text(69, "gbufferObjectIdLayerName", "", "Empty means the host's name of the channel"),
    Text(70, "gbufferMaterialIdLayerName", "", "Empty means the host's name of the channel"),
    Bool(71, "outputNamedSelectionSets", false, "A matte for each named selection set of the list")
        .In(7, ControlKind::CheckBox, 1187)
        .Accessed()
        .Enabling({72, 73}),
    Bool(72, "createNamedSelectionSetsLayerSet", true,
         "Put the selection set mattes in a layer set")
        .In(7, ControlKind::CheckButton, 1189),
    Int(73, "outputNamedSelectionSetsAs", 1, "What a selection set matte becomes")
        .OneOf(outputAsChoices)
        .In(7, ControlKind::Combo, 1190),
    Other(75, "namedSelectionSetsList", Type::StringTable,
          "Names of the selection sets that are on")
        .In(7, ControlKind::ListView, 1192)
        .Unbound(),
    Other(76, "shadowPassSource", Type::Filename, "Image file of the shadow pass"),
    Text(77, "customLayerSet1Name", "", "Empty means \"Layer Set 1\""),
    Bool(78, "filterEmptyLayersAndChannelsForAnimations", false,
         "The three filters below work in animations too"),
    Bool(79, "filterEmptyMattes", true, "Leave out mattes without pixels"),
    Bool(80, "filterEmptyRenderElements", false, "Leave out render elements without pixels"),
    Bool(81, "filterEmptyLayerSets", false, "Leave out layer sets without layers"),
    Bool(82, "createZDepthChannel", false, "Add the depth as a channel"),
    Real(83, "zDepthCoverageThreshold", Type::Fraction, 0.05,
         "Coverage below which a pixel doesn't decide the depth range"),
    Real(84, "zDepthExtendToBack", Type::Fraction, 0.0, "How far the depth range reaches back"),
    Text(85, "zDepthChannelName", "", "Empty means the host's name of the channel"),
    Bool(86, "createCurvesAdjustmentLayer", false,
         "Add a curves adjustment layer; below 32 bits only"),
    Text(87, "curvesAdjustmentLayerName", "", "Empty means \"Curves\""),
    Text(88, "renderOutputLayerName", "", "Empty means \"Render\""),
    Bool(89, "unnamed89", false, "Kept for saved scenes; has no effect"),
    Bool(90, "unnamed90", true, "Kept for saved scenes; has no effect"),
    Int(91, "shadowPassLayerStyle", 0, "0 makes the shadows a multiplied fill, else a plain layer"),
    Bool(92, "renderSRGBCorrect", false,
         "Put the sRGB curve on the render's pixels; below 32 bits only"),
    Position(93, "renderOrder", 100, "Stack position of the rendered image; low is on top"),
    Position(94, "renderElementsOrder", 200, "Stack position of the render elements"),
    Position(95, "maxLayersOrder", 300, "Stack position of the scene layer mattes"),
    Position(96, "namedSelectionSetsOrder", 400, "Stack position of the selection set mattes"),
    Position(97, "nodeIDsOrder", 500, "Stack position of the object ID mattes"),
    Position(98, "mtlIDsOrder", 600, "Stack position of the material ID mattes"),
    Position(99, "objectsOrder", 700, "Stack position of the object mattes"),
    Position(100, "gbufferOrder", 800, "Stack position of the G-Buffer layers"),
    Position(101, "customLayerSet1Order", 0, "Stack position of custom layer set 1"),
    Position(106, "customLayerSet2Order", 0, "Stack position of custom layer set 2"),
    Position(120, "customLayerSet3Order", 0, "Stack position of custom layer set 3"),
    Position(112, "shadowPassLayerOrder", 900, "Stack position of the shadows"),
    Position(115, "backgroundLayerOrder", 1000, "Stack position of the background"),
    Position(118, "depthLayerOrder", 150, "Stack position of the depth layer"),
    Bool(102, "customLayerSet1", false, "Create custom layer set 1"),
    Bool(103, "customLayerSet1OpenInUI", false, "Custom layer set 1 is shown expanded"),
    Bool(104, "customLayerSet1Visible", true, "Custom layer set 1 is visible"),
    Bool(105, "customLayerSet2", false, "Create custom layer set 2"),
    Bool(107, "customLayerSet2OpenInUI", false, "Custom layer set 2 is shown expanded"),
    Bool(108, "customLayerSet2Visible", true, "Custom layer set 2 is visible"),
    Bool(109, "customLayerSet2MaskFromRenderAlpha", false,
         "The render's alpha masks custom layer set 2"),
    Text(110, "customLayerSet2Name", "", "Empty means \"Layer Set 2\""),
    Bool(119, "customLayerSet3", false, "Create custom layer set 3"),
    Bool(121, "customLayerSet3OpenInUI", false, "Custom layer set 3 is shown expanded"),
    Bool(122, "customLayerSet3Visible", true, "Custom layer set 3 is visible"),
    Text(123, "customLayerSet3Name", "", "Empty means \"Layer Set 3\""),
    Text(111, "shadowPassLayerName", "", "Empty means \"Shadows\""),
    Bool(113, "backgroundLayer", false, "Create a white background layer"),
    Text(114, "backgroundLayerName", "", "Empty means \"Background\""),
    Bool(116, "depthLayer", false, "Create the depth layer"),
    Text(117, "depthLayerName", "", "Empty means \"Depth\""),
    Int(124, "fileFormat", 0, "Format of a path that is derived from the render output")
        .OneOf(fileFormatChoices)
        .In(0, ControlKind::Combo, 1195),
    Int(126, "colorCorrectConfig", 3, "Where V-Ray's colour corrections go")
        .OneOf(correctionChoices)
        .In(advancedDialog, ControlKind::Combo, 1217),
    Bool(127, "matteLayersVisible", true, "Layers of the cut-out and matte kinds are visible")
        .In(advancedDialog, ControlKind::CheckBox, 1169)
        .Inverted(),
    Bool(128, "saveDenoiserExtraChannels", false,
         "Include the render elements that V-Ray's denoiser generates")
        .In(advancedDialog, ControlKind::CheckBox, 1170),
    Int(129, "gammaCorrectConfig", 3, "Where the file gamma goes")
        .OneOf(correctionChoices)
        .In(advancedDialog, ControlKind::Combo, 1216),
    Bool(130, "autoSort", true, "Keep the list of render elements sorted")
        .In(1, ControlKind::CheckButton, 1079),
});

// The block of one render element.
inline constexpr auto layerRows = std::to_array<Row>({
    Other(0, "renderElement", Type::Reference, "The render element that this layer stands for"),
    Bool(1, "enabled", true, "Output this element")
        .In(elementDetail, ControlKind::ListView, 1043)
        .Unbound(),
    Bool(2, "visible", true, "The layer is visible")
        .In(elementDetail, ControlKind::CheckBox, 1058)
        .Unbound(),
    Bool(4, "mask", false, "Save the alpha as a layer mask")
        .In(elementDetail, ControlKind::CheckBox, 1057)
        .Unbound(),
    Bool(5, "transparency", true, "Save the alpha as transparency")
        .In(elementDetail, ControlKind::CheckBox, 1056)
        .Unbound(),
    Bool(6, "premultiply", true, "Colours stay premultiplied by alpha")
        .In(elementDetail, ControlKind::CheckBox, 1092)
        .Unbound(),
    Int(3, "blendingMode", 0, "Blend mode of the layer")
        .OneOf(blendModes)
        .In(elementDetail, ControlKind::Combo, 1045)
        .Unbound(),
    Int(7, "outputAs", 0, "What the element becomes")
        .OneOf(elementOutputChoices)
        .In(elementDetail, ControlKind::Radio, 1112, 1114)
        .Unbound(),
    Bool(8, "groupWithPrevious", false, "Clip the layer to the one below")
        .In(elementDetail, ControlKind::CheckBox, 1059)
        .Unbound(),
    Bool(9, "split", false, "One layer for each of red, green and blue")
        .In(elementDetail, ControlKind::CheckBox, 1159)
        .Unbound(),
    Bool(10, "gammaCorrect", true, "Apply the file gamma to this element, where asked")
        .In(elementDetail, ControlKind::CheckBox, 1160)
        .Unbound(),
    Bool(11, "mergeDown", false, "Merge into the next element; with blend mode 9 only"),
    Bool(12, "colorCorrect", false, "Apply V-Ray's colour corrections to this element, where asked")
        .In(elementDetail, ControlKind::CheckBox, 1060)
        .Unbound(),
});

// Internal parameters have no name for scripts.
constexpr bool IsInternal(ParamID id) {
    return id == 3 || id == 27 || id == 37 || id == 44 || id == 55 || (id >= 58 && id <= 70) ||
           id == 74 || (id >= 76 && id <= 123);
}

template <std::size_t count>
consteval ParamID IdOf(const std::array<Row, count>& rows, std::string_view name) {
    for (const Row& row : rows) {
        if (row.name == name) return row.id;
    }
    throw std::invalid_argument("no parameter of this name");
}

// "bitDepth"_param is the id of the effect block's parameter, "visible"_layerParam that of the
// layer block's. A name that isn't in the table doesn't compile.
consteval ParamID operator""_param(const char* name, std::size_t length) {
    return IdOf(effectRows, {name, length});
}
consteval ParamID operator""_layerParam(const char* name, std::size_t length) {
    return IdOf(layerRows, {name, length});
}

}  // namespace parameters

using parameters::operator""_param;
using parameters::operator""_layerParam;
