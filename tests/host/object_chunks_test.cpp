#include "host/object_chunks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

IOResult WriteBytes(ISave& writer, const Bytes& bytes, ULONG* written = nullptr) {
    return writer.Write(bytes.data(), static_cast<ULONG>(bytes.size()), written);
}

TEST(ChunkWriter, KeepsChunksAsTheyLieInEachOther) {
    host::ChunkWriter writer;
    writer.BeginChunk(1);
    ULONG written = 0;
    EXPECT_EQ(WriteBytes(writer, {10, 11}, &written), IO_OK);
    EXPECT_EQ(written, 2U);
    writer.BeginChunk(2);
    EXPECT_EQ(WriteBytes(writer, {20}), IO_OK);
    writer.EndChunk();
    EXPECT_EQ(WriteBytes(writer, {12}), IO_OK);
    writer.EndChunk();
    writer.BeginChunk(3);
    writer.EndChunk();
    EXPECT_TRUE(writer.IsBalanced());
    const std::vector<host::SavedChunk> chunks = writer.Take();
    ASSERT_EQ(chunks.size(), 2U);
    EXPECT_EQ(chunks[0].id, 1);
    EXPECT_THAT(chunks[0].bytes, ElementsAre(10, 11, 12));
    ASSERT_EQ(chunks[0].chunks.size(), 1U);
    EXPECT_EQ(chunks[0].chunks[0].id, 2);
    EXPECT_THAT(chunks[0].chunks[0].bytes, ElementsAre(20));
    EXPECT_EQ(chunks[1].id, 3);
    EXPECT_THAT(chunks[1].bytes, IsEmpty());
    EXPECT_THAT(chunks[1].chunks, IsEmpty());
}

TEST(ChunkWriter, WritesOnlyInsideAChunk) {
    host::ChunkWriter writer;
    ULONG written = 9;
    EXPECT_EQ(WriteBytes(writer, {1}, &written), IO_ERROR);
    EXPECT_EQ(written, 0U);
    writer.BeginChunk(1);
    writer.EndChunk();
    EXPECT_EQ(WriteBytes(writer, {1}), IO_ERROR);
    EXPECT_THAT(writer.Take()[0].bytes, IsEmpty());
}

TEST(ChunkWriter, TakesNoBytes) {
    host::ChunkWriter writer;
    writer.BeginChunk(1);
    EXPECT_EQ(writer.Write(nullptr, 0, nullptr), IO_OK);
    EXPECT_EQ(writer.Write(nullptr, 1, nullptr), IO_ERROR);
}

TEST(ChunkWriter, IsOutOfBalanceWithAChunkThatIsOpen) {
    host::ChunkWriter writer;
    EXPECT_TRUE(writer.IsBalanced());
    writer.BeginChunk(1);
    EXPECT_FALSE(writer.IsBalanced());
}

TEST(ChunkWriter, IsOutOfBalanceForGoodWithAnEndTooMany) {
    host::ChunkWriter writer;
    writer.EndChunk();
    EXPECT_FALSE(writer.IsBalanced());
    writer.BeginChunk(1);
    writer.EndChunk();
    EXPECT_FALSE(writer.IsBalanced());
}

TEST(ChunkWriter, GoesSixtyFourChunksDeepAndNoDeeper) {
    host::ChunkWriter writer;
    for (int depth = 0; depth < 64; ++depth)
        writer.BeginChunk(1);
    EXPECT_EQ(WriteBytes(writer, {1}), IO_OK);
    for (int depth = 0; depth < 64; ++depth)
        writer.EndChunk();
    EXPECT_TRUE(writer.IsBalanced());

    host::ChunkWriter deeper;
    for (int depth = 0; depth < 65; ++depth)
        deeper.BeginChunk(1);
    EXPECT_EQ(WriteBytes(deeper, {1}), IO_ERROR);
    for (int depth = 0; depth < 65; ++depth)
        deeper.EndChunk();
    EXPECT_FALSE(deeper.IsBalanced());
}

class ChunkReaderTest : public testing::Test {
  protected:
    // Reads into a buffer of 8 bytes that are 255 before.
    IOResult Read(ULONG bytes) {
        into.assign(8, 255);
        return reader.Read(into.data(), bytes, &count);
    }

    std::vector<host::SavedChunk> chunks{
        {1, {10, 11, 12}, {{2, {20}, {}}, {3, {30, 31}, {}}}},
        {4, {}, {}},
    };
    std::vector<host::PendingCallback> callbacks;
    host::ChunkReader reader{chunks, callbacks};
    Bytes into;
    ULONG count = 0;
};

TEST_F(ChunkReaderTest, GivesChunksInOrder) {
    ASSERT_EQ(reader.OpenChunk(), IO_OK);
    EXPECT_EQ(reader.CurChunkID(), 1);
    EXPECT_EQ(reader.CurChunkLength(), 3U) << "without those in it";
    EXPECT_EQ(Read(2), IO_OK);
    EXPECT_EQ(count, 2U);
    EXPECT_THAT(into, ElementsAre(10, 11, 255, 255, 255, 255, 255, 255));
    ASSERT_EQ(reader.OpenChunk(), IO_OK);
    EXPECT_EQ(reader.CurChunkID(), 2);
    EXPECT_EQ(Read(1), IO_OK);
    EXPECT_EQ(into[0], 20);
    EXPECT_EQ(reader.CloseChunk(), IO_OK);
    EXPECT_EQ(reader.CurChunkID(), 1);
    EXPECT_EQ(Read(1), IO_OK) << "goes on where it was";
    EXPECT_EQ(into[0], 12);
    ASSERT_EQ(reader.OpenChunk(), IO_OK);
    EXPECT_EQ(reader.CurChunkID(), 3);
    EXPECT_EQ(reader.OpenChunk(), IO_END) << "nothing lies in it";
    EXPECT_EQ(reader.CurChunkID(), 3);
    EXPECT_EQ(reader.CloseChunk(), IO_OK);
    EXPECT_EQ(reader.OpenChunk(), IO_END);
    EXPECT_EQ(reader.CloseChunk(), IO_OK);
    ASSERT_EQ(reader.OpenChunk(), IO_OK);
    EXPECT_EQ(reader.CurChunkID(), 4);
    EXPECT_EQ(reader.CurChunkLength(), 0U);
    EXPECT_EQ(reader.CloseChunk(), IO_OK);
    EXPECT_EQ(reader.OpenChunk(), IO_END);
    EXPECT_EQ(reader.OpenChunk(), IO_END);
}

TEST_F(ChunkReaderTest, GivesWhatIsLeftAndAnErrorForMore) {
    reader.OpenChunk();
    EXPECT_EQ(Read(2), IO_OK);
    EXPECT_EQ(Read(2), IO_ERROR);
    EXPECT_EQ(count, 1U);
    EXPECT_THAT(into, ElementsAre(12, 255, 255, 255, 255, 255, 255, 255));
    EXPECT_EQ(Read(1), IO_ERROR);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(Read(0), IO_OK);
}

TEST_F(ChunkReaderTest, SkipsWhatWasNotRead) {
    reader.OpenChunk();
    Read(1);
    reader.CloseChunk();
    ASSERT_EQ(reader.OpenChunk(), IO_OK);
    EXPECT_EQ(reader.CurChunkID(), 4);
}

TEST_F(ChunkReaderTest, HasNothingOutsideChunks) {
    EXPECT_EQ(reader.CurChunkID(), 0);
    EXPECT_EQ(reader.CurChunkLength(), 0U);
    EXPECT_EQ(Read(1), IO_ERROR);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(Read(0), IO_ERROR);
    EXPECT_EQ(reader.CloseChunk(), IO_ERROR);
    EXPECT_EQ(reader.OpenChunk(), IO_OK) << "a close too many does no harm";
    EXPECT_EQ(reader.CurChunkID(), 1);
}

TEST_F(ChunkReaderTest, KeepsCallbacksInOrderWithTheReaderThatTheyCameFrom) {
    class Callback : public PostLoadCallback {
      public:
        void proc(ILoad*) override {}
    };
    Callback first;
    Callback second;
    host::ChunkReader other(chunks, callbacks);
    reader.RegisterPostLoadCallback(&first);
    other.RegisterPostLoadCallback(&second);
    reader.RegisterPostLoadCallback(nullptr);
    ASSERT_EQ(callbacks.size(), 2U);
    EXPECT_EQ(callbacks[0].callback, &first);
    EXPECT_EQ(callbacks[0].from, &reader);
    EXPECT_EQ(callbacks[1].callback, &second);
    EXPECT_EQ(callbacks[1].from, &other);
}

}  // namespace
