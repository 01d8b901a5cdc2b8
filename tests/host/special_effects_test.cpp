// What every effect keeps in a file.
#include <gtest/gtest.h>

#include "host/object_chunks.h"
#include "tests/host/sample_effect.h"

namespace {

class SpecialEffects : public testing::Test {
  protected:
    std::vector<host::SavedChunk> Save() {
        host::ChunkWriter writer;
        EXPECT_EQ(effect.Save(&writer), IO_OK);
        EXPECT_TRUE(writer.IsBalanced());
        return writer.Take();
    }
    bool IsActiveAfterLoading(const std::vector<host::SavedChunk>& chunks) {
        SampleEffect loaded(journal, "b");
        std::vector<host::PendingCallback> callbacks;
        host::ChunkReader reader(chunks, callbacks);
        EXPECT_EQ(loaded.Load(&reader), IO_OK);
        return loaded.Active(0) != FALSE;
    }

    Journal journal;
    SampleEffect effect{journal, "a"};
};

TEST_F(SpecialEffects, OneThatIsOnSavesNothing) {
    EXPECT_TRUE(Save().empty());
    EXPECT_TRUE(IsActiveAfterLoading({}));
}

TEST_F(SpecialEffects, OneThatTheUserSwitchedOffComesBackOff) {
    effect.SetAFlag(A_ATMOS_DISABLED);
    const std::vector<host::SavedChunk> saved = Save();
    ASSERT_EQ(saved.size(), 1U);
    EXPECT_EQ(saved[0].id, 0x0100);
    EXPECT_TRUE(saved[0].bytes.empty());
    EXPECT_FALSE(IsActiveAfterLoading(saved));
}

TEST_F(SpecialEffects, ChunksOfOthersAreSkipped) {
    EXPECT_TRUE(IsActiveAfterLoading({{1, {1, 2}, {{0x0100, {}, {}}}}}));
    EXPECT_FALSE(IsActiveAfterLoading({{1, {1, 2}, {}}, {0x0100, {}, {}}}));
}

}  // namespace
