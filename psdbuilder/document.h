// The root of the document tree, with what belongs to the document as a whole.
#pragma once

#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "psdbuilder/layer_container.h"
#include "psdfile/channel_source.h"
#include "psdfile/part.h"
#include "psdfile/progress.h"

namespace psdbuilder {

// A spare channel of the document, beside the layers.
struct PSDBuilderChannel {
    std::string name;  // in the code page of the system
    std::u16string unicodeName;
    psdfile::PSDChannelImageDataSourcePtr source;
};

class PSDBuilderChannelContainer {
  public:
    std::vector<PSDBuilderChannel> channels;  // in order of addition
};

class PSDBuilderDoc : public PSDBuilderLayerContainer, public PSDBuilderChannelContainer {
  public:
    std::uint16_t width = 0;      // pixels
    std::uint16_t height = 0;     // pixels
    std::uint8_t depth = 8;       // 8, 16 or 32 bits a channel
    double resolution = 72;       // pixels per inch
    double pixelAspectRatio = 1;  // width over height
    std::uint16_t compression = 0;
    std::uint16_t version = 1;  // 1 PSD, 2 PSB; may be changed between two writes
    bool noRleForMerged16 = false;
    bool hasRealMergedData = false;
    psdfile::PSDChannelImageDataSourcePtr mergedRed;
    psdfile::PSDChannelImageDataSourcePtr mergedGreen;
    psdfile::PSDChannelImageDataSourcePtr mergedBlue;
    psdfile::PSDChannelImageDataSourcePtr mergedAlpha;
    std::vector<boost::shared_ptr<psdfile::PSDPart>> imageResources;
    psdfile::PSDWriteTotalProgressCallback* progress = nullptr;  // not owned
};

}  // namespace psdbuilder
