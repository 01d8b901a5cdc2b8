// How the two counts of channels become one.

#include "psdfile/progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace psdfile {
namespace {

class Recorder : public PSDWriteTotalProgressCallback {
  public:
    void TotalProgress(int done, int total) override { calls.emplace_back(done, total); }
    std::vector<std::pair<int, int>> calls;
};

TEST(TotalProgress, IsTheSumOfWhatBothCountsSaidLast) {
    Recorder recorder;
    recorder.ImageProgress(0, 3);
    recorder.LayerProgress(0, 8);
    recorder.LayerProgress(5, 8);
    recorder.ImageProgress(2, 3);
    EXPECT_THAT(recorder.calls, testing::ElementsAre(std::pair(0, 3), std::pair(0, 11),
                                                     std::pair(5, 11), std::pair(7, 11)));
    EXPECT_EQ(recorder.layerDone, 5);
    EXPECT_EQ(recorder.layerTotal, 8);
    EXPECT_EQ(recorder.imageDone, 2);
    EXPECT_EQ(recorder.imageTotal, 3);
}

}  // namespace
}  // namespace psdfile
