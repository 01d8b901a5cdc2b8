// The nodes of the layer tree: picture layers, adjustment layers, layer sets.
#pragma once

#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>
#include <cstdint>
#include <string>

#include "psdbuilder/layer_container.h"
#include "psdfile/blend_keys.h"
#include "psdfile/channel_source.h"
#include "psdfile/file.h"
#include "psdfile/layer_blocks.h"

namespace psdbuilder {

class PSDBuilderLayerGeneric {
  public:
    PSDBuilderLayerGeneric() = default;
    PSDBuilderLayerGeneric(const PSDBuilderLayerGeneric&) = delete;
    PSDBuilderLayerGeneric& operator=(const PSDBuilderLayerGeneric&) = delete;
    virtual ~PSDBuilderLayerGeneric() = default;

    virtual void AddToFile(psdfile::PSDFile& file);

    boost::weak_ptr<PSDBuilderLayerContainer> parent;
    // The last token of the path, doubled slashes as given.
    std::string name;  // in the code page of the system
    std::u16string unicodeName;
    std::uint32_t blendKey = psdfile::blendKeyNormal;
    std::uint8_t flags = 0;                      // 0 visible, 2 hidden
    psdfile::PSDChannelImageDataSourcePtr mask;  // may be empty
    bool maskEnabled = true;
    bool clipping = false;  // clipped to the layer below
};

class PSDBuilderRGBLayer : public PSDBuilderLayerGeneric {
  public:
    // A layer without red, green or blue doesn't come into the file.
    void AddToFile(psdfile::PSDFile& file) override;

    psdfile::PSDChannelImageDataSourcePtr red;
    psdfile::PSDChannelImageDataSourcePtr green;
    psdfile::PSDChannelImageDataSourcePtr blue;
    psdfile::PSDChannelImageDataSourcePtr alpha;  // may be empty
};

class PSDBuilderAdjustmentLayer : public PSDBuilderLayerGeneric {
  public:
    void AddToFile(psdfile::PSDFile& file) override;

    boost::shared_ptr<psdfile::PSDLayerRecordExtraDataResourceBlock> adjustment;  // never empty
};

class PSDBuilderLayerSet : public PSDBuilderLayerGeneric, public PSDBuilderLayerContainer {
  public:
    // The clipping of a set doesn't come into the file.
    void AddToFile(psdfile::PSDFile& file) override;

    bool open = false;  // shown expanded
};

}  // namespace psdbuilder
