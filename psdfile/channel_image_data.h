// One channel of pixels on its way into the file: row by row from its source, converted to the
// document's depth, compressed, written. Never more than two rows are held.
#pragma once

#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <ios>

#include "psdfile/channel_source.h"
#include "psdfile/part.h"
#include "psdfile/primitives.h"
#include "psdfile/solid_channels.h"

namespace psdfile {

// What a compression field holds.
inline constexpr std::uint16_t compressionRaw = 0;
inline constexpr std::uint16_t compressionRLE = 1;
inline constexpr std::uint16_t compressionZIP = 2;
inline constexpr std::uint16_t compressionZIPWithPrediction = 3;

// Without a source, the compression field (if asked for) is all that is written. A zlib that
// fails to start or breaks off ends the channel's output silently.
class PSDChannelImageData : public PSDPart {
  public:
    // depth: 8, 16 or 32 bits. lengthTable: null, or room for height RLE row lengths that the
    // caller writes (2 bytes each, 4 in PSB mode) and that must outlive the write.
    PSDChannelImageData(std::uint32_t width, std::uint32_t height, std::uint8_t depth,
                        std::uint16_t compression, PSDChannelImageDataSourcePtr source,
                        bool writeCompression, std::uint8_t* lengthTable = nullptr);

    // At depths 16 and 32 the depth alone decides on prediction, which only floats get. At depth 8
    // ZIP writes no pixels.
    void WriteBody(std::ostream& stream) override;

    PSDChannelImageDataSourcePtr source;  // may be empty
    std::uint32_t width;
    std::uint32_t height;
    std::uint8_t depth;
    PSint16 compression;
    bool writeCompression;  // true in layers; in the merged image one field stands for all
    bool ownLengthTable;
    std::streampos lengthPosition;  // of the length in the layer record, set when that is written
    std::uint8_t* lengthTable;      // not owned
    boost::shared_ptr<SolidChannels> solids;  // what the document's channels share; may be empty

  private:
    void WriteRaw(std::ostream& stream);
    void WriteRLE(std::ostream& stream);
    void WriteRLERows(std::ostream& stream, std::uint8_t* table, std::size_t entrySize);
    void WriteZIP(std::ostream& stream);
    void WriteSolidZIP(std::ostream& stream);
    bool DeflateRows(std::ostream& stream);

    void FetchRow16(std::uint32_t row, std::uint8_t* bigEndian);
    const float* FetchRow32(std::uint32_t row, float* converted);
};

}  // namespace psdfile
