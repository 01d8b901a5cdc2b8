#include "command/row_requests.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace command {
namespace {

TEST(RowRequests, AChannelIsReadOnceHoweverOftenItIsAskedFor) {
    RowRequests requests;
    EXPECT_EQ(requests.Add({3, 1}), 0U);
    EXPECT_EQ(requests.Add({3, 2}), 1U);
    EXPECT_EQ(requests.Add({3, 1}), 0U);
    EXPECT_EQ(requests.Add({1, 3}), 2U);
    EXPECT_THAT(requests.Channels(),
                testing::ElementsAre(ChannelRef{3, 1}, ChannelRef{3, 2}, ChannelRef{1, 3}));
}

}  // namespace
}  // namespace command
