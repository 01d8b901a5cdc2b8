#include "host/fragment_buffer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <type_traits>

namespace {

using host::Fragment;
using host::FragmentBuffer;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr DWORD ALL_CHANNELS = BMM_CHAN_Z | BMM_CHAN_MTL_ID | BMM_CHAN_NODE_ID | BMM_CHAN_NORMAL |
                               BMM_CHAN_REALPIX | BMM_CHAN_COVERAGE | BMM_CHAN_NODE_RENDER_ID |
                               BMM_CHAN_COLOR | BMM_CHAN_TRANSP | BMM_CHAN_WEIGHT;

Fragment WithObject(UWORD renderID) {
    Fragment fragment;
    fragment.renderID = renderID;
    return fragment;
}

Fragment WithDepth(float z) {
    Fragment fragment;
    fragment.z = z;
    return fragment;
}

struct GiveBack {
    FragmentBuffer* buffer;
    void operator()(GBufReader* reader) const { buffer->DestroyReader(reader); }
};
using Reader = std::unique_ptr<GBufReader, GiveBack>;

Reader ReaderOf(FragmentBuffer& buffer) {
    return {buffer.CreateReader(), GiveBack{&buffer}};
}

template <class T>
T Read(GBufReader& reader, int chan) {
    T value{};
    EXPECT_TRUE(reader.ReadChannelData(chan, &value)) << "channel " << chan;
    return value;
}

bool Has(GBufReader& reader, int chan) {
    std::uint64_t untouched = 0x0123456789abcdef;
    const bool there = reader.ReadChannelData(chan, &untouched);
    EXPECT_TRUE(there || untouched == 0x0123456789abcdef);
    return there;
}

// The object ids of the pixel that the reader stands before.
std::vector<int> Objects(GBufReader& reader) {
    std::vector<int> ids;
    while (reader.StartNextLayer()) {
        ids.push_back(Read<UWORD>(reader, GB_NODE_RENDER_ID));
    }
    return ids;
}

// Three pixels a row: two fragments, none, one; the second row counts on from 10.
FragmentBuffer& FillObjects(FragmentBuffer& buffer) {
    for (const UWORD first : {UWORD{1}, UWORD{11}}) {
        const Fragment pair[] = {WithObject(first), WithObject(static_cast<UWORD>(first + 1))};
        const Fragment single[] = {WithObject(static_cast<UWORD>(first + 2))};
        buffer.AddPixel(pair);
        buffer.AddPixel({});
        buffer.AddPixel(single);
    }
    return buffer;
}

TEST(FragmentBuffer, AFragmentComesBackWithAllItsChannels) {
    FragmentBuffer buffer(1, 1, ALL_CHANNELS);
    const Fragment fragment{1.5F,         7,   {1, 2, 3, 4}, {5, 6, 7}, {8, 9, 10},
                            {11, 12, 13}, 300, 400,          14,        15};
    buffer.AddPixel({&fragment, 1});
    EXPECT_EQ(buffer.ChannelsPresent(), ALL_CHANNELS);
    const Reader reader = ReaderOf(buffer);
    ASSERT_TRUE(reader->StartLine(0));
    ASSERT_EQ(reader->StartPixel(0), 1);
    ASSERT_TRUE(reader->StartNextLayer());
    EXPECT_EQ(Read<float>(*reader, GB_Z), 1.5F);
    EXPECT_EQ(Read<DWORD>(*reader, GB_NORMAL), 7U);
    const auto real = Read<RealPixel>(*reader, GB_REALPIX);
    EXPECT_THAT((std::array{real.r, real.g, real.b, real.e}), ElementsAre(1, 2, 3, 4));
    const auto color = Read<Color24>(*reader, GB_COLOR);
    EXPECT_THAT((std::array{color.r, color.g, color.b}), ElementsAre(5, 6, 7));
    const auto transparency = Read<Color24>(*reader, GB_TRANSP);
    EXPECT_THAT((std::array{transparency.r, transparency.g, transparency.b}),
                ElementsAre(8, 9, 10));
    const auto weight = Read<Color24>(*reader, GB_WEIGHT);
    EXPECT_THAT((std::array{weight.r, weight.g, weight.b}), ElementsAre(11, 12, 13));
    EXPECT_EQ(Read<UWORD>(*reader, GB_NODE_ID), 300);
    EXPECT_EQ(Read<UWORD>(*reader, GB_NODE_RENDER_ID), 400);
    EXPECT_EQ(Read<UBYTE>(*reader, GB_MTL_ID), 14);
    EXPECT_EQ(Read<UBYTE>(*reader, GB_COVERAGE), 15);
}

TEST(FragmentBuffer, ChannelsThatAreNotKeptCannotBeRead) {
    FragmentBuffer buffer(1, 1, BMM_CHAN_NODE_RENDER_ID | 0x8000);
    Fragment fragment = WithDepth(1.0F);
    fragment.normal = 1;
    buffer.AddPixel({&fragment, 1});
    EXPECT_EQ(buffer.ChannelsPresent(), BMM_CHAN_NODE_RENDER_ID);
    const Reader reader = ReaderOf(buffer);
    reader->StartLine(0);
    reader->StartPixel(0);
    reader->StartNextLayer();
    for (int chan = -1; chan < 20; ++chan) {
        EXPECT_EQ(Has(*reader, chan), chan == GB_NODE_RENDER_ID) << chan;
    }
}

TEST(FragmentBuffer, AFragmentWithoutDepthOrNormalGivesNone) {
    FragmentBuffer buffer(4, 1, BMM_CHAN_Z | BMM_CHAN_NORMAL);
    constexpr float infinite = std::numeric_limits<float>::infinity();
    for (const float z : {0.0F, std::numeric_limits<float>::quiet_NaN(), infinite, -infinite}) {
        const Fragment fragment = WithDepth(z);
        buffer.AddPixel({&fragment, 1});
    }
    const Reader reader = ReaderOf(buffer);
    reader->StartLine(0);
    for (int x = 0; x < 4; ++x) {
        reader->NextPixel();
        reader->StartNextLayer();
        EXPECT_EQ(Has(*reader, GB_Z), x == 0);
        EXPECT_FALSE(Has(*reader, GB_NORMAL));
    }
}

TEST(FragmentBuffer, PixelsFollowEachOtherInRasterOrder) {
    FragmentBuffer buffer(3, 2, BMM_CHAN_NODE_RENDER_ID);
    FillObjects(buffer);
    ASSERT_TRUE(buffer.IsComplete());
    const Reader reader = ReaderOf(buffer);
    for (const int y : {1, 0}) {
        ASSERT_TRUE(reader->StartLine(y));
        EXPECT_EQ(reader->NextPixel(), 2);
        EXPECT_THAT(Objects(*reader), ElementsAre(10 * y + 1, 10 * y + 2));
        EXPECT_EQ(reader->NextPixel(), 0);
        EXPECT_THAT(Objects(*reader), IsEmpty());
        EXPECT_EQ(reader->NextPixel(), 1);
        EXPECT_THAT(Objects(*reader), ElementsAre(10 * y + 3));
        EXPECT_EQ(reader->NextPixel(), -1);
        EXPECT_EQ(reader->NextPixel(), -1);
    }
}

TEST(FragmentBuffer, AnyPixelCanBeStartedFromAnywhere) {
    constexpr int WIDTH = 300;
    std::mt19937 random(5);
    FragmentBuffer buffer(WIDTH, 1, BMM_CHAN_NODE_RENDER_ID);
    std::vector<std::vector<int>> expected;
    for (int x = 0; x < WIDTH; ++x) {
        std::vector<Fragment> fragments(random() % 5, WithObject(static_cast<UWORD>(x)));
        buffer.AddPixel(fragments);
        expected.emplace_back(fragments.size(), x);
    }
    const Reader reader = ReaderOf(buffer);
    reader->StartLine(0);
    for (int step = 0; step < 1000; ++step) {
        const auto x = static_cast<int>(random() % WIDTH);
        ASSERT_EQ(reader->StartPixel(x),
                  static_cast<int>(expected[static_cast<std::size_t>(x)].size()));
        if (step % 2 == 0) {
            ASSERT_EQ(Objects(*reader), expected[static_cast<std::size_t>(x)]);
        }
    }
    reader->StartPixel(17);
    EXPECT_EQ(reader->NextPixel(), static_cast<int>(expected[18].size()));
    EXPECT_EQ(Objects(*reader), expected[18]);
}

TEST(FragmentBuffer, LinesAndPixelsOutsideAreRefused) {
    FragmentBuffer buffer(3, 2, BMM_CHAN_NODE_RENDER_ID);
    FillObjects(buffer);
    const Reader reader = ReaderOf(buffer);
    EXPECT_EQ(reader->StartPixel(0), -1) << "no line was started";
    EXPECT_EQ(reader->NextPixel(), -1);
    EXPECT_FALSE(reader->StartLine(2));
    EXPECT_FALSE(reader->StartLine(-1));
    EXPECT_EQ(reader->StartPixel(0), -1);
    ASSERT_TRUE(reader->StartLine(0));
    EXPECT_EQ(reader->StartPixel(3), -1);
    EXPECT_FALSE(reader->StartNextLayer());
    EXPECT_EQ(reader->StartPixel(-1), -1);
    EXPECT_EQ(reader->StartPixel(2), 1) << "a pixel of the line can be had after all";
}

TEST(FragmentBuffer, ThereIsNothingToReadBeforeAndBehindAPixelsFragments) {
    FragmentBuffer buffer(1, 1, BMM_CHAN_NODE_RENDER_ID);
    const Fragment fragment = WithObject(5);
    buffer.AddPixel({&fragment, 1});
    const Reader reader = ReaderOf(buffer);
    EXPECT_FALSE(Has(*reader, GB_NODE_RENDER_ID));
    reader->StartLine(0);
    EXPECT_FALSE(reader->StartNextLayer()) << "before the first pixel";
    reader->StartPixel(0);
    EXPECT_FALSE(Has(*reader, GB_NODE_RENDER_ID));
    EXPECT_TRUE(reader->StartNextLayer());
    EXPECT_TRUE(Has(*reader, GB_NODE_RENDER_ID));
    EXPECT_FALSE(reader->StartNextLayer());
    EXPECT_FALSE(reader->StartNextLayer());
    EXPECT_FALSE(Has(*reader, GB_NODE_RENDER_ID));
    reader->StartPixel(0);
    EXPECT_THAT(Objects(*reader), ElementsAre(5));
}

TEST(FragmentBuffer, ARowCanBeReadOnceItsLastPixelIsThere) {
    FragmentBuffer buffer(2, 2, BMM_CHAN_MTL_ID);
    buffer.AddPixel({});
    const Reader reader = ReaderOf(buffer);
    EXPECT_FALSE(reader->StartLine(0));
    buffer.AddPixel({});
    EXPECT_TRUE(reader->StartLine(0));
    EXPECT_FALSE(reader->StartLine(1));
    EXPECT_FALSE(buffer.IsComplete());
    ULONG type = 0;
    EXPECT_EQ(buffer.GetChannel(BMM_CHAN_MTL_ID, type), nullptr);
}

TEST(FragmentBuffer, PixelsBeyondTheLastAreDropped) {
    FragmentBuffer buffer(1, 1, BMM_CHAN_NODE_RENDER_ID);
    const Fragment first = WithObject(1);
    const Fragment second = WithObject(2);
    buffer.AddPixel({&first, 1});
    buffer.AddPixel({&second, 1});
    const Reader reader = ReaderOf(buffer);
    EXPECT_FALSE(reader->StartLine(1));
    reader->StartLine(0);
    reader->StartPixel(0);
    EXPECT_THAT(Objects(*reader), ElementsAre(1));
}

TEST(FragmentBuffer, APixelKeepsTheFirst65535Fragments) {
    FragmentBuffer buffer(2, 1, BMM_CHAN_NODE_RENDER_ID);
    const std::vector<Fragment> many(70000, WithObject(1));
    const Fragment last = WithObject(2);
    buffer.AddPixel(many);
    buffer.AddPixel({&last, 1});
    const Reader reader = ReaderOf(buffer);
    reader->StartLine(0);
    EXPECT_EQ(reader->NextPixel(), 65535);
    EXPECT_EQ(reader->NextPixel(), 1);
    EXPECT_THAT(Objects(*reader), ElementsAre(2));
}

TEST(FragmentBuffer, ASizeThatIsNoneHasNoRows) {
    for (const auto& [width, height] : {std::pair{0, 3}, {3, 0}, {-1, 3}, {3, -1}}) {
        FragmentBuffer buffer(width, height, ALL_CHANNELS);
        buffer.AddPixel({});
        EXPECT_TRUE(buffer.IsComplete());
        EXPECT_FALSE(ReaderOf(buffer)->StartLine(0));
        ULONG type = 0;
        EXPECT_EQ(buffer.GetChannel(BMM_CHAN_MTL_ID, type), nullptr);
    }
}

TEST(FragmentBuffer, TheRangeOfDepthsIsThatOfAllFragments) {
    FragmentBuffer buffer(2, 1, BMM_CHAN_Z);
    constexpr float NONE = std::numeric_limits<float>::quiet_NaN();
    const Fragment first[] = {WithDepth(NONE), WithDepth(3.0F), WithDepth(-2.0F)};
    const Fragment second[] = {WithDepth(8.0F), WithDepth(std::numeric_limits<float>::infinity())};
    buffer.AddPixel(first);
    buffer.AddPixel(second);
    float range[2] = {};
    EXPECT_TRUE(buffer.GetChannelMin(GB_Z, &range[0]));
    EXPECT_TRUE(buffer.GetChannelMax(GB_Z, &range[1]));
    EXPECT_THAT(range, ElementsAre(-2.0F, 8.0F));
    EXPECT_FALSE(buffer.GetChannelMin(GB_MTL_ID, &range[0]));
    EXPECT_FALSE(buffer.GetChannelMax(GB_NODE_ID, &range[1]));
    EXPECT_THAT(range, ElementsAre(-2.0F, 8.0F));
}

TEST(FragmentBuffer, WithoutDepthsThereIsNoRange) {
    const Fragment fragments[] = {Fragment{}, WithDepth(3.0F)};
    FragmentBuffer unkept(1, 1, BMM_CHAN_MTL_ID);
    unkept.AddPixel(fragments);
    FragmentBuffer none(1, 1, BMM_CHAN_Z);
    none.AddPixel({fragments, 1});
    for (FragmentBuffer* buffer : {&unkept, &none}) {
        float z = 5.0F;
        EXPECT_FALSE(buffer->GetChannelMin(GB_Z, &z));
        EXPECT_FALSE(buffer->GetChannelMax(GB_Z, &z));
        EXPECT_EQ(z, 5.0F);
    }
}

TEST(FragmentBuffer, APlaneHasTheFirstFragmentOfEachPixel) {
    FragmentBuffer buffer(2, 2, BMM_CHAN_MTL_ID | BMM_CHAN_NODE_ID | BMM_CHAN_NODE_RENDER_ID);
    for (int pixel = 0; pixel < 3; ++pixel) {
        Fragment front = WithObject(static_cast<UWORD>(1000 + pixel));
        front.mtlID = static_cast<UBYTE>(1 + pixel);
        front.nodeID = static_cast<UWORD>(500 + pixel);
        const Fragment fragments[] = {front, WithObject(9)};
        buffer.AddPixel(fragments);
    }
    buffer.AddPixel({});
    ULONG type = 0;
    const auto* materials = static_cast<UBYTE*>(buffer.GetChannel(BMM_CHAN_MTL_ID, type));
    ASSERT_TRUE(materials);
    EXPECT_EQ(type, BMM_CHAN_MTL_ID);
    EXPECT_THAT(std::vector(materials, materials + 4), ElementsAre(1, 2, 3, 0));
    const auto* objects = static_cast<UWORD*>(buffer.GetChannel(BMM_CHAN_NODE_ID, type));
    EXPECT_THAT(std::vector(objects, objects + 4), ElementsAre(500, 501, 502, 0));
    const auto* nodes = static_cast<UWORD*>(buffer.GetChannel(BMM_CHAN_NODE_RENDER_ID, type));
    EXPECT_EQ(type, BMM_CHAN_NODE_RENDER_ID);
    EXPECT_THAT(std::vector(nodes, nodes + 4), ElementsAre(1000, 1001, 1002, 65535));
    EXPECT_EQ(buffer.GetChannel(BMM_CHAN_MTL_ID, type), materials) << "made once";
}

TEST(FragmentBuffer, OnlyKeptIdsHaveAPlane) {
    FragmentBuffer buffer(1, 1, BMM_CHAN_Z | BMM_CHAN_COVERAGE | BMM_CHAN_MTL_ID);
    buffer.AddPixel({});
    ULONG type = 0;
    EXPECT_TRUE(buffer.GetChannel(BMM_CHAN_MTL_ID, type));
    EXPECT_EQ(buffer.GetChannel(BMM_CHAN_NODE_ID, type), nullptr);
    EXPECT_EQ(buffer.GetChannel(BMM_CHAN_Z, type), nullptr);
    EXPECT_EQ(buffer.GetChannel(BMM_CHAN_COVERAGE, type), nullptr);
    EXPECT_EQ(buffer.GetChannel(BMM_CHAN_Z | BMM_CHAN_MTL_ID, type), nullptr);
}

}  // namespace
