// The thumbnail, down to the bytes.

#include "psdfile/thumbnail.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include "tests/documents/test_sources.h"
#include "tests/documents/written_bytes.h"

namespace psdfile {
namespace {

boost::shared_ptr<Rows8> Rows(std::vector<std::vector<std::uint8_t>> rows) {
    return boost::make_shared<Rows8>(std::move(rows));
}

TEST(Thumbnail, InterleavesItsChannelsAndPadsItsRowsToFourBytes) {
    EXPECT_EQ(WrittenHex(PSDIRB_Thumbnail(3, 2, Rows({{1, 2, 3}, {4, 5, 6}}),
                                          Rows({{11, 12, 13}, {14, 15, 16}}),
                                          Rows({{21, 22, 23}, {24, 25, 26}}))),
              "38 42 49 4D 04 0C 00 00 00 00 00 34 "
              "00 00 00 00 00 00 00 03 00 00 00 02 00 00 00 0C 00 00 00 18 00 00 00 18 00 18 00 01 "
              "01 0B 15 02 0C 16 03 0D 17 00 00 00 04 0E 18 05 0F 19 06 10 1A 00 00 00");
}

TEST(Thumbnail, OfFourPixelsARowNeedsNoPadding) {
    const auto rows = Rows({{1, 2, 3, 4}});
    EXPECT_EQ(WrittenHex(PSDThumbnailData(4, 1, rows, rows, rows)),
              "01 01 01 02 02 02 03 03 03 04 04 04");
}

}  // namespace
}  // namespace psdfile
