// The merged channels and their common table of row lengths.

#include "psdfile/image_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <tuple>
#include <vector>

#include "psdfile/channel_image_data.h"
#include "tests/documents/test_sources.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

class ImageCalls : public PSDWriteProgressCallback {
  public:
    void LayerProgress(int /*done*/, int /*total*/) override { FAIL() << "no layer here"; }
    void ImageProgress(int done, int total) override { calls.emplace_back(done, total); }
    std::vector<std::pair<int, int>> calls;
};

void AddChannel(PSDImageData& image, std::vector<std::vector<std::uint8_t>> rows) {
    image.width = static_cast<std::uint32_t>(rows.at(0).size());
    image.height = static_cast<std::uint32_t>(rows.size());
    image.channels.Add<PSDChannelImageData>(image.width, image.height, std::uint8_t{8},
                                            image.compression.value,
                                            boost::make_shared<Rows8>(std::move(rows)), false);
}

TEST(ImageData, OfNoChannelsIsItsCompressionFieldAlone) {
    PSDImageData image;
    EXPECT_EQ(WrittenHex(image), "00 00");
    image.compression.value = compressionRLE;
    image.height = 3;
    EXPECT_EQ(WrittenHex(image), "00 01");
}

TEST(ImageData, HasOneCompressionFieldForAllRawChannels) {
    PSDImageData image;
    AddChannel(image, {{1, 2}, {3, 4}});
    AddChannel(image, {{5, 6}, {7, 8}});
    EXPECT_EQ(WrittenHex(image), "00 00 01 02 03 04 05 06 07 08");
}

TEST(ImageData, HasTheRowLengthsOfAllChannelsBeforeTheFirst) {
    PSDImageData image;
    image.compression.value = compressionRLE;
    AddChannel(image, {{1, 1}, {3, 4}});
    AddChannel(image, {{5, 6}, {7, 7}});
    EXPECT_EQ(WrittenHex(image), "00 01 00 02 00 03 00 03 00 02 FF 01 01 03 04 01 05 06 FF 07");
}

TEST(ImageData, HasFourByteRowLengthsInPSBMode) {
    PSDImageData image;
    image.compression.value = compressionRLE;
    AddChannel(image, {{1, 1}, {3, 4}});
    EXPECT_EQ(WrittenHex(image, true), "00 01 00 00 00 02 00 00 00 03 FF 01 01 03 04");
}

TEST(ImageData, IsTheSameWhenWrittenAgain) {
    PSDImageData image;
    image.compression.value = compressionRLE;
    AddChannel(image, {{1, 1}, {3, 4}});
    const std::string first = WrittenHex(image);
    EXPECT_EQ(WrittenHex(image), first);
    EXPECT_TRUE(image.channels.ItemAs<PSDChannelImageData>(0).ownLengthTable);
    EXPECT_EQ(image.channels.ItemAs<PSDChannelImageData>(0).lengthTable, nullptr);
}

TEST(ImageData, TellsItsProgressBeforeEachChannelAndAtTheEnd) {
    for (const std::uint16_t compression : {compressionRaw, compressionRLE}) {
        ImageCalls progress;
        PSDImageData image;
        image.compression.value = compression;
        image.progress = &progress;
        AddChannel(image, {{1}});
        AddChannel(image, {{2}});
        WrittenHex(image);
        EXPECT_THAT(progress.calls,
                    testing::ElementsAre(std::pair(0, 2), std::pair(1, 2), std::pair(2, 2)));
    }
}

}  // namespace
}  // namespace psdfile
