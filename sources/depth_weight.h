// How much of its pixel a fragment covers in the depth image, where one object may count as opaque.
#pragma once

#include "sources/fragment_weight.h"

namespace sources {

class DepthWeight {
  public:
    // `present`: BMM_CHAN_ bits of the G-Buffer. The transparency of the object with
    // `opaqueRenderID` isn't looked at; 65535 for none.
    DepthWeight(DWORD present, UWORD opaqueRenderID)
        : channels(ChannelsOf(present)),
          opaque(opaqueRenderID),
          hasOpaque(channels == WeightChannels::weightAndTransparency && opaque != noRenderID) {}

    // Where `fragment` stands; 0 to fullWeight.
    int Of(GBufReader* fragment) const {
        UWORD renderID = noRenderID;
        const bool isOpaque = hasOpaque &&
                              fragment->ReadChannelData(GB_NODE_RENDER_ID, &renderID) &&
                              renderID == opaque;
        return ReadFullOrFragmentWeight(fragment, channels, isOpaque);
    }

  private:
    // Weights and transparencies count only beside all that identifies an object.
    static constexpr WeightChannels ChannelsOf(DWORD present) {
        constexpr DWORD identities = BMM_CHAN_NODE_RENDER_ID | BMM_CHAN_NODE_ID;
        if ((present & identities) != identities) present &= ~BMM_CHAN_WEIGHT;
        return WeightChannelsOf(present);
    }

    WeightChannels channels;
    UWORD opaque;
    bool hasOpaque;
};

}  // namespace sources
