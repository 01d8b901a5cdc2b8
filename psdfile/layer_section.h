// Section 4 of the file: all layers with their pixels, and the global mask information.
#pragma once

#include "psdfile/part.h"
#include "psdfile/part_list.h"
#include "psdfile/progress.h"

namespace psdfile {

class PSDLayersInfo : public PSDPart {
  public:
    PSDLayersInfo();

    // Takes the clipping off the bottom layer, which has nothing to clip to.
    void WriteBody(std::ostream& stream) override;

    PSDPartList records;   // PSDLayerRecord, bottom layer first
    PSDPartList channels;  // PSDChannelImageData, in the order of the records' channel infos
    // The first alpha channel of the merged image is its transparency.
    bool hasMergedTransparency = false;
    PSDWriteProgressCallback* progress = nullptr;  // not owned

  private:
    void WriteChannels(std::ostream& stream);
};

class PSDGlobalLayerMaskInfo : public PSDPart {
  public:
    PSDGlobalLayerMaskInfo();

    void WriteBody(std::ostream& stream) override;
};

class PSDLayerAndMaskInformation : public PSDPart {
  public:
    PSDLayerAndMaskInformation();

    // At 16 and 32 bits the layers stand in a tagged block behind two empty lengths. The depth is
    // that of the first channel in the list.
    void WriteBody(std::ostream& stream) override;

    PSDLayersInfo layersInfo;
    PSDGlobalLayerMaskInfo globalMask;
};

}  // namespace psdfile
