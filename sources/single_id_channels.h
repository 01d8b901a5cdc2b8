// What belongs to one object ID or one material ID that the user gave.
#pragma once

#include "sources/id_mask_channel.h"

namespace sources {

// The objects whose ID, which the user gives an object and which is 0 for most, is `nodeID`. Never
// the background.
class SpecificNodeIDToPSDChannel : public SpecificGBufferIDToPSDChannel {
  public:
    SpecificNodeIDToPSDChannel(Bitmap* bitmap, UWORD nodeID, int component, bool premultiplied);

    void ComputeBounds() override;
    bool FragmentMatches(GBufReader* reader) override;

  private:
    UWORD nodeID;
};

// What has a material with effect ID `mtlID`. Never the background.
class SpecificMtlIDToPSDChannel : public SpecificGBufferIDToPSDChannel {
  public:
    SpecificMtlIDToPSDChannel(Bitmap* bitmap, UWORD mtlID, int component, bool premultiplied);

    void ComputeBounds() override;
    bool FragmentMatches(GBufReader* reader) override;

  private:
    UWORD mtlID;
};

}  // namespace sources
