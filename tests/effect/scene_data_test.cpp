#include "effect/scene_data.h"

#include <cmath>
#include <numbers>
#include <sstream>

#include "host/scene.h"
#include "tests/effect/document_frame.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr float halfTurn = std::numbers::pi_v<float>;
constexpr float sixth = halfTurn / 6.0F;

// What a reader of the document finds.
struct Block {
    std::string signature;
    int id = 0;
    std::string name;
    std::vector<std::uint32_t> integers;
    std::vector<double> values;
};

template <class T>
T NumberAt(const std::string& bytes, std::size_t offset) {
    T number{};
    auto* out = reinterpret_cast<unsigned char*>(&number);
    for (std::size_t i = 0; i < sizeof(T); ++i)
        out[sizeof(T) - 1 - i] = static_cast<unsigned char>(bytes.at(offset + i));
    return number;
}

// Signature, id, a Pascal string padded to an even size, the data's length, then integers and nine
// numbers of 8 bytes.
Block Read(psdfile::PSDPart& part) {
    std::stringstream stream;
    part.Write(stream);
    const std::string bytes = stream.str();
    Block block;
    block.signature = bytes.substr(0, 4);
    block.id = NumberAt<std::uint16_t>(bytes, 4);
    const auto nameLength = static_cast<unsigned char>(bytes.at(6));
    block.name = bytes.substr(7, nameLength);
    std::size_t at = 6 + (nameLength + 2U) / 2 * 2;
    const std::size_t end = at + 4 + NumberAt<std::uint32_t>(bytes, at);
    EXPECT_EQ(bytes.size(), end);
    const std::size_t values = end - 9 * 8;
    for (at += 4; at < values; at += 4)
        block.integers.push_back(NumberAt<std::uint32_t>(bytes, at));
    for (; at < end; at += 8)
        block.values.push_back(NumberAt<double>(bytes, at));
    return block;
}

// Turns of the world that a document has, y up, seen from the scene's, which has z up.
Matrix3 InScene(const Point3& x, const Point3& y, const Point3& z, const Point3& place = {}) {
    const auto zUp = [](const Point3& axis) { return Point3(axis.x, -axis.z, axis.y); };
    return {zUp(x), zUp(y), zUp(z), place};
}
Matrix3 TurnAboutX(float angle) {
    return InScene({1.0F, 0.0F, 0.0F}, {0.0F, std::cos(angle), std::sin(angle)},
                   {0.0F, -std::sin(angle), std::cos(angle)});
}
Matrix3 TurnAboutY(float angle) {
    return InScene({std::cos(angle), 0.0F, -std::sin(angle)}, {0.0F, 1.0F, 0.0F},
                   {std::sin(angle), 0.0F, std::cos(angle)});
}
Matrix3 TurnAboutZ(float angle) {
    return InScene({std::cos(angle), std::sin(angle), 0.0F},
                   {-std::sin(angle), std::cos(angle), 0.0F}, {0.0F, 0.0F, 1.0F});
}

class SceneData : public DocumentFrameTest {
  protected:
    std::vector<Block> Blocks() {
        std::vector<Block> blocks;
        for (const auto& part : Document().imageResources)
            blocks.push_back(Read(*part));
        return blocks;
    }
    static void ExpectValues(const Block& block, std::size_t first, double x, double y, double z) {
        EXPECT_NEAR(block.values.at(first), x, 1e-6);
        EXPECT_NEAR(block.values.at(first + 1), y, 1e-6);
        EXPECT_NEAR(block.values.at(first + 2), z, 1e-6);
    }
};

class CameraBlock : public SceneData {
  protected:
    CameraBlock() {
        seen.isTaken = true;
        seen.camToWorld = TurnAboutX(0.0F);
    }
    std::vector<Block> Add() {
        Document().imageResources.clear();
        effect::AddCameraBlock(builder, snapshots, FrameOf(image.get()));
        return Blocks();
    }
    Block AddOne() {
        const std::vector<Block> blocks = Add();
        EXPECT_THAT(blocks, SizeIs(1));
        return blocks.at(0);
    }

    effect::SceneSnapshots snapshots;
    effect::SceneSnapshot& seen = snapshots[0];
};

TEST_F(CameraBlock, IsNotMadeOfAFrameThatNobodySaw) {
    seen.isTaken = false;
    EXPECT_THAT(Add(), IsEmpty());
}

TEST_F(CameraBlock, TellsWhereTheCameraStandsAndWhatItSees) {
    seen.camToWorld = TurnAboutX(0.0F);
    seen.camToWorld.SetRow(3, {10.0F, 20.0F, 30.0F});
    // 500 pixels at a distance of 500: 45 degrees to either side.
    seen.xscale = 500.0F;
    seen.devWidth = 1000;
    seen.nearRange = 1.5F;
    seen.farRange = 250.0F;
    const Block block = AddOne();
    EXPECT_EQ(block.signature, "qzMk");
    EXPECT_EQ(block.id, 58151);
    EXPECT_EQ(block.name, "");
    EXPECT_THAT(block.integers, ElementsAre(1U, 0U));
    ExpectValues(block, 0, 10.0, -30.0, 20.0);
    ExpectValues(block, 3, 0.0, 0.0, 0.0);
    ExpectValues(block, 6, std::numbers::pi / 2.0, 1.5, 250.0);
}

TEST_F(CameraBlock, TellsItsTurnAboutEachAxis) {
    seen.camToWorld = TurnAboutX(sixth);
    ExpectValues(AddOne(), 3, -std::numbers::pi / 6.0, 0.0, 0.0);
    seen.camToWorld = TurnAboutY(sixth);
    ExpectValues(AddOne(), 3, 0.0, std::numbers::pi / 6.0, 0.0);
    seen.camToWorld = TurnAboutZ(sixth);
    ExpectValues(AddOne(), 3, 0.0, 0.0, std::numbers::pi / 6.0);
}

TEST_F(CameraBlock, TurnsAboutXBeforeY) {
    // A quarter turn about x puts y on z and z on -y; the turn about y takes the new y along.
    const float c = std::cos(sixth);
    const float s = std::sin(sixth);
    seen.camToWorld = InScene({c, 0.0F, -s}, {s, 0.0F, c}, {0.0F, -1.0F, 0.0F});
    ExpectValues(AddOne(), 3, -std::numbers::pi / 2.0, std::numbers::pi / 6.0, 0.0);
}

TEST_F(CameraBlock, OfTheWorldsOwnAxesLooksDown) {
    seen.camToWorld = Matrix3();
    ExpectValues(AddOne(), 3, std::numbers::pi / 2.0, 0.0, 0.0);
}

TEST_F(CameraBlock, KnowsTheViewWhicheverWayTheRenderersScaleGoes) {
    seen.devWidth = 200;
    seen.xscale = -100.0F * std::sqrt(3.0F);
    EXPECT_NEAR(AddOne().values[6], std::numbers::pi / 3.0, 1e-6);
}

TEST_F(CameraBlock, OfAParallelProjectionTellsItsWidth) {
    seen.projType = PROJ_PARALLEL;
    seen.devWidth = 640;
    for (const float scale : {16.0F, -16.0F}) {
        seen.xscale = scale;
        const Block block = AddOne();
        EXPECT_THAT(block.integers, ElementsAre(1U, 1U));
        EXPECT_EQ(block.values[6], 40.0);
    }
}

TEST_F(CameraBlock, WithoutAScaleHasNoView) {
    seen.devWidth = 640;
    for (const int projection : {PROJ_PERSPECTIVE, PROJ_PARALLEL}) {
        seen.projType = projection;
        EXPECT_EQ(AddOne().values[6], 0.0);
    }
}

TEST_F(CameraBlock, OfAFrameOfFieldsIsOneAField) {
    snapshots[1] = seen;
    snapshots[1].camToWorld.SetRow(3, {1.0F, 2.0F, 3.0F});
    EXPECT_THAT(Add(), SizeIs(1)) << "left over from a frame of fields";
    context.fieldRender = TRUE;
    const std::vector<Block> both = Add();
    ASSERT_THAT(both, SizeIs(2));
    EXPECT_EQ(both[0].id, 58151);
    ExpectValues(both[0], 0, 0.0, 0.0, 0.0);
    EXPECT_EQ(both[1].id, 58152);
    ExpectValues(both[1], 0, 1.0, -3.0, 2.0);
    seen.isTaken = false;
    EXPECT_EQ(AddOne().id, 58152);
}

TEST_F(CameraBlock, OfTheFirstFieldIsNotBesideTheSecondOfTheFrameBefore) {
    snapshots[1].isTaken = true;
    context.fieldRender = TRUE;
    context.evenLines = TRUE;
    EXPECT_EQ(AddOne().id, 58151);
}

class HelperBlock : public SceneData {
  protected:
    static host::Node& AddHelper(const MSTR& name, host::Node* parent = nullptr) {
        host::Node& node = Host().scene.AddNode(name, parent);
        node.SetKind(host::NodeKind::PointHelper);
        return node;
    }
    std::vector<Block> Add() {
        Document().imageResources.clear();
        effect::AddHelperBlock(builder, FrameOf(image.get()));
        return Blocks();
    }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (const Block& block : Add())
            names.push_back(block.name);
        return names;
    }
};

TEST_F(HelperBlock, TellsWhereTheHelperStandsHowItIsScaledAndTurned) {
    host::Node& node = AddHelper(_M("Target"));
    const float c = std::cos(sixth);
    const float s = std::sin(sixth);
    // Scaled by 2, 3 and 4, then turned about x.
    node.SetTransform(InScene({2.0F, 0.0F, 0.0F}, {0.0F, 3.0F * c, 3.0F * s},
                              {0.0F, -4.0F * s, 4.0F * c}, {1.0F, 2.0F, 3.0F}));
    const std::vector<Block> blocks = Add();
    ASSERT_THAT(blocks, SizeIs(1));
    EXPECT_EQ(blocks[0].signature, "qzMk");
    EXPECT_EQ(blocks[0].id, 30000);
    EXPECT_EQ(blocks[0].name, "Target");
    EXPECT_THAT(blocks[0].integers, ElementsAre(1U));
    ExpectValues(blocks[0], 0, 1.0, -3.0, 2.0);
    ExpectValues(blocks[0], 3, 2.0, 3.0, 4.0);
    ExpectValues(blocks[0], 6, -std::numbers::pi / 6.0, 0.0, 0.0);
}

TEST_F(HelperBlock, IsOneForEachPointHelperParentsFirst) {
    host::Node& mesh = Host().scene.AddNode(_M("Mesh"));
    host::Node& a = AddHelper(_M("A"));
    AddHelper(_M("Below"), &mesh);
    AddHelper(_M("A1"), &a);
    Host().scene.AddNode(_M("Camera")).SetKind(host::NodeKind::Camera);
    Host().scene.AddNode(_M("Light")).SetKind(host::NodeKind::Light);
    AddHelper(_M("B"));
    const std::vector<Block> blocks = Add();
    ASSERT_THAT(blocks, SizeIs(4));
    const std::pair<const char*, int> expected[] = {
        {"Below", 30000}, {"A", 30002}, {"A1", 30004}, {"B", 30006}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(blocks[i].name, expected[i].first);
        EXPECT_EQ(blocks[i].id, expected[i].second);
    }
}

TEST_F(HelperBlock, IsOfTheNamesThatFitTheWildcardAlone) {
    for (const MCHAR* name : {_M("Track01"), _M("other"), _M("TRACK2"), _M("My Track"), _M("")})
        AddHelper(name);
    EXPECT_THAT(Names(), ElementsAre("Track01", "other", "TRACK2", "My Track", ""));
    SetText("embedHelpersWildcard"_param, _M("track*"));
    EXPECT_THAT(Names(), ElementsAre("Track01", "TRACK2"));
    EXPECT_EQ(Add()[1].id, 30002) << "what doesn't fit has no number";
    SetText("embedHelpersWildcard"_param, _M("?????2"));
    EXPECT_THAT(Names(), ElementsAre("TRACK2"));
    SetText("embedHelpersWildcard"_param, _M("none"));
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(HelperBlock, OfTheSecondFieldHasANumberOfItsOwn) {
    AddHelper(_M("A"));
    AddHelper(_M("B"));
    context.fieldRender = TRUE;
    context.evenLines = TRUE;
    EXPECT_EQ(Add().at(1).id, 30002);
    context.evenLines = FALSE;
    EXPECT_EQ(Add().at(0).id, 30001);
    EXPECT_EQ(Add().at(1).id, 30003);
}

TEST_F(HelperBlock, HasItsNameInTheCodePageCutTo255Characters) {
    AddHelper(_M("Gr\u00FCn \u6F22"));
    AddHelper(MSTR(std::basic_string<MCHAR>(300, _M('n'))));
    EXPECT_THAT(Names(), ElementsAre("Gr\xFCn ?", std::string(255, 'n')));
}

TEST_F(HelperBlock, BeyondTheThousandthSharesAnId) {
    for (int i = 0; i < 1003; ++i)
        AddHelper(_M("p"));
    const std::vector<Block> blocks = Add();
    ASSERT_THAT(blocks, SizeIs(1003));
    EXPECT_EQ(blocks[999].id, 31998);
    EXPECT_EQ(blocks[1000].id, 31999);
    EXPECT_EQ(blocks[1002].id, 31999);
}

TEST_F(HelperBlock, NeverStartsAnewHoweverManyThereAre) {
    for (int i = 0; i < 65540; ++i)
        AddHelper(_M("p"));
    Document().imageResources.clear();
    effect::AddHelperBlock(builder, FrameOf(image.get()));
    ASSERT_THAT(Document().imageResources, SizeIs(65540));
    EXPECT_EQ(Read(*Document().imageResources[65535]).id, 31999);
    EXPECT_EQ(Read(*Document().imageResources[65536]).id, 31999);
    EXPECT_EQ(Read(*Document().imageResources[65539]).id, 31999);
}

}  // namespace
