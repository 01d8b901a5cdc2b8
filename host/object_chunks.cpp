#include "host/object_chunks.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace host {

void ChunkWriter::BeginChunk(USHORT id) {
    if (open_.size() == maxChunkDepth) balanced_ = false;
    if (!balanced_) return;
    std::vector<SavedChunk>& level = open_.empty() ? chunks_ : open_.back()->chunks;
    level.push_back({id, {}, {}});
    open_.push_back(&level.back());
}

void ChunkWriter::EndChunk() {
    if (open_.empty()) {
        balanced_ = false;
    } else if (balanced_) {
        open_.pop_back();
    }
}

IOResult ChunkWriter::Write(const void* data, ULONG bytes, ULONG* written) {
    const bool fails = open_.empty() || !balanced_ || (!data && bytes != 0);
    if (written) *written = fails ? 0 : bytes;
    if (fails) return IO_ERROR;
    const auto* first = static_cast<const std::uint8_t*>(data);
    std::vector<std::uint8_t>& chunk = open_.back()->bytes;
    if (bytes != 0) chunk.insert(chunk.end(), first, first + bytes);
    return IO_OK;
}

ChunkReader::ChunkReader(const std::vector<SavedChunk>& chunks,
                         std::vector<PendingCallback>& callbacks)
    : levels_{{nullptr, &chunks}}, callbacks_(callbacks) {}

IOResult ChunkReader::OpenChunk() {
    Level& level = levels_.back();
    if (level.nextChunk == level.chunks->size()) return IO_END;
    const SavedChunk& chunk = (*level.chunks)[level.nextChunk++];
    levels_.push_back({&chunk, &chunk.chunks});
    return IO_OK;
}

USHORT ChunkReader::CurChunkID() {
    const SavedChunk* chunk = levels_.back().chunk;
    return chunk ? chunk->id : USHORT{0};
}

ULONG ChunkReader::CurChunkLength() {
    const SavedChunk* chunk = levels_.back().chunk;
    return chunk ? static_cast<ULONG>(chunk->bytes.size()) : 0;
}

IOResult ChunkReader::CloseChunk() {
    if (!levels_.back().chunk) return IO_ERROR;
    levels_.pop_back();
    return IO_OK;
}

IOResult ChunkReader::Read(void* data, ULONG bytes, ULONG* read) {
    Level& level = levels_.back();
    const std::size_t left = level.chunk ? level.chunk->bytes.size() - level.nextByte : 0;
    const std::size_t count = data ? std::min<std::size_t>(bytes, left) : 0;
    if (count != 0) std::memcpy(data, level.chunk->bytes.data() + level.nextByte, count);
    level.nextByte += count;
    if (read) *read = static_cast<ULONG>(count);
    return level.chunk && count == bytes ? IO_OK : IO_ERROR;
}

void ChunkReader::RegisterPostLoadCallback(PostLoadCallback* callback) {
    if (callback) callbacks_.push_back({callback, this});
}

}  // namespace host
