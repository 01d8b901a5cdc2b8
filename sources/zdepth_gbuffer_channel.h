// Depth as grey, near objects light, in a range that the user may choose and with an object that
// counts as opaque.
#pragma once

#include <limits>

#include "sources/gbuffer_channel.h"

namespace sources {

// Samples are in 16 bits; 8 bits come from them and floats are left to the writer. Where there is
// no fragment all is as far as can be: white.
class ZDepthGBufferToPSDChannel : public GBufferToPSDChannel {
  public:
    // A `customMin` of noMin and a `customMax` of noMax mean the G-Buffer's own. The transparency
    // of the object with `opaqueRenderID` isn't looked at; 65535 for none.
    ZDepthGBufferToPSDChannel(Bitmap* bitmap, int component, bool premultiplied, float customMin,
                              float customMax, UWORD opaqueRenderID);

    static constexpr float noMin = std::numeric_limits<float>::max();
    static constexpr float noMax = -std::numeric_limits<float>::max();

    const std::uint8_t* GetRow8(std::uint32_t row) override;
    const std::uint16_t* GetRow16(std::uint32_t row) override;
    // Null.
    const float* GetRow32(std::uint32_t) override { return nullptr; }

  private:
    float customMin;
    float customMax;
    UWORD opaqueRenderID;
};

}  // namespace sources
