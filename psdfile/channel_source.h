// Where the pixels of a channel come from: rows made on demand while the file is written, so that
// no image is ever held as a whole.
#pragma once

#include <boost/shared_ptr.hpp>
#include <cstdint>

namespace psdfile {

// One channel of pixels. Rows are numbered from 0 at the top and hold exactly the channel's width
// of samples. The writer asks for each row once, in order, and is done with a row before it asks
// for the next, so that one reused row buffer in the source is enough; the source owns the row.
// A source may be asked for all its rows a second time and must then give the same ones.
class PSDChannelImageDataSource {
  public:
    PSDChannelImageDataSource() = default;
    PSDChannelImageDataSource(const PSDChannelImageDataSource&) = default;
    PSDChannelImageDataSource& operator=(const PSDChannelImageDataSource&) = default;

    // 0 to 255. Never null.
    virtual const std::uint8_t* GetRow8(std::uint32_t row) = 0;

    // 0 to 65535 in machine byte order; null if the source has no 16-bit data.
    virtual const std::uint16_t* GetRow16(std::uint32_t row);

    // Machine byte order; null if the source has no float data.
    virtual const float* GetRow32(std::uint32_t row);

    // True if the whole channel has one value; the two below are then that value.
    virtual bool IsSolid();
    virtual std::uint8_t GetSolidValue8();
    virtual std::uint16_t GetSolidValue16();

    virtual ~PSDChannelImageDataSource() = default;
};

using PSDChannelImageDataSourcePtr = boost::shared_ptr<PSDChannelImageDataSource>;

}  // namespace psdfile
