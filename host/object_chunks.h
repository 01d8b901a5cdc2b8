// The chunks that one object writes and reads, as plain values.
#pragma once

#include <cstddef>
#include <vector>

#include <ioapi.h>

#include "host/saved_objects.h"

namespace host {

class ChunkWriter final : public ISave {
  public:
    void BeginChunk(USHORT id) override;
    void EndChunk() override;
    IOResult Write(const void* data, ULONG bytes, ULONG* written) override;

    // Whether every chunk that was begun was ended, and no other, and none lies deeper than
    // maxChunkDepth.
    bool IsBalanced() const { return balanced_ && open_.empty(); }
    std::vector<SavedChunk> Take() { return std::move(chunks_); }

  private:
    std::vector<SavedChunk> chunks_;
    // From the outermost on. A chunk stays where it is while it is open: its neighbours come after
    // it is ended.
    std::vector<SavedChunk*> open_;
    bool balanced_ = true;
};

struct PendingCallback {
    PostLoadCallback* callback = nullptr;
    ILoad* from = nullptr;
};

class ChunkReader final : public ILoad {
  public:
    // Both must outlive the reader. Callbacks go to the end of `callbacks`.
    ChunkReader(const std::vector<SavedChunk>& chunks, std::vector<PendingCallback>& callbacks);

    IOResult OpenChunk() override;
    // 0 outside a chunk, as is its length.
    USHORT CurChunkID() override;
    ULONG CurChunkLength() override;
    // IO_ERROR outside a chunk. What wasn't read is skipped.
    IOResult CloseChunk() override;
    IOResult Read(void* data, ULONG bytes, ULONG* read) override;
    // Nothing happens for null.
    void RegisterPostLoadCallback(PostLoadCallback* callback) override;

  private:
    struct Level {
        // Null for the outermost.
        const SavedChunk* chunk = nullptr;
        const std::vector<SavedChunk>* chunks = nullptr;
        std::size_t nextChunk = 0;
        std::size_t nextByte = 0;
    };
    std::vector<Level> levels_;
    std::vector<PendingCallback>& callbacks_;
};

}  // namespace host
