// A stack of sources seen as one picture, row by row: for a layer of the document that is several
// pictures.
#pragma once

#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <vector>

#include "psdfile/channel_source.h"

namespace psdbuilder {

// Colours aren't premultiplied. An empty source counts as no data.
class CompositorLayer {
  public:
    psdfile::PSDChannelImageDataSourcePtr red;
    psdfile::PSDChannelImageDataSourcePtr green;
    psdfile::PSDChannelImageDataSourcePtr blue;
    psdfile::PSDChannelImageDataSourcePtr alpha;
    psdfile::PSDChannelImageDataSourcePtr mask;  // kept, and no part of the blending
};

class Compositor {
  public:
    // From the bottom of the stack to the top.
    std::vector<boost::shared_ptr<CompositorLayer>> layers;
};

// Appends a layer of these sources: above those that are there.
void AddCompositorLayer(std::vector<boost::shared_ptr<CompositorLayer>>& layers,
                        psdfile::PSDChannelImageDataSourcePtr red,
                        psdfile::PSDChannelImageDataSourcePtr green,
                        psdfile::PSDChannelImageDataSourcePtr blue,
                        psdfile::PSDChannelImageDataSourcePtr alpha,
                        psdfile::PSDChannelImageDataSourcePtr mask);

// One channel of the flattened stack. A colour is the mean of what lies there, each weighted by its
// own alpha: what is below isn't covered by what is above, and two opaque layers add up. Where
// nothing covers, integer samples are 0 and floats not a number; floats aren't clamped. A stack
// without layers is 0.
class CompositorToPSDChannel : public psdfile::PSDChannelImageDataSource {
  public:
    // `channel` is 0 red, 1 green, 2 blue, 3 or 4 alpha; any other is red. `width` in samples, and
    // that of every source.
    CompositorToPSDChannel(boost::shared_ptr<Compositor> compositor, int channel, int width);

    const std::uint8_t* GetRow8(std::uint32_t row) override;
    const std::uint16_t* GetRow16(std::uint32_t row) override;
    const float* GetRow32(std::uint32_t row) override;

  private:
    // A row that is delivered, and beside a colour the alpha gathered so far. Empty until the first
    // row of that depth.
    template <class Sample>
    struct Rows {
        std::vector<Sample> composed;
        std::vector<Sample> alpha;
    };

    template <class Sample>
    const Sample* ComposeRow(Rows<Sample>& rows, std::uint32_t row) const;

    Rows<std::uint8_t> rows8;
    Rows<std::uint16_t> rows16;
    Rows<float> rowsFloat;
    std::size_t width;
    int channel = 0;
    boost::shared_ptr<Compositor> compositor;
};

}  // namespace psdbuilder
