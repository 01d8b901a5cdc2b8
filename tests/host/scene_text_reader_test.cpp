#include "host/scene_text_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

#include <elementclasses.h>
#include <rendererclasses.h>
#include <vrayelements.h>
#include <nlohmann/json.hpp>

#include "host/input_error.h"
#include "tests/host/fault_text.h"
#include "tests/host/scene_page.h"

namespace host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

const std::string root = VELTRANE_SOURCE_DIR;

using scene_page::FileText;

// `members` are those behind the version.
SceneDescription Parse(const std::string& members) {
    return ParseScene("a.json", R"({"veltrane": 1, )" + members + "}");
}

std::string Complaint(const std::string& members) {
    std::string text = FaultText<InputError>([&] { Parse(members); });
    return text.starts_with("a.json: ") ? text.substr(8) : text;
}

SceneDescription ParseSaved(const std::string& members) {
    return ParseScene("a.json", R"({"veltrane": 2, )" + members + "}");
}

std::string ComplaintOfSaved(const std::string& members) {
    std::string text = FaultText<InputError>([&] { ParseSaved(members); });
    return text.starts_with("a.json: ") ? text.substr(8) : text;
}

// The members of a scene with one camera.
std::string Camera(const std::string& view) {
    return R"("nodes": [{"name": "a", "type": "camera", "view": )" + view + "}]";
}

// What the JSON in the documentation describes.
const SceneDescription& Example() {
    static const SceneDescription example = [] {
        return ParseScene("example", scene_page::Example(0),
                          [](const JsonValue&, const FindNodes&) {});
    }();
    return example;
}

TEST(SceneTextReader, ReadsTheNodesOfThePage) {
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
    EXPECT_EQ(nodes[4].kind, NodeKind::Geometry);
    EXPECT_EQ(nodes[4].id, std::nullopt);
    EXPECT_FALSE(nodes[4].hidden);
    EXPECT_TRUE(nodes[5].hidden);
}

TEST(SceneTextReader, ReadsTheCamerasOfThePage) {
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

TEST(SceneTextReader, AViewMayTellNothing) {
    const CameraLens lens = Parse(Camera("{}")).nodes[0].view.value_or(CameraLens{1, 1, 1, 1});
    EXPECT_EQ(lens.fieldOfView, 0.0);
    EXPECT_EQ(lens.width, 0.0);
    EXPECT_EQ(lens.nearRange, 0.0);
    EXPECT_EQ(lens.farRange, 0.0);
}

TEST(SceneTextReader, ReadsTheLayersAndSetsOfThePage) {
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

TEST(SceneTextReader, ReadsTheElementsOfThePage) {
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

TEST(SceneTextReader, ReadsWhatBlenderWrote) {
    const SceneDescription scene = ReadSceneFile(root + "/examples/still.scene.json");
    const auto node = [&](const std::string& name) -> const SceneNode& {
        return *std::find_if(scene.nodes.begin(), scene.nodes.end(),
                             [&](const SceneNode& each) { return each.name == name; });
    };
    ASSERT_EQ(scene.nodes.size(), 17U);
    EXPECT_EQ(node("W\xc3\xbcrfel").objectID, 3);
    EXPECT_EQ(node("Camera").kind, NodeKind::Camera);
    EXPECT_EQ(node("Key light").kind, NodeKind::Light);
    EXPECT_EQ(node("Point helper").kind, NodeKind::PointHelper);
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

TEST(SceneTextReader, AFileOfTheVersionAloneIsAScene) {
    const SceneDescription scene = ParseScene("a.json", R"({"veltrane": 1})");
    EXPECT_EQ(scene.path, "a.json");
    EXPECT_THAT(scene.nodes, IsEmpty());
    EXPECT_EQ(scene.render.hidden, std::nullopt);
}

TEST(SceneTextReader, AnotherVersionIsToldBeforeItsKeys) {
    for (const char* text : {R"({"veltrane": 3, "x": 1})", R"({"veltrane": 0, "x": 1})"}) {
        EXPECT_EQ(FaultText<InputError>([&] { ParseScene("a.json", text); }),
                  "a.json: veltrane: this version of scene files is not known; this program reads "
                  "version 1 to 2");
    }
    EXPECT_EQ(FaultText<InputError>([] { ParseScene("a.json", "{}"); }),
              "a.json: the key \"veltrane\" is missing");
    EXPECT_EQ(FaultText<InputError>([] { ParseScene("a.json", "[1]"); }),
              "a.json: must be an object, between { and }");
    EXPECT_EQ(FaultText<InputError>([] { ParseScene("a.json", R"({"veltrane": "1"})"); }),
              "a.json: veltrane: must be a whole number");
}

struct Fault {
    std::string members;
    std::string complaint;
};

TEST(SceneTextReader, EveryFaultIsToldWithItsPlace) {
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
    };
    for (const Fault& fault : faults)
        EXPECT_EQ(Complaint(fault.members), fault.complaint) << fault.members;
}

TEST(SceneTextReader, ParentsMayStandBehindTheirChildren) {
    const auto scene = Parse(R"("nodes": [{"name": "a", "parent": "b"}, {"name": "b"}])");
    EXPECT_EQ(scene.nodes[0].parent, 1U);
}

TEST(SceneTextReader, ALongChainOfParentsIsNoCircle) {
    std::string nodes = R"({"name": "0"})";
    for (int i = 1; i < 20'000; ++i) {
        nodes += R"(, {"name": ")" + std::to_string(i) + R"(", "parent": ")" +
                 std::to_string(i - 1) + "\"}";
    }
    EXPECT_EQ(Parse("\"nodes\": [" + nodes + "]").nodes.size(), 20'000U);
}

TEST(SceneTextReader, WhatIsTooLargeIsRefused) {
    EXPECT_EQ(
        FaultText<InputError>([] { ParseScene("a.json", std::string(mostSceneBytes + 1, ' ')); }),
        "a.json: larger than 64 MB, which no scene file is");
}

TEST(SceneTextReader, FilesThatCantBeReadAreTold) {
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
// seen by the examples of the page, which have every key and are checked against the schema.
TEST(SceneTextReader, TheSchemaHasTheKeysOfTheReader) {
    const auto schema = nlohmann::json::parse(FileText(root + "/docs/scene-file.schema.json"));
    const auto& definitions = schema["definitions"];
    struct Place {
        const nlohmann::json& properties;
        std::string before;
        std::string needed;
        std::string after;
    };
    const auto of = [&](const char* definition) -> const nlohmann::json& {
        return definitions[definition]["properties"];
    };
    const std::string object = R"("objects": [{"handle": 1, "superClass": 2, "class": [3, 4])";
    const Place places[] = {
        {schema["properties"], "", "", ""},
        {of("node"), R"("nodes": [{)", R"("name": "n")", "}]"},
        {of("view"), R"("nodes": [{"name": "n", "type": "camera", "view": {)", "", "}}]"},
        {of("layer"), R"("layers": [{)", R"("name": "n")", "}]"},
        {of("selectionSet"), R"("selectionSets": [{)", R"("name": "n", "nodes": [])", "}]"},
        {of("element"), R"("elements": [{)", R"("name": "n")", "}]"},
        {of("element")["multiMatte"]["properties"], R"("elements": [{"name": "n", "multiMatte": {)",
         "", "}}]"},
        {of("matte"), R"("elements": [{"name": "n", "multiMatte": {"red": {)", "", "}}}]"},
        {of("render"), R"("render": {)", "", "}"},
        {of("renderer"), R"("render": {"renderer": {)", "", "}}"},
        {of("blockNumber"), R"("elements": [{"name": "n", "parameters": [{)",
         R"("id": 1, "value": 2)", "}]}]"},
        {of("units"), R"("nodes": [{"name": {)", "", "}}]"},
        {of("appDataEntry"), R"("nodes": [{"name": "n", "appData": [{)",
         R"("class": [1, 2], "superClass": 3, "subID": 4, "data": "")", "}]}]"},
        {of("object"), R"("objects": [{)", R"("handle": 1, "superClass": 2, "class": [3, 4])",
         "}]"},
        {of("chunk"), object + R"(, "chunks": [{)", R"("id": 1)", "}]}]"},
        {of("blockReference"), object + R"(, "references": [{)", "", "}]}]"},
        {of("block"), object + R"(, "references": [{"block": {)",
         R"("id": 1, "version": 2, "parameters": [])", "}}]}]"},
        {of("parameter"),
         object + R"(, "references": [{"block": {"id": 1, "version": 2, "parameters": [{)",
         R"("id": 1, "type": "int")", "}]}}]}]"},
    };
    for (const Place& place : places) {
        ASSERT_TRUE(place.properties.is_object());
        for (const auto& [key, value] : place.properties.items()) {
            const bool given = key == "veltrane" || key == "effect" ||
                               place.needed.find('"' + key + '"') != std::string::npos;
            if (given) continue;
            const std::string comma = place.needed.empty() ? "" : ", ";
            const std::string complaint = ComplaintOfSaved(place.before + place.needed + comma +
                                                           '"' + key + "\": null" + place.after);
            EXPECT_THAT(complaint, testing::HasSubstr(key + ": must be")) << key;
        }
    }
}

TEST(SceneTextReader, SettingsByNameAreForTheirReaderAlone) {
    EXPECT_EQ(Complaint(R"("effect": {})"),
              "effect: settings by name are for \"veltrane save --scene\"; take the section out to "
              "have the rest of the scene");
    std::vector<std::size_t> found;
    ParseScene("a.json", R"({"veltrane": 1, "nodes": [{"name": "a"}, {"name": "b"}],
                             "effect": {"x": ["b", "a"]}})",
               [&](const JsonValue& effect, const FindNodes& findNodes) {
                   effect.ForEachMember(
                       [&](const std::string&, const JsonValue& list) { found = findNodes(list); });
               });
    EXPECT_THAT(found, ElementsAre(1U, 0U));
}

TEST(SceneTextReader, ReadsWhatTheApplicationSaved) {
    const SceneDescription scene = ParseScene("a.json", scene_page::Example(1));
    ASSERT_EQ(scene.nodes.size(), 3U);
    EXPECT_THAT(scene.nodes[1].children, ElementsAre(2U, 0U));
    EXPECT_THAT(scene.nodes[2].children, IsEmpty());
    EXPECT_EQ(scene.nodes[2].handle, 3U);
    EXPECT_EQ(scene.nodes[2].name, "Crate");
    EXPECT_EQ(scene.nodes[2].parent, 1U);
    ASSERT_EQ(scene.layers.size(), 2U);
    EXPECT_EQ(scene.layers[1].handle, 5U);
    EXPECT_EQ(scene.layers[1].parent, 0U);
    EXPECT_THAT(scene.layers[1].nodes, ElementsAre(2U));
    ASSERT_EQ(scene.layers[1].appData.size(), 1U);
    const SavedAppData& choice = scene.layers[1].appData[0];
    EXPECT_EQ(choice.owner, Class_ID(0x70068609, 0x01d5d297));
    EXPECT_EQ(choice.ownerSuperClass, RENDER_EFFECT_CLASS_ID);
    EXPECT_EQ(choice.subID, 4711U);
    EXPECT_THAT(choice.bytes, ElementsAre(0, 0, 0, 0));
    EXPECT_EQ(scene.selectionSets[0].name, "\xed\xa0\xbd!");
    ASSERT_EQ(scene.elements.size(), 3U);
    EXPECT_EQ(scene.elements[1].elementClass, Class_ID(4660, 22136));
    EXPECT_FALSE(scene.elements[1].draft);
    EXPECT_TRUE(scene.elements[2].draft);
    EXPECT_EQ(scene.render.width, 1920);
    EXPECT_EQ(scene.render.height, 1080);
    EXPECT_EQ(scene.render.output, "C:\\renders\\shot.exr");
    EXPECT_EQ(scene.render.saveFile, true);
    EXPECT_EQ(scene.render.timeType, REND_TIMERANGE);
    EXPECT_EQ(scene.render.numberBase, 100);
    EXPECT_EQ(scene.render.effects, true);
    EXPECT_EQ(scene.render.draft, false);
    ASSERT_TRUE(scene.render.renderer);
    EXPECT_EQ(scene.render.renderer->rendererClass, VRAY_CLASS_ID);
    ASSERT_EQ(scene.render.renderer->parameters.size(), 1U);
    EXPECT_EQ(scene.render.renderer->parameters[0].id, 170);
    EXPECT_EQ(scene.render.renderer->parameters[0].value, 1);
    EXPECT_EQ(scene.render.renderer->sampler, 3);
    ASSERT_TRUE(scene.elements[0].parameters);
    ASSERT_EQ(scene.elements[0].parameters->size(), 1U);
    EXPECT_EQ((*scene.elements[0].parameters)[0].id, 9);
    EXPECT_EQ((*scene.elements[0].parameters)[0].value, 0);
    EXPECT_FALSE(scene.elements[1].parameters);
    EXPECT_THAT(scene.effects, ElementsAre(10U));
}

TEST(SceneTextReader, ReadsTheObjectsThatTheApplicationSaved) {
    const SceneDescription scene = ParseScene("a.json", scene_page::Example(1));
    ASSERT_EQ(scene.objects.size(), 2U);
    const SavedObject& layer = scene.objects[0];
    EXPECT_EQ(layer.handle, 9U);
    EXPECT_EQ(layer.superClass, REF_TARGET_CLASS_ID);
    EXPECT_EQ(layer.classID, Class_ID(0x347c6bc4, 0x153540b4));
    ASSERT_EQ(layer.references.size(), 2U);
    EXPECT_EQ(std::get<SavedReference>(layer.references[1]).target, 6U);
    const SavedObject& effect = scene.objects[1];
    ASSERT_EQ(effect.chunks.size(), 1U);
    EXPECT_EQ(effect.chunks[0].id, 256);
    EXPECT_THAT(effect.chunks[0].bytes, IsEmpty());
    ASSERT_EQ(effect.chunks[0].chunks.size(), 1U);
    EXPECT_EQ(effect.chunks[0].chunks[0].id, 1);
    EXPECT_THAT(effect.chunks[0].chunks[0].bytes, ElementsAre(0, 255));
    ASSERT_EQ(effect.references.size(), 2U);
    EXPECT_EQ(std::get<SavedReference>(effect.references[1]).target, 0U);
    const auto& block = std::get<SavedBlock>(effect.references[0]);
    EXPECT_EQ(block.id, 0);
    EXPECT_EQ(block.version, 4U);
    ASSERT_EQ(block.parameters.size(), 6U);
    EXPECT_EQ(block.parameters[0].id, 2);
    EXPECT_EQ(block.parameters[0].type, TYPE_REFTARG_TAB);
    EXPECT_EQ(std::get<SavedReference>(block.parameters[0].values.at(0)).target, 9U);
    EXPECT_EQ(block.parameters[1].type, TYPE_FILENAME);
    EXPECT_EQ(std::get<MSTR>(block.parameters[1].values.at(0)), MSTR(_M("shot.psd")));
    EXPECT_EQ(block.parameters[2].type, TYPE_INODE_TAB);
    EXPECT_EQ(std::get<float>(block.parameters[3].values.at(0)), 72.0F);
    EXPECT_EQ(std::get<int>(block.parameters[4].values.at(0)), 32);
    EXPECT_EQ(block.parameters[5].type, TYPE_BOOL);
    EXPECT_EQ(std::get<int>(block.parameters[5].values.at(0)), 0);
}

// The one parameter of an object's block; `members` stand behind its id.
std::string Parameter(const std::string& members) {
    return R"("objects": [{"handle": 1, "superClass": 2, "class": [3, 4], "references": [
        {"block": {"id": 0, "version": 1, "parameters": [{"id": 5, )" +
           members + "}]}}]}]";
}

SavedValue ReadSavedValue(const std::string& type, const std::string& value) {
    const SceneDescription scene =
        ParseSaved(Parameter(R"("type": ")" + type + R"(", "value": )" + value));
    return std::get<SavedBlock>(scene.objects.at(0).references.at(0)).parameters.at(0).values.at(0);
}

TEST(SceneTextReader, ReadsValuesOfEveryType) {
    using Limits = std::numeric_limits<float>;
    EXPECT_EQ(std::get<int>(ReadSavedValue("int", "-2147483648")), -2147483647 - 1);
    EXPECT_EQ(std::get<int>(ReadSavedValue("bool", "true")), 1);
    EXPECT_EQ(std::get<int>(ReadSavedValue("bool", "2")), 2);
    EXPECT_EQ(std::get<float>(ReadSavedValue("float", "0.1")), 0.1F);
    EXPECT_EQ(std::get<float>(ReadSavedValue("fraction", "-1e-45")), -Limits::denorm_min());
    EXPECT_EQ(std::get<float>(ReadSavedValue("float", "\"inf\"")), Limits::infinity());
    EXPECT_EQ(std::get<float>(ReadSavedValue("float", "\"-inf\"")), -Limits::infinity());
    EXPECT_TRUE(std::isnan(std::get<float>(ReadSavedValue("float", "\"nan\""))));
    EXPECT_EQ(std::get<MSTR>(ReadSavedValue("text", R"("a\nb")")), MSTR(_M("a\nb")));
    EXPECT_EQ(std::get<MSTR>(ReadSavedValue("file", R"({"utf16": "00E4dC00"})")),
              MSTR(_M("\xe4\xdc00")));
    EXPECT_EQ(std::get<SavedReference>(ReadSavedValue("node", "7")).target, 7U);
    EXPECT_EQ(std::get<SavedReference>(ReadSavedValue("target", "null")).target, 0U);
}

TEST(SceneTextReader, InVersion2NamesMayRepeatAmongThingsWithHandles) {
    const SceneDescription scene = ParseSaved(R"(
        "nodes": [{"name": "a", "handle": 1}, {"name": "a", "handle": 2},
                  {"name": "", "handle": 3}, {"name": "b\nc"}],
        "layers": [{"name": "l", "handle": 4, "nodes": [2, "b\nc"]},
                   {"name": "l", "handle": 5, "parent": 4}, {"name": "m", "parent": 5}],
        "selectionSets": [{"name": "", "nodes": [1, 2, 3]}])");
    EXPECT_THAT(scene.layers[0].nodes, ElementsAre(1U, 3U));
    EXPECT_EQ(scene.layers[1].parent, 0U);
    EXPECT_EQ(scene.layers[2].parent, 1U);
    EXPECT_THAT(scene.selectionSets[0].nodes, ElementsAre(0U, 1U, 2U));
}

TEST(SceneTextReader, InVersion2GroupsOfTheApplicationAreAsTheyAre) {
    EXPECT_EQ(ComplaintOfSaved(R"("nodes": [{"name": "a", "handle": 1, "groupMember": true}])"),
              "");
    EXPECT_EQ(ComplaintOfSaved(R"("nodes": [{"name": "a", "groupMember": true}])"),
              "nodes[0]: \"a\" is a member of a group, but its parent is neither a group's head "
              "nor a member of one");
}

TEST(SceneTextReader, KeysOfVersion2AreToldAsSuchInVersion1) {
    const std::string fault =
        ": is a key of version 2, and \"veltrane\" says that this is version 1";
    const Fault faults[] = {
        {R"("nodes": [{"name": "a", "handle": 1}])", "nodes[0].handle"},
        {R"("nodes": [{"name": "a", "appData": []}])", "nodes[0].appData"},
        {R"("layers": [{"name": "a", "parent": "b"}])", "layers[0].parent"},
        {R"("elements": [{"name": "a", "draft": true}])", "elements[0].draft"},
        {R"("render": {"width": 1})", "render.width"},
        {R"("render": {"height": 1})", "render.height"},
        {R"("render": {"output": ""})", "render.output"},
        {R"("render": {"saveFile": true})", "render.saveFile"},
        {R"("render": {"timeType": "single"})", "render.timeType"},
        {R"("render": {"numberBase": 0})", "render.numberBase"},
        {R"("render": {"effects": true})", "render.effects"},
        {R"("render": {"draft": true})", "render.draft"},
        {R"("render": {"renderer": {}})", "render.renderer"},
        {R"("nodes": [{"name": "a", "children": []}])", "nodes[0].children"},
        {R"("elements": [{"name": "a", "parameters": []}])", "elements[0].parameters"},
        {R"("objects": [])", "objects"},
        {R"("effects": [])", "effects"},
    };
    for (const Fault& each : faults)
        EXPECT_EQ(Complaint(each.members), each.complaint + fault);
    EXPECT_EQ(Complaint(R"("nodes": [{"name": "a"}, {"name": "b", "parent": 1}])"),
              "nodes[1].parent: must be a text");
    EXPECT_EQ(Complaint(R"("nodes": [{"name": {"utf16": "0041"}}])"),
              "nodes[0].name: must be a text");
    EXPECT_EQ(Complaint(R"("elements": [{"name": "a", "class": [1, 2]}])"),
              "elements[0].class: must be a text");
}

TEST(SceneTextReader, EveryFaultOfASavedSceneIsToldWithItsPlace) {
    const std::string object = R"("objects": [{"handle": 1, "superClass": 2, "class": [3, 4])";
    const Fault faults[] = {
        {R"("nodes": [{"name": "a", "handle": 0}])",
         "nodes[0].handle: must lie between 1 and 4294967295"},
        {R"("nodes": [{"name": "a", "handle": 4294967296}])",
         "nodes[0].handle: must lie between 1 and 4294967295"},
        {R"("nodes": [{"name": "a", "handle": 1}], "layers": [{"name": "a", "handle": 1}])",
         "layers[0].handle: the handle 1 stands twice"},
        {R"("elements": [{"name": "a", "handle": 1, "class": [3, 4]}], )" + object + "}]",
         "objects[0]: the handle 1 stands twice"},
        {R"("nodes": [{"name": "a", "handle": 1}, {"name": "a"}])",
         "nodes[1].name: the name \"a\" stands twice"},
        {R"("nodes": [{"name": "a"}, {"name": "a", "handle": 1}])",
         "nodes[1].name: the name \"a\" stands twice"},
        {R"("nodes": [{"name": "a", "handle": 1}, {"name": "a", "handle": 2}],
            "selectionSets": [{"name": "s", "nodes": ["a"]}])",
         "selectionSets[0].nodes[0]: there is more than one node \"a\"; give the handle of the one "
         "that is meant"},
        {R"("selectionSets": [{"name": "s", "nodes": [7]}])",
         "selectionSets[0].nodes[0]: there is no node with the handle 7"},
        {R"("layers": [{"name": "a", "handle": 1}], "selectionSets": [{"name": "s", "nodes": [1]}])",
         "selectionSets[0].nodes[0]: there is no node with the handle 1"},
        {R"("nodes": [{"name": "a", "handle": 1}],
            "selectionSets": [{"name": "s", "nodes": [1, "a"]}])",
         "selectionSets[0].nodes[1]: the node \"a\" stands twice"},
        {R"("nodes": [{"name": "a", "handle": 1, "parent": 2}, {"name": "b", "handle": 2, "parent": 1}])",
         "nodes[0]: the parents of \"a\" run in a circle"},
        {R"("nodes": [{"name": "a", "children": ["c"]}, {"name": "b"}])",
         "nodes[0].children[0]: there is no node \"c\"; the nearest are a, b"},
        {R"("nodes": [{"name": "a", "children": ["b"]}, {"name": "b"}])",
         "nodes[0].children[0]: the parent of \"b\" is not this node"},
        {R"("nodes": [{"name": "a", "children": ["b", "b"]}, {"name": "b", "parent": "a"}])",
         "nodes[0].children[1]: the node \"b\" stands twice"},
        {R"("nodes": [{"name": "a", "children": ["c"]}, {"name": "b", "parent": "a"},
                      {"name": "c", "parent": "a"}])",
         "nodes[0].children: has 1 of the nodes whose parent this is, which are 2"},
        {R"("nodes": [{"name": {"utf16": "d8"}}])",
         "nodes[0].name.utf16: must have four hexadecimal digits a unit"},
        {R"("nodes": [{"name": {"utf16": "d8000"}}])",
         "nodes[0].name.utf16: must have two hexadecimal digits a byte"},
        {R"("nodes": [{"name": {"utf16": "00000041"}}])",
         "nodes[0].name.utf16: must not hold a unit 0000"},
        {R"("nodes": [{"name": {"utf8": "41"}}])",
         "nodes[0].name: there is no key \"utf8\" here; the nearest are utf16"},
        {R"("nodes": [{"name": "a", "appData": [{"class": [1], "superClass": 2, "subID": 3, "data": ""}]}])",
         "nodes[0].appData[0].class: must be two numbers"},
        {R"("nodes": [{"name": "a", "appData": [{"class": [1, 2], "superClass": 2, "data": ""}]}])",
         "nodes[0].appData[0]: the key \"subID\" is missing"},
        {R"("nodes": [{"name": "a", "appData": [{"class": [1, 2], "superClass": 2, "subID": 3, "data": "0x"}]}])",
         "nodes[0].appData[0].data: must have hexadecimal digits only"},
        {R"("nodes": [{"name": "a", "appData": [
               {"class": [1, 2], "superClass": 2, "subID": 3, "data": ""},
               {"class": [1, 2], "superClass": 2, "subID": 3, "data": "00"}]}])",
         "nodes[0].appData[1]: the data of this owner stands twice"},
        {R"("layers": [{"name": "a", "parent": "b"}, {"name": "b"}])",
         "layers[0].parent: there is no layer \"b\" before this one"},
        {R"("layers": [{"name": "b"}, {"name": "a", "parent": "c"}])",
         "layers[1].parent: there is no layer \"c\" before this one; the nearest are b"},
        {R"("layers": [{"name": "a", "handle": 1, "parent": 2}, {"name": "b", "handle": 2}])",
         "layers[0].parent: there is no layer with the handle 2 before this one"},
        {R"("layers": [{"name": "a", "parent": "a"}])",
         "layers[0].parent: a layer can't be its own parent"},
        {R"("layers": [{"name": "a", "children": [{"name": "b", "parent": "a"}]}])",
         "layers[0].children[0].parent: this layer stands in its parent already"},
        {R"("elements": [{"name": "a", "handle": 1}])",
         "elements[0]: has a handle, and so needs a class"},
        {R"("elements": [{"name": "a", "parameters": [{"id": 1, "value": 2}, {"id": 1, "value": 2}]}])",
         "elements[0].parameters[1].id: the parameter 1 stands twice"},
        {R"("elements": [{"name": "a", "parameters": [{"id": 32768, "value": 2}]}])",
         "elements[0].parameters[0].id: must lie between -32768 and 32767"},
        {R"("elements": [{"name": "a", "parameters": [{"id": 1}]}])",
         "elements[0].parameters[0]: the key \"value\" is missing"},
        {R"("render": {"timeType": "frames"})",
         "render.timeType: must be one of single, segment, range, list"},
        {R"("render": {"numberBase": 2147483648})",
         "render.numberBase: must lie between -2147483648 and 2147483647"},
        {R"("render": {"renderer": {"class": [1]}})", "render.renderer.class: must be two numbers"},
        {R"("render": {"height": 0})", "render.height: must lie between 1 and 300000"},
        {object + R"(, "name": "a"}])",
         "objects[0]: there is no key \"name\" here; the nearest are handle"},
        {object + R"(, "references": ["a"]}])",
         "objects[0].references[0]: must be a handle, or null"},
        {object + R"(, "references": [0]}])",
         "objects[0].references[0]: must lie between 1 and 4294967295"},
        {object + R"(, "references": [{}]}])",
         "objects[0].references[0]: the key \"block\" is missing"},
        {object + R"(, "chunks": [{"id": 65536}]}])",
         "objects[0].chunks[0].id: must lie between 0 and 65535"},
        {Parameter(R"("type": "double", "value": 1)"),
         "objects[0].references[0].block.parameters[0].type: must be one of float, int, bool, "
         "fraction, text, file, node, target"},
        {Parameter(R"("type": "int")"),
         "objects[0].references[0].block.parameters[0]: has neither \"value\" nor, for a table, "
         "\"values\""},
        {Parameter(R"("type": "int", "value": 1, "values": [])"),
         "objects[0].references[0].block.parameters[0].values: stands beside \"value\"; leave one "
         "of them"},
        {Parameter(R"("type": "int", "value": 2147483648)"),
         "objects[0].references[0].block.parameters[0].value: must lie between -2147483648 and "
         "2147483647"},
        {Parameter(R"("type": "int", "values": [1, true])"),
         "objects[0].references[0].block.parameters[0].values[1]: must be a whole number"},
        {Parameter(R"("type": "float", "value": 1e39)"),
         "objects[0].references[0].block.parameters[0].value: must lie between "
         "-3.4028234663852886e+38 and 3.4028234663852886e+38"},
        {Parameter(R"("type": "float", "value": "1")"),
         "objects[0].references[0].block.parameters[0].value: must be a number, \"inf\", \"-inf\" "
         "or \"nan\""},
        {Parameter(R"("type": "node", "value": "a")"),
         "objects[0].references[0].block.parameters[0].value: must be a handle, or null"},
        {R"("effects": [1])", "effects[0]: there is no effect with the handle 1 among the objects"},
        {object + R"(}], "effects": [1])",
         "effects[0]: there is no effect with the handle 1 among the objects"},
        {R"("objects": [{"handle": 1, "superClass": 4240, "class": [3, 4]}], "effects": [1, 1])",
         "effects[1]: the effect stands twice"},
    };
    for (const Fault& fault : faults)
        EXPECT_EQ(ComplaintOfSaved(fault.members), fault.complaint) << fault.members;
}

TEST(SceneTextReader, ThereIsALimitToObjectsAndEffects) {
    const auto objects = [](int count, const std::string& superClass) {
        std::string list;
        for (int i = 1; i <= count; ++i) {
            list.append(i == 1 ? "" : ", ").append("{\"handle\": ").append(std::to_string(i));
            list.append(", \"superClass\": ").append(superClass).append(", \"class\": [3, 4]}");
        }
        return "\"objects\": [" + list + "]";
    };
    EXPECT_EQ(ParseSaved(objects(50'000, "512")).objects.size(), 50'000U);
    EXPECT_EQ(ComplaintOfSaved(objects(50'001, "512")),
              "objects: there are more than 50000 objects");
    EXPECT_EQ(ComplaintOfSaved(objects(250, "4240")), "");
    EXPECT_EQ(ComplaintOfSaved(objects(251, "4240")),
              "objects[250]: there are more than 250 effects");
}

TEST(SceneTextReader, ThereIsALimitToSelectionSets) {
    const auto sets = [](int count) {
        std::string list;
        for (int i = 0; i < count; ++i) {
            list.append(i == 0 ? "" : ", ").append("{\"name\": \"").append(std::to_string(i));
            list.append("\", \"nodes\": []}");
        }
        return "\"selectionSets\": [" + list + "]";
    };
    EXPECT_EQ(ParseSaved(sets(50'000)).selectionSets.size(), 50'000U);
    EXPECT_EQ(ComplaintOfSaved(sets(50'001)),
              "selectionSets: there are more than 50000 selection sets");
}

TEST(SceneTextReader, TimeTypesHaveNames) {
    const auto read = [](const char* name) {
        return ParseSaved(R"("render": {"timeType": ")" + std::string(name) + "\"}")
            .render.timeType;
    };
    EXPECT_EQ(read("single"), REND_TIMESINGLE);
    EXPECT_EQ(read("segment"), REND_TIMESEGMENT);
    EXPECT_EQ(read("range"), REND_TIMERANGE);
    EXPECT_EQ(read("list"), REND_TIMEPICKUP);
}

TEST(SceneTextReader, ARendererWithoutAClassIsNone) {
    const auto renderer = ParseSaved(R"("render": {"renderer": {}})").render.renderer;
    ASSERT_TRUE(renderer);
    EXPECT_EQ(renderer->rendererClass, Class_ID());
    EXPECT_EQ(ParseSaved(R"("render": {})").render.renderer.has_value(), false);
}

// Whole but for its end, in every place.
TEST(SceneTextReader, ASavedSceneThatIsCutIsOneLineOfComplaint) {
    const std::string text = scene_page::Example(1);
    for (std::size_t size = 0; size + 2 < text.size(); ++size) {
        const std::string fault =
            FaultText<InputError>([&] { ParseScene("a.json", text.substr(0, size)); });
        ASSERT_THAT(fault, testing::StartsWith("a.json: line ")) << size;
        ASSERT_EQ(fault.find('\n'), std::string::npos) << size;
    }
}

TEST(SceneTextReader, MessagesQuoteStrangeNamesInOneLine) {
    EXPECT_EQ(ComplaintOfSaved(R"("nodes": [{"name": "a\nb"}, {"name": "a\nb"}])"),
              "nodes[1].name: the name \"a b\" stands twice");
    EXPECT_EQ(
        ComplaintOfSaved(R"("selectionSets": [{"name": "s", "nodes": [{"utf16": "d800"}]}])"),
        "selectionSets[0].nodes[0]: there is no node \"\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\"");
}

}  // namespace
}  // namespace host
