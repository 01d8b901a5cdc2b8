// Packs rows at a speed that keeps up with memory where runs or literals are long: equal
// neighbours are found 64 at a time as a bit mask, and only its edges are walked.

#include "psdfile/pack_bits.h"

#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace psdfile {

namespace {

constexpr std::size_t longestRun = 128;
constexpr std::size_t longestLiteral = 128;
constexpr std::size_t maskBits = 64;

// Few bytes are copied as this many, which is one move each way. The output has room for them as
// long as as many bytes of the source are left.
constexpr std::size_t copyStep = 16;

// Turns runs and stretches of single bytes into output, of which it knows the block that is still
// open. After k bytes at most 2 * k are out. Every function takes the end of the output and returns
// the new one, which so stays in a register: as a field, each byte written could have changed it.
class Packer {
  public:
    // `length` bytes that begin and end with a byte unlike its neighbours and hold no runs but
    // pairs with such a byte on either side. The source must be readable up to sourceEnd.
    std::uint8_t* Literals(std::uint8_t* out, const std::uint8_t* source, std::size_t length,
                           const std::uint8_t* sourceEnd) {
        if (length > 0 && state == State::openAndPair) FoldPair(out);
        while (length > 0) {
            if (state == State::closed) {
                block = out++;
                held = 0;
                state = State::open;
            }
            const std::size_t room = longestLiteral - held;
            const bool fits = length <= room;
            // A pair that only half fits stays out of the block, and behind a full block there is
            // nothing to fold into.
            const std::size_t taken =
                fits ? length : room - std::size_t{source[room - 1] == source[room]};
            if (taken <= copyStep && static_cast<std::size_t>(sourceEnd - source) >= copyStep) {
                std::memcpy(out, source, copyStep);
            } else {
                std::memcpy(out, source, taken);
            }
            out += taken;
            source += taken;
            length -= taken;
            held += taken;
            *block = static_cast<std::uint8_t>(held - 1);
            if (!fits || taken == room) state = State::closed;
            if (length > 1 && source[0] == source[1]) {
                out = Repeat(out, source[0], 2);
                source += 2;
                length -= 2;
            }
        }
        return out;
    }

    // `length` of at least 2 equal bytes.
    std::uint8_t* Run(std::uint8_t* out, std::uint8_t value, std::size_t length) {
        if (length > longestRun) {
            for (; length > longestRun; length -= longestRun) {
                out = Repeat(out, value, longestRun);
            }
            state = State::closed;
            if (length == 1) return Literals(out, &value, 1, &value + 1);
        }
        const bool foldable = state == State::open && length == 2 && held <= longestLiteral - 2;
        state = foldable ? State::openAndPair : State::closed;
        return Repeat(out, value, length);
    }

    // A stretch of literals, which may be empty, and the run behind it. No pair between two single
    // bytes may come as a run.
    std::uint8_t* LiteralsAndRun(std::uint8_t* out, const std::uint8_t* source,
                                 std::size_t literals, std::size_t run,
                                 const std::uint8_t* sourceEnd) {
        const bool isShort = literals <= copyStep && run <= longestRun &&
                             static_cast<std::size_t>(sourceEnd - source) >= copyStep;
        if (state == State::closed && isShort) {
            // Without branches: in noise nobody can foretell whether there are literals.
            out[0] = static_cast<std::uint8_t>(literals - 1);
            std::memcpy(out + 1, source, copyStep);
            out += literals + std::size_t{literals > 0};
            return Repeat(out, source[literals], run);
        }
        out = Literals(out, source, literals, sourceEnd);
        return Run(out, source[literals], run);
    }

  private:
    enum class State {
        closed,
        open,         // a literal block that takes more bytes
        openAndPair,  // behind it the repeat code of two bytes that may still be folded into it
    };

    static std::uint8_t* Repeat(std::uint8_t* out, std::uint8_t value, std::size_t length) {
        out[0] = static_cast<std::uint8_t>(1 - length);
        out[1] = value;
        return out + 2;
    }

    // Two bytes either way, but as literals they don't cut the stretch in two.
    void FoldPair(std::uint8_t* out) {
        out[-2] = out[-1];
        held += 2;
        *block = static_cast<std::uint8_t>(held - 1);
        state = held == longestLiteral ? State::closed : State::open;
    }

    std::uint8_t* block = nullptr;  // control byte of the last literal block
    std::size_t held = 0;           // bytes in that block
    State state = State::closed;
};

// Of the bytes from `base` on: bit i is set if byte i equals the one behind it. What lies behind
// the row counts as a run.
std::uint64_t EqualNeighbours(const std::uint8_t* row, std::size_t rowSize, std::size_t base) {
    if (base >= rowSize) return ~std::uint64_t{0};
    const std::uint8_t* bytes = row + base;
    const std::size_t size = rowSize - base;
    std::uint64_t mask = size < maskBits ? ~std::uint64_t{0} << size : 0;
    std::size_t i = 0;
#if defined(__SSE2__)
    constexpr std::size_t step = 16;
    for (; i < maskBits && i + step < size; i += step) {
        const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i));
        const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i + 1));
        const int equal = _mm_movemask_epi8(_mm_cmpeq_epi8(here, next));
        mask |= std::uint64_t{static_cast<std::uint32_t>(equal)} << i;
    }
#endif
    for (; i < maskBits && i + 1 < size; ++i) {
        mask |= std::uint64_t{bytes[i] == bytes[i + 1]} << i;
    }
    return mask;
}

// Of the bits of `mask`, those of pairs between two single bytes. `before` and `after` are the
// masks on either side.
std::uint64_t LonePairs(std::uint64_t before, std::uint64_t mask, std::uint64_t after) {
    const std::uint64_t equalBefore = mask << 1 | before >> 63 | mask << 2 | before >> 62;
    const std::uint64_t equalBehind = mask >> 1 | after << 63 | mask >> 2 | after << 62;
    return mask & ~equalBefore & ~equalBehind;
}

std::uint8_t* PackRow(const std::uint8_t* row, std::size_t size, std::uint8_t* out) {
    Packer packer;
    const std::uint8_t* const rowEnd = row + size;
    std::size_t literalStart = 0;
    std::size_t runStart = 0;
    std::uint64_t inRun = 0;
    // No single byte stands before the first.
    std::uint64_t before = std::uint64_t{1} << 62;
    std::uint64_t mask = EqualNeighbours(row, size, 0);
    for (std::size_t base = 0; base < size; base += maskBits) {
        const std::uint64_t after = EqualNeighbours(row, size, base + maskBits);
        // In noise, lone pairs are most of the runs, and nearly all of them end up as literals.
        const std::uint64_t runs = mask & ~LonePairs(before, mask, after);
        const std::uint64_t shifted = runs << 1 | inRun;
        std::uint64_t starts = runs & ~shifted;
        std::uint64_t ends = ~runs & shifted;
        const auto nextStart = [&] {
            runStart = base + static_cast<std::size_t>(std::countr_zero(starts));
            starts &= starts - 1;
        };
        if (inRun == 0) nextStart();
        for (; ends != 0; ends &= ends - 1) {
            const std::size_t end = base + static_cast<std::size_t>(std::countr_zero(ends)) + 1;
            out = packer.LiteralsAndRun(out, row + literalStart, runStart - literalStart,
                                        end - runStart, rowEnd);
            literalStart = end;
            nextStart();
        }
        inRun = runs >> 63;
        before = mask;
        mask = after;
    }
    return packer.Literals(out, row + literalStart, size - literalStart, rowEnd);
}

std::uint8_t* PackStrided(const std::uint8_t* source, std::ptrdiff_t stride, std::ptrdiff_t count,
                          std::uint8_t* out) {
    Packer packer;
    for (std::ptrdiff_t i = 0; i < count;) {
        const std::uint8_t* value = source + i * stride;
        std::ptrdiff_t next = i + 1;
        while (next < count && source[next * stride] == *value) {
            ++next;
        }
        const auto length = static_cast<std::size_t>(next - i);
        out = length == 1 ? packer.Literals(out, value, 1, value + 1)
                          : packer.Run(out, *value, length);
        i = next;
    }
    return out;
}

}  // namespace

std::size_t PackBits(const std::uint8_t* source, std::ptrdiff_t stride, std::ptrdiff_t count,
                     std::uint8_t* destination) {
    if (count < 1) return 0;
    const std::uint8_t* end = stride == 1
                                  ? PackRow(source, static_cast<std::size_t>(count), destination)
                                  : PackStrided(source, stride, count, destination);
    return static_cast<std::size_t>(end - destination);
}

}  // namespace psdfile
