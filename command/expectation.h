// What saving a render file with --all comes to, before any pixel is read.
#pragma once

#include <cstddef>
#include <cstdint>

#include "command/passes.h"
#include "command/render_file.h"

namespace command {

struct Expectation {
    std::size_t elements = 0;
    // Names of the manifests; those without coverage make no layer.
    std::size_t objects = 0;
    std::size_t materials = 0;
    bool depthImage = false;
    // Bytes of decoded passes and fragments that are in memory at a time. Fragments are counted as
    // one and a half a pixel.
    std::uint64_t memory = 0;
    // Channels of the document's size, those of the merged image among them: times the bytes of a
    // sample, this is the most that the document can have.
    std::uint64_t channels = 0;
    std::uint64_t pixels = 0;

    // Bytes of a document of 8, 16 or 32 bits without compression.
    std::uint64_t DocumentBytes(int bits) const {
        return channels * pixels * static_cast<std::uint64_t>(bits / 8);
    }
};

Expectation Expect(const Description& file, const PassPlan& plan);

}  // namespace command
