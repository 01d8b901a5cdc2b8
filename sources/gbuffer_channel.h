// A channel of the G-Buffer as one channel of a picture: IDs as false colours, normals as colours,
// depth as grey, and the colour plane of high dynamic range in floats.
#pragma once

#include <bitmap.h>
#include "psdfile/channel_source.h"

#include "sources/row_buffer.h"

namespace sources {

// The bitmap isn't owned and must live, with its G-Buffer, until the document has been written. A
// bitmap without storage has width 0; one without G-Buffer has black rows. No gamma is applied.
class GBufferToPSDChannel : public psdfile::PSDChannelImageDataSource {
  public:
    // `channel` is one of BMM_CHAN_Z, MTL_ID, NODE_ID, NORMAL, REALPIX and NODE_RENDER_ID.
    // `component` 0 to 2 is that of the false colour, the vector or the colour plane; 3 is the
    // colour plane's coverage. `premultiplied` is the colour plane's only: false has it divided by
    // its coverage.
    GBufferToPSDChannel(Bitmap* bitmap, DWORD channel, int component, bool premultiplied);

    // Black for the colour plane, which only has float rows.
    const std::uint8_t* GetRow8(std::uint32_t row) override;
    // Depth only; null for any other channel.
    const std::uint16_t* GetRow16(std::uint32_t row) override;
    // The colour plane only; null for any other channel. Values above 1 are kept. Without weights
    // and coverage in the G-Buffer the plane is black.
    const float* GetRow32(std::uint32_t row) override;

  protected:
    Bitmap* bitmap;
    int width;
    // Of `width` samples, once made.
    RowBuffer<std::uint8_t> row8;
    RowBuffer<std::uint16_t> row16;

  private:
    RowBuffer<float> rowFloat;
    int component;
    DWORD channel;
    bool premultiplied;
};

}  // namespace sources
