#include "effect/write_progress.h"

#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;
using testing::Pair;

class WriteProgress : public EffectTest {
  protected:
    WriteProgress() {
        Host().log.SetDebugSink(
            [this](const MSTR& text) { printed.push_back(host::ToUtf8(text)); });
    }

    std::vector<std::string> printed;
};

TEST_F(WriteProgress, IsStoredToldAndPrinted) {
    RecordingCallback callback;
    effect::PSDOutputWriteProgressCallback progress(&callback);
    progress.ImageProgress(0, 4);
    progress.LayerProgress(0, 5);
    progress.LayerProgress(3, 5);
    progress.ImageProgress(2, 4);
    EXPECT_THAT(callback.progress, ElementsAre(Pair(0, 4), Pair(0, 9), Pair(3, 9), Pair(5, 9)));
    EXPECT_EQ(effect::psdChannelsDone, 5);
    EXPECT_THAT(printed, ElementsAre("PSDChannelsDone = 0 PSDChannelsToDo = 4\n",
                                     "PSDChannelsDone = 0 PSDChannelsToDo = 9\n",
                                     "PSDChannelsDone = 3 PSDChannelsToDo = 9\n",
                                     "PSDChannelsDone = 5 PSDChannelsToDo = 9\n"));
}

TEST_F(WriteProgress, IsStoredAndPrintedWithNobodyToTell) {
    effect::PSDOutputWriteProgressCallback progress(nullptr);
    progress.LayerProgress(7, 8);
    EXPECT_EQ(effect::psdChannelsDone, 7);
    EXPECT_THAT(printed, ElementsAre("PSDChannelsDone = 7 PSDChannelsToDo = 8\n"));
}

}  // namespace
