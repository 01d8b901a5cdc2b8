// What a source says that only overrides the 8-bit rows.

#include "psdfile/channel_source.h"

#include <gtest/gtest.h>

#include "tests/documents/test_sources.h"

namespace psdfile {
namespace {

TEST(ChannelSource, WithOnly8BitRowsHasNoDeeperOnesAndIsNotSolid) {
    Rows8 rows({{1, 2}});
    PSDChannelImageDataSource& source = rows;
    EXPECT_EQ(source.GetRow8(0)[1], 2);
    EXPECT_EQ(source.GetRow16(0), nullptr);
    EXPECT_EQ(source.GetRow32(0), nullptr);
    EXPECT_FALSE(source.IsSolid());
    EXPECT_EQ(source.GetSolidValue8(), 0);
    EXPECT_EQ(source.GetSolidValue16(), 0);
}

}  // namespace
}  // namespace psdfile
