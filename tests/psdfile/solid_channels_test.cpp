// Channels of one value are deflated once a document, and hold the same bytes as if each were.

#include "psdfile/solid_channels.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <string>

#include "psdfile/channel_image_data.h"
#include "psdfile/deflate_functions.h"
#include "tests/documents/test_sources.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

int streamsBegun = 0;

int CountStreams(z_streamp stream, int level, int method, int windowBits, int memLevel,
                 int strategy, const char* version, int streamSize) {
    ++streamsBegun;
    return ZlibDeflateFunctions().deflateInit2_(stream, level, method, windowBits, memLevel,
                                                strategy, version, streamSize);
}

class SolidChannelsOfADocument : public testing::Test {
  protected:
    SolidChannelsOfADocument() {
        streamsBegun = 0;
        DeflateFunctions counting = ZlibDeflateFunctions();
        counting.deflateInit2_ = CountStreams;
        before = SetDeflateFunctions(counting);
    }
    ~SolidChannelsOfADocument() override { SetDeflateFunctions(before); }

    std::string Write(std::uint32_t width, std::uint32_t height, std::uint8_t depth,
                      const PSDChannelImageDataSourcePtr& source, bool shared = true) {
        PSDChannelImageData channel(width, height, depth, compressionZIP, source, true);
        if (shared) channel.solids = solids;
        return WrittenHex(channel);
    }

    boost::shared_ptr<SolidChannels> solids = boost::make_shared<SolidChannels>();

  private:
    DeflateFunctions before{};
};

PSDChannelImageDataSourcePtr Solid(std::uint8_t value) {
    return boost::make_shared<OneValue>(300, value, true);
}

TEST_F(SolidChannelsOfADocument, AreDeflatedOnceAndHoldTheBytesOfAChannelByItself) {
    for (const std::uint8_t depth : {std::uint8_t{16}, std::uint8_t{32}}) {
        const auto source = Solid(77);
        const std::string alone = Write(300, 40, depth, source, false);
        const int begun = streamsBegun;
        EXPECT_EQ(Write(300, 40, depth, source), alone);
        EXPECT_EQ(Write(300, 40, depth, Solid(77)), alone);
        EXPECT_EQ(streamsBegun, begun + 1) << "depth " << int{depth};
    }
}

TEST_F(SolidChannelsOfADocument, AreKeptApartByValueAndSize) {
    const auto dark = Solid(1);
    const auto light = Solid(2);
    const std::string first = Write(300, 40, 16, dark);
    EXPECT_NE(Write(300, 40, 16, light), first);
    EXPECT_NE(Write(300, 41, 16, dark), first);
    EXPECT_NE(Write(299, 40, 16, dark), first);
    EXPECT_EQ(Write(300, 40, 16, dark), first);
    EXPECT_EQ(streamsBegun, 4);
}

TEST_F(SolidChannelsOfADocument, ThatBrokeOffAreNotKept) {
    DeflateFunctions broken = CurrentDeflateFunctions();
    broken.deflate = [](z_streamp, int) { return Z_STREAM_ERROR; };
    const auto source = Solid(7);
    const DeflateFunctions sound = SetDeflateFunctions(broken);
    Write(30, 4, 16, source);
    SetDeflateFunctions(sound);
    EXPECT_EQ(Write(30, 4, 16, source), Write(30, 4, 16, source, false));
}

TEST_F(SolidChannelsOfADocument, LeaveChannelsAloneThatAreNotSolid) {
    const auto rows =
        boost::make_shared<Rows8>(std::vector<std::vector<std::uint8_t>>{{1, 2}, {3, 4}});
    EXPECT_EQ(Write(2, 2, 16, rows), Write(2, 2, 16, rows, false));
    EXPECT_EQ(streamsBegun, 2);
    Write(2, 2, 16, rows);
    EXPECT_EQ(streamsBegun, 3);
}

}  // namespace
}  // namespace psdfile
