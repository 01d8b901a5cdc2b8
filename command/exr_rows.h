// Rows of the channels of one flat part of an OpenEXR file.
#pragma once

#include <OpenEXR/ImfForward.h>
#include <OpenEXR/ImfInputPart.h>
#include <OpenEXR/ImfPixelType.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "command/render_file.h"

namespace command {

// Scanlines or tiles of full size. A block of rows is decoded at a time: about a megabyte, and with
// tiles a row of them beside it in the library.
class ExrRows {
  public:
    // `names` are different channels of the part, without subsampling. Throws what the library does
    // when one isn't there.
    ExrRows(Imf::MultiPartInputFile& file, std::size_t part, const Window& frame,
            std::span<const std::string> names);

    // Goes to row `y` of the frame. Rows that follow one another are read once. Throws what the
    // library does.
    void Load(int y);
    // Row `y` of the channel with the place `i` in `names`, until the next Load.
    ChannelRow Row(std::size_t i) const;

  private:
    struct Plane {
        std::string name;
        Imf::PixelType type = Imf::HALF;
        std::size_t sampleBytes = 0;
        // Rows of `stride` samples. The library writes only those of the data window.
        std::vector<std::byte> samples;
    };

    void ReadBlock(int firstRow);
    // In coordinates of the file.
    bool Covers(int row) const;

    Imf::InputPart input;
    Window frame;
    Window data;
    // Data window and frame together, which is what a row in memory covers.
    int left = 0;
    std::size_t stride = 0;
    int rowsAtOnce = 1;
    std::vector<Plane> planes;
    // A row where the data window is not.
    std::vector<std::byte> nothing;
    int current = 0;
    // The rows in memory; none at first.
    int firstLoaded = 0;
    int lastLoaded = -1;
    bool loaded = false;
};

}  // namespace command
