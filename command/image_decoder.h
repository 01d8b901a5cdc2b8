// The border to the library that decodes images which are not OpenEXR: OpenImageIO, or on Windows
// the system's own imaging component. On this side nothing is known of them; on theirs, nothing of
// what becomes of the pixels (image_file.h).
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "command/image_formats.h"
#include "command/render_file.h"
#include "command/transfer_curve.h"

namespace command {

// What a file says of its first picture.
struct ImageTraits {
    int width = 0;
    int height = 0;
    // Of the file's values.
    SampleType type = SampleType::Unsigned8;
    // "R", "G", "B", "A", or "Y" for grey; in the order of a pixel's values.
    std::vector<std::string> channels{};
    // Among the channels; -1 for none.
    int alpha = -1;
    // The colours are multiplied by alpha already.
    bool premultiplied = false;
    // That of TIFF and Exif, 1 to 8.
    int orientation = 1;
    // Nothing when the file says nothing.
    std::optional<TransferCurve> curve{};
    float pixelAspect = 1.0F;
    // "scanline", "tiled 64x64"; the compression may be empty.
    std::string storage = "scanline";
    std::string compression{};
    // Rows that are decoded together, and again for each call that wants one of them.
    int tileHeight = 1;
    bool hasMorePictures = false;
};

class ImageDecoder {
  public:
    ImageDecoder() = default;
    ImageDecoder(const ImageDecoder&) = delete;
    ImageDecoder& operator=(const ImageDecoder&) = delete;
    virtual ~ImageDecoder() = default;

    virtual const ImageTraits& GetTraits() const = 0;
    // Rows from `first` to before `last`, one behind the other as the file has them: bytes, or
    // integers of 16 bits in the machine's order; for all other types floats. What it throws
    // besides InputError says why the file is damaged.
    virtual void ReadRows(int first, int last, void* rows) = 0;
};

// `bytes`, which must outlive the result, may be null: the file is then read from disk. Prints
// nothing. Throws as ReadRows does.
std::unique_ptr<ImageDecoder> OpenImageDecoder(const std::string& path, const ImageFormat& format,
                                               const char* bytes, std::size_t size);

}  // namespace command
