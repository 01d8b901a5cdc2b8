// Small images of other formats, written byte by byte, so that no library stands on both sides.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace image_samples {

struct Image {
    int width = 1;
    int height = 1;
    int channels = 3;
    // 8, 16 or, in TIFF, 32 for floats.
    int bits = 8;
    // Row by row, interleaved; as integers of `bits`, or as the bits of floats.
    std::vector<std::uint32_t> samples{};
};

// PNG of 1 to 4 channels. `gamma` is the gAMA chunk's number, 45455 for 1/2.2; 0 for none.
std::string Png(const Image& image, std::uint32_t gamma = 0);

// One of any colour type and depth. `rows` are its rows as the format packs them, each with the
// byte of its filter in front; `chunks` stand before them.
std::string PngOfRows(int width, int height, int bits, char colorType, const std::string& rows,
                      const std::string& chunks);
// With its length and sum.
std::string PngChunk(const std::string& type, const std::string& data);

// Meaning of a TIFF's fourth channel.
enum class ExtraSample { Premultiplied = 1, Straight = 2 };
// Uncompressed. `orientation` is the tag's value; 0 leaves it out.
std::string Tiff(const Image& image, ExtraSample extra = ExtraSample::Straight,
                 int orientation = 0);

// Uncompressed, 8 bits, 3 or 4 channels, rows from the top. A `gamma` above 0 goes into the
// extension area, in tenths.
std::string Tga(const Image& image, int gammaTenths = 0, int attributesType = 3);

// Flat pixels of mantissas and exponent, four samples of 8 bits each.
std::string Hdr(const Image& rgbe);

}  // namespace image_samples
