#include "command/identities.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/rank.h"
#include "host/text.h"

namespace command {
namespace {

using testing::ElementsAre;
using Entries = std::vector<ManifestEntry>;

std::vector<std::string> NamesOf(const Identities& identities) {
    std::vector<std::string> names;
    for (host::Node* node : identities.Objects())
        names.push_back(host::ToUtf8(node->GetName()));
    return names;
}

Entries Numbered(std::size_t count) {
    Entries entries;
    for (std::size_t i = 0; i < count; ++i)
        entries.push_back({"n" + std::to_string(i), static_cast<std::uint32_t>(i + 1)});
    return entries;
}

TEST(Identities, ObjectsGetNodesWithRenderIds) {
    host::Scene scene;
    Identities identities(scene);
    EXPECT_EQ(identities.SetObjects(Entries{{"b", 7}, {"a", 9}}), 0U);
    ASSERT_EQ(scene.NumNodes(), 2);
    EXPECT_EQ(identities.ObjectOf(7), scene.FindNode(_M("b"))->GetRenderID());
    EXPECT_EQ(identities.ObjectOf(9), scene.FindNode(_M("a"))->GetRenderID());
    EXPECT_NE(identities.ObjectOf(7), identities.ObjectOf(9));
    EXPECT_EQ(identities.Unnamed(), 0U);
}

TEST(Identities, AnIdWithoutANameIsCalledByItsDigits) {
    host::Scene scene;
    Identities identities(scene);
    identities.SetObjects(Entries{{"a", 7}});
    identities.SetMaterials(Entries{{"m", 7}});
    const std::span<const UWORD> numbers = identities.ObjectNumbers();
    const std::uint16_t object = identities.ObjectOf(0xab12);
    EXPECT_EQ(identities.ObjectOf(0xab12), object);
    EXPECT_EQ(object, scene.FindNode(_M("0000ab12"))->GetRenderID());
    EXPECT_EQ(identities.MaterialOf(0xab12), 2);
    EXPECT_THAT(NamesOf(identities), ElementsAre("0000ab12", "a"));
    EXPECT_EQ(identities.MaterialList(), "1 [m], 2 [0000ab12]");
    EXPECT_EQ(identities.Unnamed(), 2U);
    EXPECT_EQ(identities.ObjectNumbers().data(), numbers.data()) << "the span stays good";
}

TEST(Identities, OnlySoManyIdsWithoutANameAreKept) {
    host::Scene scene;
    Identities identities(scene);
    for (std::uint32_t id = 1; id <= Identities::mostUnnamed; ++id)
        EXPECT_NE(identities.ObjectOf(id), unknownObject) << id;
    EXPECT_EQ(identities.ObjectOf(0xffff), unknownObject);
    EXPECT_EQ(identities.MaterialOf(0xffff), noMaterial);
}

TEST(Identities, ALeadingSlashWouldLeadOutOfTheLayerSet) {
    host::Scene scene;
    Identities identities(scene);
    scene.AddNode(_M("/in/scene"));
    identities.SetObjects(Entries{{"/world/ball", 1}, {"//world", 2}, {"/in/scene", 3}, {"/", 4}});
    EXPECT_THAT(NamesOf(identities), ElementsAre("/", "//world", "/in/scene", "world/ball"));
    identities.SetObjects(Entries{{"/world/ball", 1}});
    EXPECT_EQ(scene.NumNodes(), 4) << "the same node in the next frame";
    identities.SetMaterials(Entries{{"/mat/wood", 1}});
    EXPECT_EQ(identities.MaterialList(), "1 [mat/wood]");
}

TEST(Identities, ObjectsAreListedByNameAsPeopleCount) {
    host::Scene scene;
    Identities identities(scene);
    identities.SetObjects(Entries{{"a10", 1}, {"b", 2}, {"A9", 3}});
    EXPECT_THAT(NamesOf(identities), ElementsAre("A9", "a10", "b"));
}

TEST(Identities, NodesOfTheSceneAreTakenAsTheyAre) {
    host::Scene scene;
    host::Node& cube = scene.AddNode(_M("Cube"));
    cube.SetObjectID(12);
    cube.SetRenderID(500);
    scene.AddNode(_M("Lamp"));
    Identities identities(scene);
    identities.SetObjects(Entries{{"Cube", 7}});
    EXPECT_EQ(scene.NumNodes(), 2);
    EXPECT_EQ(identities.ObjectOf(7), 500);
    ASSERT_GT(identities.ObjectNumbers().size(), 500U);
    EXPECT_EQ(identities.ObjectNumbers()[500], 12);
    EXPECT_THAT(NamesOf(identities), ElementsAre("Cube")) << "the lamp is in no frame";
}

TEST(Identities, AFramesIdsTakeThePlaceOfThoseBefore) {
    host::Scene scene;
    Identities identities(scene);
    identities.SetObjects(Entries{{"a", 1}, {"b", 2}});
    identities.SetMaterials(Entries{{"m", 1}});
    const std::uint16_t b = identities.ObjectOf(2);
    identities.SetObjects(Entries{{"b", 3}, {"c", 1}});
    identities.SetMaterials(Entries{{"n", 1}, {"m", 4}});
    EXPECT_EQ(identities.ObjectOf(3), b);
    EXPECT_EQ(identities.ObjectOf(1), scene.FindNode(_M("c"))->GetRenderID());
    EXPECT_THAT(NamesOf(identities), ElementsAre("a", "b", "c"));
    EXPECT_EQ(identities.MaterialOf(4), 1);
    EXPECT_EQ(identities.MaterialOf(1), 2);
    EXPECT_NE(identities.ObjectOf(2), b) << "no frame's ids are kept for the next";
}

TEST(Identities, TwoIdsOfOneNameAreOneObject) {
    host::Scene scene;
    Identities identities(scene);
    identities.SetObjects(Entries{{"a", 1}, {"a", 2}});
    identities.SetMaterials(Entries{{"m", 1}, {"m", 2}});
    EXPECT_EQ(scene.NumNodes(), 1);
    EXPECT_EQ(identities.ObjectOf(1), identities.ObjectOf(2));
    EXPECT_THAT(NamesOf(identities), ElementsAre("a"));
    EXPECT_EQ(identities.MaterialOf(2), 1);
    EXPECT_EQ(identities.MaterialList(), "1 [m]");
}

TEST(Identities, MaterialsAreAListOfIds) {
    host::Scene scene;
    Identities identities(scene);
    EXPECT_EQ(identities.MaterialList(), "");
    identities.SetMaterials(Entries{{"Glass, old [2]", 7}, {std::string("W\0d", 3), 8}});
    EXPECT_EQ(identities.MaterialOf(7), 1);
    EXPECT_EQ(identities.MaterialOf(8), 2);
    EXPECT_EQ(identities.MaterialList(), "1 [Glass, old (2)], 2 [Wd]");
}

TEST(Identities, TheLastOfTooManyMaterialsAreLeftOut) {
    host::Scene scene;
    Identities identities(scene);
    const Entries entries = Numbered(300);
    EXPECT_EQ(identities.MaterialsBeyondLimit(entries), 45U);
    EXPECT_EQ(identities.SetMaterials(entries), 45U);
    EXPECT_EQ(identities.MaterialOf(255), 255);
    EXPECT_EQ(identities.MaterialOf(256), noMaterial);
    EXPECT_EQ(identities.MaterialsBeyondLimit(Numbered(255)), 0U) << "they have their numbers";
    EXPECT_EQ(identities.MaterialsBeyondLimit(Numbered(256)), 1U);
}

TEST(Identities, TheLastOfTooManyObjectsAreLeftOut) {
    host::Scene scene;
    Identities identities(scene);
    const Entries entries = Numbered(65540);
    EXPECT_EQ(identities.ObjectsBeyondLimit(entries), 6U);
    EXPECT_EQ(identities.SetObjects(entries), 6U);
    EXPECT_EQ(scene.NumNodes(), mostObjects);
    EXPECT_NE(identities.ObjectOf(65534), unknownObject);
    EXPECT_EQ(identities.ObjectOf(65535), unknownObject);
    EXPECT_EQ(identities.ObjectsBeyondLimit(Numbered(65534)), 0U);
}

}  // namespace
}  // namespace command
