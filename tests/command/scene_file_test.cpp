#include "command/scene_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "command/failure.h"
#include "tests/command/fault_text.h"
#include "tests/command/test_folder.h"
#include "tests/host/scene_page.h"

namespace command {
namespace {

using testing::ElementsAre;

// `members` are those behind the version.
SceneDescription Parse(const std::string& members) {
    return ParseScene("a.json", R"({"veltrane": 1, )" + members + "}");
}

std::string SceneFileComplaint(const std::string& members) {
    std::string text = FaultText<InputError>([&] { Parse(members); });
    return text.starts_with("a.json: ") ? text.substr(8) : text;
}

TEST(SceneFile, ReadsTheSettingsOfThePage) {
    const SceneDescription scene = ParseScene("example", scene_page::Example(0));
    EXPECT_EQ(scene.render.hidden, false);
    EXPECT_EQ(scene.render.camera, 0U);
    EXPECT_EQ(scene.render.frameRate, 25);
    std::map<std::string_view, decltype(Setting::value)> values;
    for (const Setting& setting : scene.parameters)
        values[setting.row->name] = setting.value;
    EXPECT_EQ(values.size(), 3U);
    EXPECT_EQ(std::get<int>(values["bitDepth"]), 16);
    EXPECT_EQ(std::get<int>(values["outputObjects"]), 1);
    ASSERT_EQ(scene.nodeTables.size(), 1U);
    EXPECT_EQ(scene.nodeTables[0].row->name, "objectList");
    EXPECT_THAT(scene.nodeTables[0].nodes, ElementsAre(1U, 4U));
    EXPECT_EQ(std::get<std::string>(values["nodeIDList"]), "1 [Table], 7-8");
    ASSERT_EQ(scene.elementSettings.size(), 1U);
    EXPECT_EQ(scene.elementSettings[0].element, "Reflections");
    EXPECT_EQ(scene.elementSettings[0].setting.row->name, "visible");
    EXPECT_EQ(std::get<int>(scene.elementSettings[0].setting.value), 0);
}

TEST(SceneFile, NumbersMayBeGivenByTheirLabels) {
    const auto scene = Parse(R"("effect": {"parameters": {"bitDepth": "8 bits"}})");
    EXPECT_EQ(std::get<int>(scene.parameters[0].value), 8);
    EXPECT_EQ(SceneFileComplaint(R"("effect": {"parameters": {"bitDepth": "9 bits"}})"),
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
    const SceneDescription none = Parse(R"("effect": {"parameters": {"objectList": []}})");
    ASSERT_EQ(none.nodeTables.size(), 1U);
    EXPECT_THAT(none.nodeTables[0].nodes, ElementsAre());
}

TEST(SceneFile, EveryFaultOfTheEffectIsToldWithItsPlace) {
    struct Fault {
        std::string members;
        const char* complaint;
    };
    const Fault faults[] = {
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
        EXPECT_EQ(SceneFileComplaint(fault.members), fault.complaint) << fault.members;
}

TEST(SceneFile, ATableOfNodesTakesHandlesInVersion2) {
    const SceneDescription scene = ParseScene("a.json", R"({"veltrane": 2,
        "nodes": [{"name": "a", "handle": 7}, {"name": "a", "handle": 8}, {"name": "b"}],
        "effect": {"parameters": {"objectList": [8, "b", 7]}}})");
    ASSERT_EQ(scene.nodeTables.size(), 1U);
    EXPECT_THAT(scene.nodeTables[0].nodes, ElementsAre(1U, 2U, 0U));
}

TEST(SceneFile, WhatIsSavedIsReadToo) {
    const SceneDescription scene = ParseScene("a.json", scene_page::Example(1));
    EXPECT_EQ(scene.path, "a.json");
    EXPECT_EQ(scene.objects.size(), 2U);
    EXPECT_THAT(scene.effects, ElementsAre(10U));
    EXPECT_TRUE(scene.parameters.empty());
}

struct SceneFileOnDisk : FolderTest {};

TEST_F(SceneFileOnDisk, IsReadOrToldAbout) {
    const std::string path = Write("a.json", R"({"veltrane": 1, "nodes": [{"name": "a"}],
                                                 "effect": {"parameters": {"bitDepth": 8}}})");
    const SceneDescription scene = ReadSceneFile(path);
    EXPECT_EQ(scene.path, path);
    EXPECT_EQ(scene.nodes.size(), 1U);
    EXPECT_EQ(scene.parameters.size(), 1U);
    EXPECT_EQ(FaultText<InputError>([&] { ReadSceneFile(PathOf("b.json")); }),
              PathOf("b.json") + ": no such file; check the path");
}

}  // namespace
}  // namespace command
