#include "command/scene_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include <elementclasses.h>
#include <vrayelements.h>
#include <nlohmann/json.hpp>

#include "command/failure.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

const std::string root = VELTRANE_SOURCE_DIR;

std::string FileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// `members` are those behind the version.
SceneDescription Parse(const std::string& members) {
    return ParseScene("a.json", R"({"veltrane": 1, )" + members + "}");
}

std::string Complaint(const std::string& members) {
    std::string text = FaultText<InputError>([&] { Parse(members); });
    return text.starts_with("a.json: ") ? text.substr(8) : text;
}

// The members of a scene with one camera.
std::string Camera(const std::string& view) {
    return R"("nodes": [{"name": "a", "type": "camera", "view": )" + view + "}]";
}

// What the JSON in the documentation describes.
const SceneDescription& Example() {
    static const SceneDescription example = [] {
        const std::string page = FileText(root + "/docs/scene-file.md");
        const std::string fence = "```json\n";
        const std::size_t begin = page.find(fence) + fence.size();
        return ParseScene("example", page.substr(begin, page.find("```", begin) - begin));
    }();
    return example;
}

TEST(SceneFile, ReadsTheNodesOfThePage) {
    const auto& nodes = Example().nodes;
    ASSERT_EQ(nodes.size(), 7U);
    EXPECT_EQ(nodes[0].name, "Camera 01");
    EXPECT_EQ(nodes[0].kind, NodeKind::Camera);
    ASSERT_TRUE(nodes[0].transform);
    EXPECT_THAT(*nodes[0].transform,
                ElementsAre(1, 0, 0, 0, 0, 0, -1, -8, 0, 1, 0, 1.5, 0, 0, 0, 1));
    EXPECT_TRUE(nodes[1].groupHead);
    EXPECT_FALSE(nodes[1].groupMember);
    EXPECT_EQ(nodes[1].parent, std::nullopt);
    EXPECT_EQ(nodes[1].transform, std::nullopt);
    EXPECT_EQ(nodes[3].parent, 1U);
    EXPECT_TRUE(nodes[3].groupMember);
    EXPECT_EQ(nodes[3].objectID, 8);
    EXPECT_EQ(nodes[3].id, 12);
    EXPECT_EQ(nodes[3].properties, "watts = 40\nmaker = unknown");
    EXPECT_EQ(nodes[4].kind, NodeKind::Object);
    EXPECT_EQ(nodes[4].id, std::nullopt);
    EXPECT_FALSE(nodes[4].hidden);
    EXPECT_TRUE(nodes[5].hidden);
}

TEST(SceneFile, ReadsTheCamerasOfThePage) {
    const auto& nodes = Example().nodes;
    ASSERT_TRUE(nodes[0].view.has_value());
    EXPECT_EQ(nodes[0].view->fieldOfView, 54.4);
    EXPECT_EQ(nodes[0].view->width, 0.0);
    EXPECT_EQ(nodes[0].view->nearRange, 2.0);
    EXPECT_EQ(nodes[0].view->farRange, 60.0);
    EXPECT_FALSE(nodes[1].view.has_value());
    EXPECT_EQ(nodes[6].kind, NodeKind::Camera);
    ASSERT_TRUE(nodes[6].view.has_value());
    EXPECT_EQ(nodes[6].view->fieldOfView, 0.0);
    EXPECT_EQ(nodes[6].view->width, 12.5);
}

TEST(SceneFile, AViewMayTellNothing) {
    const CameraLens lens = Parse(Camera("{}")).nodes[0].view.value_or(CameraLens{1, 1, 1, 1});
    EXPECT_EQ(lens.fieldOfView, 0.0);
    EXPECT_EQ(lens.width, 0.0);
    EXPECT_EQ(lens.nearRange, 0.0);
    EXPECT_EQ(lens.farRange, 0.0);
}

TEST(SceneFile, ReadsTheLayersAndSetsOfThePage) {
    const auto& layers = Example().layers;
    ASSERT_EQ(layers.size(), 3U);
    EXPECT_EQ(layers[0].name, "Furniture");
    EXPECT_THAT(layers[0].nodes, ElementsAre(4U));
    EXPECT_EQ(layers[0].parent, std::nullopt);
    EXPECT_EQ(layers[1].name, "Unused");
    EXPECT_EQ(layers[1].parent, 0U);
    EXPECT_TRUE(layers[1].hidden);
    EXPECT_THAT(layers[2].nodes, ElementsAre(1U, 2U, 3U));
    EXPECT_EQ(layers[2].parent, std::nullopt);
    ASSERT_EQ(Example().selectionSets.size(), 1U);
    EXPECT_EQ(Example().selectionSets[0].name, "For retouching");
    EXPECT_THAT(Example().selectionSets[0].nodes, ElementsAre(1U, 4U));
}

TEST(SceneFile, ReadsTheElementsOfThePage) {
    const auto& elements = Example().elements;
    ASSERT_EQ(elements.size(), 3U);
    EXPECT_EQ(elements[0].name, "Reflections");
    EXPECT_TRUE(elements[0].enabled);
    EXPECT_EQ(elements[0].multiMatte, std::nullopt);
    EXPECT_EQ(elements[1].elementClass, PassClassID(PassKind::Shadow));
    EXPECT_FALSE(elements[1].enabled);
    EXPECT_EQ(elements[2].elementClass, VRAY_MULTI_MATTE_ELEMENT);
    ASSERT_TRUE(elements[2].multiMatte);
    const auto& [red, green, blue] = *elements[2].multiMatte;
    EXPECT_EQ(red.id, 7);
    EXPECT_FALSE(red.isMaterial);
    EXPECT_EQ(green.id, 2);
    EXPECT_TRUE(green.isMaterial);
    EXPECT_TRUE(green.include);
    EXPECT_EQ(blue.id, std::nullopt);
    EXPECT_THAT(blue.nodes, ElementsAre(1U));
    EXPECT_FALSE(blue.include);
}

TEST(SceneFile, ReadsTheSettingsOfThePage) {
    const SceneDescription& scene = Example();
    EXPECT_EQ(scene.render.hidden, false);
    EXPECT_EQ(scene.render.camera, 0U);
    EXPECT_EQ(scene.render.frameRate, 25);
    std::map<std::string_view, decltype(Setting::value)> values;
    for (const Setting& setting : scene.parameters)
        values[setting.row->name] = setting.value;
    using List = std::vector<std::string>;
    EXPECT_EQ(values.size(), 4U);
    EXPECT_EQ(std::get<int>(values["bitDepth"]), 16);
    EXPECT_EQ(std::get<int>(values["outputObjects"]), 1);
    EXPECT_EQ(std::get<List>(values["objectList"]), (List{"Lamp", "Table"}));
    EXPECT_EQ(std::get<std::string>(values["nodeIDList"]), "1 [Table], 7-8");
    ASSERT_EQ(scene.elementSettings.size(), 1U);
    EXPECT_EQ(scene.elementSettings[0].element, "Reflections");
    EXPECT_EQ(scene.elementSettings[0].setting.row->name, "visible");
    EXPECT_EQ(std::get<int>(scene.elementSettings[0].setting.value), 0);
}

TEST(SceneFile, ReadsWhatBlenderWrote) {
    const SceneDescription scene = ReadSceneFile(root + "/examples/still.scene.json");
    const auto node = [&](const std::string& name) -> const SceneNode& {
        return *std::find_if(scene.nodes.begin(), scene.nodes.end(),
                             [&](const SceneNode& each) { return each.name == name; });
    };
    ASSERT_EQ(scene.nodes.size(), 17U);
    EXPECT_EQ(node("W\xc3\xbcrfel").objectID, 3);
    EXPECT_EQ(node("Camera").kind, NodeKind::Camera);
    EXPECT_EQ(node("Key light").kind, NodeKind::Light);
    EXPECT_EQ(node("Point helper").kind, NodeKind::Helper);
    EXPECT_TRUE(node("Hidden crate").hidden);
    ASSERT_TRUE(node("Ring").parent);
    EXPECT_EQ(scene.nodes[*node("Ring").parent].name, "Pot/Lid");
    ASSERT_EQ(scene.layers.size(), 4U);
    EXPECT_EQ(scene.layers[3].name, "Glassware");
    ASSERT_TRUE(scene.layers[3].parent);
    EXPECT_EQ(scene.layers[*scene.layers[3].parent].name, "Still life");
    ASSERT_TRUE(scene.render.camera);
    EXPECT_EQ(scene.nodes[*scene.render.camera].name, "Camera");
    ASSERT_TRUE(node("Camera").view.has_value());
    EXPECT_EQ(node("Camera").view->fieldOfView, 42.74124);
    EXPECT_EQ(node("Camera").view->nearRange, 5.0);
    EXPECT_EQ(node("Camera").view->farRange, 11.5);
}

TEST(SceneFile, AFileOfTheVersionAloneIsAScene) {
    const SceneDescription scene = ParseScene("a.json", R"({"veltrane": 1})");
    EXPECT_EQ(scene.path, "a.json");
    EXPECT_THAT(scene.nodes, IsEmpty());
    EXPECT_EQ(scene.render.hidden, std::nullopt);
}

TEST(SceneFile, NumbersMayBeGivenByTheirLabels) {
    const auto scene = Parse(R"("effect": {"parameters": {"bitDepth": "8 bits"}})");
    EXPECT_EQ(std::get<int>(scene.parameters[0].value), 8);
    EXPECT_EQ(Complaint(R"("effect": {"parameters": {"bitDepth": "9 bits"}})"),
              "effect.parameters.bitDepth: must be one of 8 = 8 Bits, 16 = 16 Bits, 32 = 32 Bits "
              "(HDR)");
}

TEST(SceneFile, EveryKindOfParameterIsRead) {
    using List = std::vector<std::string>;
    const auto value = [](const std::string& member) {
        return Parse(R"("effect": {"parameters": {)" + member + "}}").parameters.at(0).value;
    };
    EXPECT_EQ(std::get<float>(value(R"("resolution": 72.5)")), 72.5F);
    EXPECT_EQ(std::get<std::string>(value(R"("filename": "a.psd")")), "a.psd");
    EXPECT_EQ(std::get<List>(value(R"("namedSelectionSetsList": ["a, b", ""])")),
              (List{"a, b", ""}));
    EXPECT_EQ(std::get<List>(value(R"("objectList": [])")), List());
}

TEST(SceneFile, AnotherVersionIsToldBeforeItsKeys) {
    EXPECT_EQ(FaultText<InputError>([] { ParseScene("a.json", R"({"veltrane": 2, "x": 1})"); }),
              "a.json: veltrane: this version of scene files is not known; this program reads "
              "version 1");
    EXPECT_EQ(FaultText<InputError>([] { ParseScene("a.json", "{}"); }),
              "a.json: the key \"veltrane\" is missing");
    EXPECT_EQ(FaultText<InputError>([] { ParseScene("a.json", "[1]"); }),
              "a.json: must be an object, between { and }");
    EXPECT_EQ(FaultText<InputError>([] { ParseScene("a.json", R"({"veltrane": "1"})"); }),
              "a.json: veltrane: must be a whole number");
}

struct Fault {
    std::string members;
    const char* complaint;
};

TEST(SceneFile, EveryFaultIsToldWithItsPlace) {
    const Fault faults[] = {
        {R"("node": [])", "there is no key \"node\" here; the nearest are nodes"},
        {R"("nodes": {})", "nodes: must be a list, between [ and ]"},
        {R"("nodes": [1])", "nodes[0]: must be an object, between { and }"},
        {R"("nodes": [{"id": 1}])", "nodes[0]: the key \"name\" is missing"},
        {R"("nodes": [{"name": ""}])", "nodes[0].name: must not be empty"},
        {R"("nodes": [{"name": "a"}, {"name": "a"}])",
         "nodes[1].name: the name \"a\" stands twice"},
        {R"("nodes": [{"name": "a", "objectId": 1}])",
         "nodes[0]: there is no key \"objectId\" here; the nearest are objectID"},
        {R"("nodes": [{"name": "a", "objectID": 65536}])",
         "nodes[0].objectID: must lie between 0 and 65535"},
        {R"("nodes": [{"name": "a", "objectID": 1.5}])",
         "nodes[0].objectID: must be a whole number"},
        {R"("nodes": [{"name": "a", "id": 65534}])", "nodes[0].id: must lie between 0 and 65533"},
        {R"("nodes": [{"name": "a", "id": 3}, {"name": "b", "id": 3}])",
         "nodes[1].id: the id 3 stands twice"},
        {R"("nodes": [{"name": "a", "type": "lamp"}])",
         "nodes[0].type: must be one of object, camera, light, helper"},
        {R"("nodes": [{"name": "a", "hidden": 1}])", "nodes[0].hidden: must be true or false"},
        {R"("nodes": [{"name": "a", "properties": []}])", "nodes[0].properties: must be a text"},
        {R"("nodes": [{"name": "Lamp"}, {"name": "Table top", "parent": "Lamb"}])",
         "nodes[1].parent: there is no node \"Lamb\"; the nearest are Lamp"},
        {R"("nodes": [{"name": "a", "parent": "a"}])",
         "nodes[0]: the parents of \"a\" run in a circle"},
        {R"("nodes": [{"name": "r", "parent": "a"}, {"name": "a", "parent": "b"},
                      {"name": "b", "parent": "a"}])",
         "nodes[0]: the parents of \"r\" run in a circle"},
        {R"("nodes": [{"name": "a", "groupMember": true}])",
         "nodes[0]: \"a\" is a member of a group, but its parent is neither a group's head nor a "
         "member of one"},
        {R"("nodes": [{"name": "a"}, {"name": "b", "groupMember": true, "parent": "a"}])",
         "nodes[1]: \"b\" is a member of a group, but its parent is neither a group's head nor a "
         "member of one"},
        {R"("nodes": [{"name": "a", "transform": [1, 0, 0, 0]}])",
         "nodes[0].transform[0]: must be a list, between [ and ]"},
        {R"("nodes": [{"name": "a", "transform": []}])",
         "nodes[0].transform: must be four rows of four numbers"},
        {R"("nodes": [{"name": "a", "transform": [[1,0,0,0],[0,1,0],[0,0,1,0],[0,0,0,1]]}])",
         "nodes[0].transform[1]: must be four numbers"},
        {R"("nodes": [{"name": "a", "transform": [[1e39,0,0,0],[0,1,0,0],[0,0,1,0],[0,0,0,1]]}])",
         "nodes[0].transform[0][0]: must lie between -3.4028234663852886e+38 and "
         "3.4028234663852886e+38"},
        {R"("nodes": [{"name": "a", "transform": [[1,0,0,0],[0,1,0,0],[0,0,1,0],[1,0,0,1]]}])",
         "nodes[0].transform: the last row must be 0, 0, 0, 1"},
        {R"("nodes": [{"name": "a", "view": {}}])", "nodes[0].view: the node \"a\" is no camera"},
        {R"("nodes": [{"view": {}, "name": "a", "type": "helper"}])",
         "nodes[0].view: the node \"a\" is no camera"},
        {Camera("[]"), "nodes[0].view: must be an object, between { and }"},
        {Camera(R"({"fow": 1})"),
         "nodes[0].view: there is no key \"fow\" here; the nearest are fov, far"},
        {Camera(R"({"fov": "1"})"), "nodes[0].view.fov: must be a number"},
        {Camera(R"({"fov": 0})"), "nodes[0].view.fov: must be above 0 and below 180"},
        {Camera(R"({"fov": -1})"), "nodes[0].view.fov: must be above 0 and below 180"},
        {Camera(R"({"fov": 1e-60})"), "nodes[0].view.fov: must be above 0 and below 180"},
        {Camera(R"({"fov": 179.9999999})"), "nodes[0].view.fov: must be above 0 and below 180"},
        {Camera(R"({"width": 0})"), "nodes[0].view.width: must be above 0"},
        {Camera(R"({"width": 1e-60})"), "nodes[0].view.width: must be above 0"},
        {Camera(R"({"width": -1})"),
         "nodes[0].view.width: must lie between 0 and 3.4028234663852886e+38"},
        {Camera(R"({"fov": 30, "width": 2})"),
         "nodes[0].view: has fov, which is a perspective's, and width, which is a parallel "
         "projection's; leave one of them"},
        {Camera(R"({"near": -1})"),
         "nodes[0].view.near: must lie between 0 and 3.4028234663852886e+38"},
        {Camera(R"({"far": 1e39})"),
         "nodes[0].view.far: must lie between 0 and 3.4028234663852886e+38"},
        {Camera(R"({"near": 3, "far": 2})"), "nodes[0].view: has far below near"},
        {R"("layers": [{}])", "layers[0]: the key \"name\" is missing"},
        {R"("layers": [{"name": "a", "children": [{"name": "b"}, {"name": "a"}]}])",
         "layers[0].children[1].name: the name \"a\" stands twice"},
        {R"("layers": [{"name": "a", "nodes": ["x"]}])",
         "layers[0].nodes[0]: there is no node \"x\""},
        {R"("nodes": [{"name": "x"}], "layers": [{"name": "a", "nodes": ["x", "x"]}])",
         "layers[0].nodes[1]: the node \"x\" stands twice"},
        {R"("nodes": [{"name": "x"}],
            "layers": [{"name": "a", "nodes": ["x"], "children": [{"name": "b", "nodes": ["x"]}]}])",
         "layers[0].children[0].nodes[0]: the node \"x\" is in the layer \"a\" already"},
        {R"("selectionSets": [{"name": "a"}])", "selectionSets[0]: the key \"nodes\" is missing"},
        {R"("selectionSets": [{"name": "a", "nodes": []}, {"name": "a", "nodes": []}])",
         "selectionSets[1].name: the name \"a\" stands twice"},
        {R"("selectionSets": [{"name": "a", "nodes": ["x"]}])",
         "selectionSets[0].nodes[0]: there is no node \"x\""},
        {R"("elements": [{"name": "a"}, {"name": "a"}])",
         "elements[1].name: the name \"a\" stands twice"},
        {R"("elements": [{"name": "a", "class": "VRayReflektion"}])",
         "elements[0].class: there is no class of render elements \"VRayReflektion\"; the nearest "
         "are VRayReflection, VRayRefraction, VRayRawReflection"},
        {R"("elements": [{"name": "a", "multiMatte": {"rot": {}}}])",
         "elements[0].multiMatte: there is no key \"rot\" here; the nearest are red"},
        {R"("elements": [{"name": "a", "multiMatte": {"red": {"id": -1}}}])",
         "elements[0].multiMatte.red.id: must lie between 0 and 65535"},
        {R"("nodes": [{"name": "x"}], "render": {"camera": "x"})",
         "render.camera: the node \"x\" is no camera"},
        {R"("render": {"frameRate": 0})", "render.frameRate: must lie between 1 and 4800"},
        {R"("effect": {"parameters": {"bitDept": 8}})",
         "effect.parameters.bitDept: there is no such parameter; the nearest are bitDepth, "
         "legacyBitDepth"},
        {R"("effect": {"parameters": {"bitDepth": 9}})",
         "effect.parameters.bitDepth: must be one of 8 = 8 Bits, 16 = 16 Bits, 32 = 32 Bits (HDR)"},
        {R"("effect": {"parameters": {"renderOrder": 2001}})",
         "effect.parameters.renderOrder: must lie between 0 and 2000"},
        {R"("effect": {"parameters": {"compression": 2147483648}})",
         "effect.parameters.compression: must lie between -2147483648 and 2147483647"},
        {R"("effect": {"parameters": {"resolution": 0.5}})",
         "effect.parameters.resolution: must lie between 1 and 10000"},
        {R"("effect": {"parameters": {"autoSort": 1}})",
         "effect.parameters.autoSort: must be true or false"},
        {R"("effect": {"parameters": {"objectList": ["x"]}})",
         "effect.parameters.objectList[0]: there is no node \"x\""},
        {R"("effect": {"parameters": {"layersProduction": []}})",
         "effect.parameters.layersProduction: this parameter holds objects of the application and "
         "takes no value"},
        {R"("effect": {"elements": {"A b": {"visibel": true}}})",
         "effect.elements[\"A b\"].visibel: there is no such parameter; the nearest are visible"},
        {R"("effect": {"elements": {"A": true}})",
         "effect.elements.A: must be an object, between { and }"},
    };
    for (const Fault& fault : faults)
        EXPECT_EQ(Complaint(fault.members), fault.complaint) << fault.members;
}

TEST(SceneFile, ParentsMayStandBehindTheirChildren) {
    const auto scene = Parse(R"("nodes": [{"name": "a", "parent": "b"}, {"name": "b"}])");
    EXPECT_EQ(scene.nodes[0].parent, 1U);
}

TEST(SceneFile, ALongChainOfParentsIsNoCircle) {
    std::string nodes = R"({"name": "0"})";
    for (int i = 1; i < 20'000; ++i) {
        nodes += R"(, {"name": ")" + std::to_string(i) + R"(", "parent": ")" +
                 std::to_string(i - 1) + "\"}";
    }
    EXPECT_EQ(Parse("\"nodes\": [" + nodes + "]").nodes.size(), 20'000U);
}

TEST(SceneFile, WhatIsTooLargeIsRefused) {
    EXPECT_EQ(
        FaultText<InputError>([] { ParseScene("a.json", std::string(mostSceneBytes + 1, ' ')); }),
        "a.json: larger than 64 MB, which no scene file is");
}

TEST(SceneFile, FilesThatCantBeReadAreTold) {
    const std::string folder = testing::TempDir();
    const std::string path = folder + "scene_file_test.json";
    std::ofstream(path) << R"({"veltrane": 1, "nodes": [{"name": "a"}]})";
    EXPECT_EQ(ReadSceneFile(path).nodes.size(), 1U);
    fs::remove(path);
    EXPECT_EQ(FaultText<InputError>([&] { ReadSceneFile(path); }),
              path + ": no such file; check the path");
    EXPECT_EQ(FaultText<InputError>([&] { ReadSceneFile(folder); }),
              folder + ": a folder, not a scene file; give a file in it");
}

// The schema for other programs names no key that the reader does not read. That it names all is
// seen by the example of the page, which has every key and is checked against the schema.
TEST(SceneFile, TheSchemaHasTheKeysOfTheReader) {
    const auto schema = nlohmann::json::parse(FileText(root + "/docs/scene-file.schema.json"));
    const auto& definitions = schema["definitions"];
    struct Place {
        const nlohmann::json& properties;
        std::string before;
        std::string needed;
        std::string after;
    };
    const Place places[] = {
        {schema["properties"], "", "", ""},
        {definitions["node"]["properties"], R"("nodes": [{)", R"("name": "n")", "}]"},
        {definitions["view"]["properties"],
         R"("nodes": [{"name": "n", "type": "camera", "view": {)", "", "}}]"},
        {definitions["layer"]["properties"], R"("layers": [{)", R"("name": "n")", "}]"},
        {definitions["selectionSet"]["properties"], R"("selectionSets": [{)",
         R"("name": "n", "nodes": [])", "}]"},
        {definitions["element"]["properties"], R"("elements": [{)", R"("name": "n")", "}]"},
        {definitions["element"]["properties"]["multiMatte"]["properties"],
         R"("elements": [{"name": "n", "multiMatte": {)", "", "}}]"},
        {definitions["matte"]["properties"],
         R"("elements": [{"name": "n", "multiMatte": {"red": {)", "", "}}}]"},
        {definitions["render"]["properties"], R"("render": {)", "", "}"},
        {definitions["effect"]["properties"], R"("effect": {)", "", "}"},
    };
    for (const Place& place : places) {
        for (const auto& [key, value] : place.properties.items()) {
            const bool given =
                key == "veltrane" || place.needed.find('"' + key + '"') != std::string::npos;
            if (given) continue;
            const std::string comma = place.needed.empty() ? "" : ", ";
            const std::string complaint = Complaint(place.before + place.needed + comma + '"' +
                                                    key + "\": null" + place.after);
            EXPECT_THAT(complaint, testing::HasSubstr(key + ": must be")) << key;
        }
    }
}

}  // namespace
}  // namespace command
