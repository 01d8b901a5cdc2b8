#include "sources/single_id_channels.h"

#include <gmock/gmock.h>

#include "sources/id_bounds.h"
#include "tests/sources/fake_gbuffer.h"
#include "tests/sources/row_copies.h"

namespace {

using sources::SpecificMtlIDToPSDChannel;
using sources::SpecificNodeIDToPSDChannel;
using testing::ElementsAre;

constexpr int matteKind = 3;
constexpr UWORD background = 65535;

FakeFragment Object(UWORD nodeID, UBYTE mtlID, std::optional<UWORD> renderID) {
    return {.mtlID = mtlID, .nodeID = nodeID, .coverage = UBYTE{255}, .renderID = renderID};
}

class SingleIDChannels : public testing::Test {
  protected:
    SingleIDChannels() {
        bitmap.gbuffer.channels = BMM_CHAN_COVERAGE;
        // Two objects, the background, an object without a render id, and one that has neither id.
        bitmap.SetRows({{{Object(300, 2, UWORD{0})},
                         {Object(0, 0, UWORD{65534})},
                         {Object(0, 0, background)},
                         {Object(300, 2, std::nullopt)},
                         {{.coverage = UBYTE{255}, .renderID = UWORD{3}}}}});
        Widen(sources::nodeIDBounds, 300, 0, 3);
        Widen(sources::nodeIDBounds, 0, 1, 2);
        Widen(sources::mtlIDBounds, 2, 0, 3);
        Widen(sources::mtlIDBounds, 0, 1, 2);
    }
    ~SingleIDChannels() override {
        sources::nodeIDBounds.clear();
        sources::mtlIDBounds.clear();
    }
    static void Widen(sources::IDBounds& bounds, std::uint16_t id, int left, int right) {
        bounds[id] += IPoint2{left, 0};
        bounds[id] += IPoint2{right, 0};
    }
    std::vector<std::uint8_t> NodeMatte(UWORD id) {
        SpecificNodeIDToPSDChannel source(&bitmap, id, matteKind, true);
        return Row8(source, 5);
    }
    std::vector<std::uint8_t> MtlMatte(UWORD id) {
        SpecificMtlIDToPSDChannel source(&bitmap, id, matteKind, true);
        return Row8(source, 5);
    }

    FakeGBufferBitmap bitmap;
};

TEST_F(SingleIDChannels, CutOutTheFragmentsOfTheirID) {
    EXPECT_THAT(NodeMatte(300), ElementsAre(255, 0, 0, 255, 0));
    EXPECT_THAT(MtlMatte(2), ElementsAre(255, 0, 0, 255, 0));
}

TEST_F(SingleIDChannels, NeverTakeTheBackgroundAlsoNotForID0) {
    EXPECT_THAT(NodeMatte(0), ElementsAre(0, 255, 0, 0, 0));
    EXPECT_THAT(MtlMatte(0), ElementsAre(0, 255, 0, 0, 0));
}

TEST_F(SingleIDChannels, AMaterialIDIsNotCutToAByte) {
    Widen(sources::mtlIDBounds, 258, 0, 4);
    EXPECT_THAT(MtlMatte(258), ElementsAre(0, 0, 0, 0, 0));
}

TEST_F(SingleIDChannels, OfAnIDWithoutAnEntryHaveAnEmptyBoxAndEmptyRows) {
    SpecificNodeIDToPSDChannel node(&bitmap, 7, matteKind, true);
    node.ComputeBounds();
    EXPECT_TRUE(node.Bounds().IsEmpty());
    EXPECT_THAT(Row8(node, 5), ElementsAre(0, 0, 0, 0, 0));
    SpecificMtlIDToPSDChannel mtl(&bitmap, 7, matteKind, true);
    mtl.ComputeBounds();
    EXPECT_TRUE(mtl.Bounds().IsEmpty());
    EXPECT_THAT(Row8(mtl, 5), ElementsAre(0, 0, 0, 0, 0));
    EXPECT_EQ(bitmap.gbuffer.reader.linesStarted, 0);
}

TEST_F(SingleIDChannels, FindTheirBoxInTheTableOfTheirKind) {
    SpecificNodeIDToPSDChannel node(&bitmap, 0, matteKind, true);
    node.ComputeBounds();
    EXPECT_EQ(node.Bounds().left, 1);
    EXPECT_EQ(node.Bounds().right, 2);
    Widen(sources::mtlIDBounds, 2, 0, 4);
    SpecificMtlIDToPSDChannel mtl(&bitmap, 2, matteKind, true);
    mtl.ComputeBounds();
    EXPECT_EQ(mtl.Bounds().left, 0);
    EXPECT_EQ(mtl.Bounds().right, 4);
}

}  // namespace
