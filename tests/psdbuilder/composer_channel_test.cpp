#include "psdbuilder/composer_channel.h"

#include <gmock/gmock.h>

#include "tests/psdbuilder/listed_source.h"

namespace {

using psdbuilder::ComposerChannelImageSource;
using testing::ElementsAre;

template <class Sample>
std::vector<Sample> Copy(const Sample* row, std::size_t width) {
    return {row, row + width};
}

TEST(ComposerChannel, PassesTheSourceAtFullValueWhereTheMaskIsNot0) {
    ComposerChannelImageSource gated(Listed8({10, 20, 30, 40}), Listed8({0, 1, 128, 255}), 4);
    EXPECT_THAT(Copy(gated.GetRow8(0), 4), ElementsAre(0, 20, 30, 40));
}

TEST(ComposerChannel, GatesEveryDepthByThe8BitMask) {
    auto source = boost::make_shared<ListedSource>();
    source->row16 = {1000, 2000, 3000};
    source->row32 = {-1.5F, 2.5F, 70.0F};
    auto mask = Listed8({1, 0, 255});
    mask->row16 = {0, 65535, 0};
    mask->row32 = {0.0F, 1.0F, 0.0F};
    ComposerChannelImageSource gated(source, mask, 3);
    EXPECT_THAT(Copy(gated.GetRow16(0), 3), ElementsAre(1000, 0, 3000));
    EXPECT_THAT(Copy(gated.GetRow32(0), 3), ElementsAre(-1.5F, 0.0F, 70.0F));
}

TEST(ComposerChannel, AnEmptyMaskGivesZerosAndAsksNothingOfTheSource) {
    auto source = boost::make_shared<ListedSource>();
    ComposerChannelImageSource gated(source, Listed8({0, 0}), 2);
    EXPECT_THAT(Copy(gated.GetRow8(0), 2), ElementsAre(0, 0));
    EXPECT_THAT(Copy(gated.GetRow16(0), 2), ElementsAre(0, 0));
    EXPECT_THAT(Copy(gated.GetRow32(0), 2), ElementsAre(0.0F, 0.0F));
    EXPECT_EQ(source->asked, 0);
}

TEST(ComposerChannel, AsksTheSourceOnceARow) {
    auto source = Listed8({1, 2, 3});
    ComposerChannelImageSource gated(source, Listed8({9, 9, 9}), 3);
    gated.GetRow8(0);
    EXPECT_EQ(source->asked, 1);
}

TEST(ComposerChannel, AsksSourceAndMaskForTheSameRow) {
    auto source = Listed8({1});
    source->row16 = {1};
    source->row32 = {1.0F};
    auto mask = Listed8({9});
    ComposerChannelImageSource gated(source, mask, 1);
    const auto expectRow = [&](std::uint32_t row) {
        EXPECT_EQ(source->lastRow, row);
        EXPECT_EQ(mask->lastRow, row);
    };
    gated.GetRow8(5);
    expectRow(5);
    gated.GetRow16(6);
    expectRow(6);
    gated.GetRow32(7);
    expectRow(7);
    mask->row8.clear();
    gated.GetRow8(8);
    expectRow(8);
}

TEST(ComposerChannel, WithoutARowOfTheMaskTheSourcesOwnRowPasses) {
    auto source = Listed8({7});
    source->row16 = {700};
    source->row32 = {0.7F};
    for (const psdfile::PSDChannelImageDataSourcePtr& mask :
         {psdfile::PSDChannelImageDataSourcePtr(),
          psdfile::PSDChannelImageDataSourcePtr(boost::make_shared<ListedSource>())}) {
        ComposerChannelImageSource gated(source, mask, 1);
        EXPECT_EQ(gated.GetRow8(0), source->row8.data());
        EXPECT_EQ(gated.GetRow16(0), source->row16.data());
        EXPECT_EQ(gated.GetRow32(0), source->row32.data());
    }
}

TEST(ComposerChannel, GivesNoRowWhereTheSourceHasNone) {
    ComposerChannelImageSource gated(Listed8({7}), Listed8({1}), 1);
    EXPECT_EQ(gated.GetRow16(0), nullptr);
    EXPECT_EQ(gated.GetRow32(0), nullptr);
    EXPECT_NE(gated.GetRow8(0), nullptr);
    ComposerChannelImageSource empty(nullptr, Listed8({1}), 1);
    EXPECT_EQ(empty.GetRow8(0), nullptr);
    ComposerChannelImageSource emptier(nullptr, nullptr, 1);
    EXPECT_EQ(emptier.GetRow8(0), nullptr);
}

TEST(ComposerChannel, ARowBehindAnEmptyOneDoesntKeepWhatWasThere) {
    auto mask = Listed8({255, 255});
    ComposerChannelImageSource gated(Listed8({8, 9}), mask, 2);
    EXPECT_THAT(Copy(gated.GetRow8(0), 2), ElementsAre(8, 9));
    mask->row8 = {0, 255};
    EXPECT_THAT(Copy(gated.GetRow8(1), 2), ElementsAre(0, 9));
    mask->row8 = {0, 0};
    EXPECT_THAT(Copy(gated.GetRow8(2), 2), ElementsAre(0, 0));
}

TEST(ComposerChannel, IsNotSolid) {
    ComposerChannelImageSource gated(Listed8({8}), Listed8({8}), 1);
    EXPECT_FALSE(gated.IsSolid());
    EXPECT_EQ(gated.GetSolidValue8(), 0);
    EXPECT_EQ(gated.GetSolidValue16(), 0);
}

}  // namespace
