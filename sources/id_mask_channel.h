// The pixels of an object, of a material or of a set of objects, cut out of the G-Buffer: their
// coverage as a matte, or their colour.
#pragma once

#include <bitmap.h>
#include <box2.h>
#include "psdfile/channel_source.h"

#include "sources/fragment_weight.h"
#include "sources/row_buffer.h"

namespace sources {

// Sums the fragments of each pixel that the subclass says belong to it. The bitmap isn't owned and
// must live, with its G-Buffer, until the document has been written; so must the tables of
// sources/id_bounds.h. A row costs what the columns of the ID's box cost, and outside it a clear.
class SpecificGBufferIDToPSDChannel : public psdfile::PSDChannelImageDataSource {
  public:
    // `component` 0 to 2 is red, green or blue, 3 the matte. With `premultiplied` false colours are
    // divided by the coverage.
    SpecificGBufferIDToPSDChannel(Bitmap* bitmap, int component, bool premultiplied);

    // Capped at 255; 0 throughout where the G-Buffer has neither coverage nor weights.
    const std::uint8_t* GetRow8(std::uint32_t row) override { return ComputeRow(row); }
    // Null unless the G-Buffer has colours of high dynamic range. Colours aren't capped.
    const float* GetRow32(std::uint32_t row) override;

    // Finds Bounds() anew; row 0 does so as well.
    virtual void ComputeBounds();
    // Whether the fragment at which `reader` stands belongs to the ID.
    virtual bool FragmentMatches(GBufReader* reader) = 0;
    virtual const std::uint8_t* ComputeRow(std::uint32_t row);

    // Where fragments may be; empty for an ID that has none. The whole image before ComputeBounds.
    const Box2& Bounds() const { return bounds; }

  protected:
    Box2 bounds;

  private:
    template <class Pixel>
    void ForEachPixel(std::uint32_t row, GBuffer* gbuffer, Pixel pixel);

    RowBuffer<std::uint8_t> row8;
    RowBuffer<float> rowFloat;
    Bitmap* bitmap;
    int width;
    int component;
    bool premultiplied;
};

}  // namespace sources
