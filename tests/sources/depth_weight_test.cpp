#include "sources/depth_weight.h"

#include "tests/sources/fake_gbuffer.h"

namespace {

constexpr DWORD weights = BMM_CHAN_WEIGHT | BMM_CHAN_TRANSP;
constexpr DWORD identities = BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_NODE_ID;
constexpr UWORD noObject = 65535;

// A transparent fragment of render ID 7: each way of counting gives another weight.
class DepthWeight : public testing::Test {
  protected:
    int Weight(DWORD present, UWORD opaque = noObject) {
        rows = {{{fragment}}};
        FakeReader reader(rows);
        reader.StartLine(0);
        reader.StartPixel(0);
        reader.StartNextLayer();
        const int weight = sources::DepthWeight(present, opaque).Of(&reader);
        reads = reader.reads;
        return weight;
    }

    static constexpr int byWeights = 55 * 100 * 3;
    static constexpr int byWeightsOpaque = 255 * 100 * 3;
    static constexpr int byCoverage = 51 * 765;
    static constexpr int full = 195075;

    FakeFragment fragment{.coverage = UBYTE{51},
                          .renderID = UWORD{7},
                          .transparency = Color24{200, 200, 200},
                          .weight = Color24{100, 100, 100}};
    std::vector<std::vector<FakePixel>> rows;
    std::map<int, int> reads;
};

TEST_F(DepthWeight, IsOfWeightsThenOfCoverageAndElseFull) {
    EXPECT_EQ(Weight(weights | identities), byWeights);
    EXPECT_EQ(Weight(weights | identities | BMM_CHAN_COVERAGE), byWeights);
    EXPECT_EQ(Weight(BMM_CHAN_COVERAGE), byCoverage);
    EXPECT_EQ(Weight(0), full);
    EXPECT_EQ(Weight(identities), full);
}

TEST_F(DepthWeight, LooksAtWeightsOnlyBesideBothIdentities) {
    for (const DWORD missing :
         {BMM_CHAN_WEIGHT, BMM_CHAN_TRANSP, BMM_CHAN_NODE_RENDER_ID, BMM_CHAN_NODE_ID}) {
        const DWORD present = (weights | identities) & ~missing;
        EXPECT_EQ(Weight(present), full) << missing;
        EXPECT_EQ(Weight(present | BMM_CHAN_COVERAGE), byCoverage) << missing;
    }
}

TEST_F(DepthWeight, DoesntLookAtTheTransparencyOfTheOpaqueObject) {
    EXPECT_EQ(Weight(weights | identities, 7), byWeightsOpaque);
    EXPECT_EQ(Weight(weights | identities, 8), byWeights);
    EXPECT_EQ(Weight(BMM_CHAN_COVERAGE, 7), byCoverage);
    fragment.renderID = noObject;
    EXPECT_EQ(Weight(weights | identities, noObject), byWeights);
    fragment.renderID.reset();
    EXPECT_EQ(Weight(weights | identities, 7), byWeights);
}

TEST_F(DepthWeight, WithoutAnOpaqueObjectReadsNoRenderIDs) {
    Weight(weights | identities);
    EXPECT_EQ(reads[GB_NODE_RENDER_ID], 0);
    Weight(weights | identities, 7);
    EXPECT_EQ(reads[GB_NODE_RENDER_ID], 1);
}

}  // namespace
