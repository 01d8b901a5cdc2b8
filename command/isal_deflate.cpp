#include "command/isal_deflate.h"

#ifdef VELTRANE_ISAL

#include <isa-l/igzip_lib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace command {
namespace {

// The fastest on 16-bit pixels of renders.
constexpr std::uint32_t isalLevel = 2;
constexpr std::size_t levelBufferSize = ISAL_DEF_LVL2_LARGE;
// Rows come a few kilobytes at a time; ISA-L is at its best when it gets many of them at once.
constexpr std::size_t blockSize = std::size_t{128} * 1024;

// Everything of one stream. zlib's field for it is a pointer to a type that only zlib knows.
struct IsalState {
    alignas(64) isal_zstream isal;
    alignas(64) std::array<std::uint8_t, levelBufferSize> levelBuffer;
    std::array<std::uint8_t, blockSize> block;
    // Bytes of `block` that wait for ISA-L.
    std::size_t held;
    std::array<std::uint8_t, 2> header;
    std::size_t headerWritten;
    // ISA-L has a block that it hasn't finished with.
    bool draining;
};

IsalState* StateOf(z_streamp stream) {
    return stream ? static_cast<IsalState*>(static_cast<void*>(stream->state)) : nullptr;
}

// A state is large, and a document begins one for every channel: the last one is kept for the next.
std::unique_ptr<IsalState>& SpareState() {
    thread_local std::unique_ptr<IsalState> spare;
    return spare;
}

std::array<std::uint8_t, 2> ZlibHeader(int windowBits) {
    constexpr unsigned methodDeflate = 8;
    constexpr unsigned checkModulus = 31;
    const unsigned first = (static_cast<unsigned>(windowBits - 8) << 4) | methodDeflate;
    // Compression level "fastest", no dictionary, and the bits that make the two bytes a multiple.
    const unsigned remainder = (first * 256) % checkModulus;
    const unsigned second = remainder == 0 ? 0 : checkModulus - remainder;
    return {static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(second)};
}

void WriteHeader(IsalState& state, z_streamp stream) {
    while (state.headerWritten < state.header.size() && stream->avail_out > 0) {
        *stream->next_out++ = state.header[state.headerWritten++];
        --stream->avail_out;
        ++stream->total_out;
    }
}

void TakeInput(IsalState& state, z_streamp stream) {
    const std::size_t count = std::min<std::size_t>(blockSize - state.held, stream->avail_in);
    if (count == 0) return;
    std::memcpy(state.block.data() + state.held, stream->next_in, count);
    state.held += count;
    stream->next_in += count;
    stream->avail_in -= static_cast<uInt>(count);
    stream->total_in += count;
}

// Compresses what the block holds, as far as there is room. False when ISA-L fails.
bool Compress(IsalState& state, z_streamp stream, bool last) {
    isal_zstream& isal = state.isal;
    if (!state.draining) {
        isal.next_in = state.block.data();
        isal.avail_in = static_cast<std::uint32_t>(state.held);
        state.draining = true;
    }
    isal.end_of_stream = last ? 1 : 0;
    isal.next_out = stream->next_out;
    isal.avail_out = stream->avail_out;
    const bool good = isal_deflate(&isal) == COMP_OK;
    stream->total_out += stream->avail_out - isal.avail_out;
    stream->next_out = isal.next_out;
    stream->avail_out = isal.avail_out;
    // With room left, ISA-L has taken the whole block; what it still holds it keeps in itself.
    if (isal.avail_in == 0 && (isal.avail_out > 0 || isal.internal_state.state == ZSTATE_END)) {
        state.held = 0;
        state.draining = false;
    }
    return good;
}

bool IsFinished(const IsalState& state) {
    return state.isal.internal_state.state == ZSTATE_END;
}

}  // namespace

int IsalDeflateInit2(z_streamp stream, int level, int method, int windowBits, int memLevel,
                     int strategy, const char* version, int streamSize) {
    if (!version || version[0] != ZLIB_VERSION[0] || streamSize != int{sizeof(z_stream)}) {
        return Z_VERSION_ERROR;
    }
    const bool sound = stream && level >= Z_DEFAULT_COMPRESSION && level <= Z_BEST_COMPRESSION &&
                       method == Z_DEFLATED && windowBits >= 9 && windowBits <= MAX_WBITS &&
                       memLevel >= 1 && memLevel <= MAX_MEM_LEVEL &&
                       strategy >= Z_DEFAULT_STRATEGY && strategy <= Z_FIXED;
    if (!sound) return Z_STREAM_ERROR;
    std::unique_ptr<IsalState> state = std::move(SpareState());
    if (!state) state.reset(new (std::nothrow) IsalState);
    if (!state) return Z_MEM_ERROR;

    isal_deflate_init(&state->isal);
    state->isal.level = isalLevel;
    state->isal.level_buf = state->levelBuffer.data();
    state->isal.level_buf_size = static_cast<std::uint32_t>(state->levelBuffer.size());
    state->isal.gzip_flag = IGZIP_ZLIB_NO_HDR;
    state->isal.hist_bits = static_cast<std::uint16_t>(windowBits);
    state->held = 0;
    state->header = ZlibHeader(windowBits);
    state->headerWritten = 0;
    state->draining = false;

    stream->total_in = 0;
    stream->total_out = 0;
    stream->msg = nullptr;
    stream->data_type = Z_BINARY;
    stream->state = static_cast<internal_state*>(static_cast<void*>(state.release()));
    return Z_OK;
}

int IsalDeflate(z_streamp stream, int flush) {
    IsalState* state = StateOf(stream);
    if (!state || (flush != Z_NO_FLUSH && flush != Z_FINISH) || !stream->next_out ||
        (stream->avail_in > 0 && !stream->next_in)) {
        return Z_STREAM_ERROR;
    }
    if (stream->avail_out == 0) return Z_BUF_ERROR;
    if (IsFinished(*state)) {
        if (flush != Z_FINISH) return Z_STREAM_ERROR;
        return stream->avail_in == 0 ? Z_STREAM_END : Z_BUF_ERROR;
    }
    const uInt inputBefore = stream->avail_in;
    const uInt outputBefore = stream->avail_out;
    WriteHeader(*state, stream);
    while (stream->avail_out > 0 && !IsFinished(*state)) {
        if (!state->draining) TakeInput(*state, stream);
        const bool last = flush == Z_FINISH && stream->avail_in == 0;
        if (!state->draining && state->held < blockSize && !last) break;
        if (!Compress(*state, stream, last)) return Z_STREAM_ERROR;
    }
    if (IsFinished(*state)) return Z_STREAM_END;
    const bool idle = stream->avail_in == inputBefore && stream->avail_out == outputBefore;
    return idle && flush == Z_NO_FLUSH ? Z_BUF_ERROR : Z_OK;
}

int IsalDeflateEnd(z_streamp stream) {
    std::unique_ptr<IsalState> state(StateOf(stream));
    if (!state) return Z_STREAM_ERROR;
    stream->state = nullptr;
    // As zlib: a stream that is given up with something in it is told apart.
    const bool cutShort = !IsFinished(*state) && (state->held > 0 || stream->total_out > 0);
    SpareState() = std::move(state);
    return cutShort ? Z_DATA_ERROR : Z_OK;
}

}  // namespace command

#endif
