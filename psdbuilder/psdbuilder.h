// Builds a layered document as a tree of names, settings and pixel sources, and writes it as often
// as needed. No pixel is touched before the write.
#pragma once

#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>
#include <cstdint>
#include <deque>
#include <ostream>

#include "psdbuilder/document.h"         // IWYU pragma: export
#include "psdbuilder/layer_container.h"  // IWYU pragma: export
#include "psdbuilder/layers.h"           // IWYU pragma: export
#include "psdfile/channel_source.h"
#include "psdfile/layer_blocks.h"
#include "psdfile/part.h"

namespace psdbuilder {

// Owns the document and knows which layer set is current. Layers are added from the top of the
// stack down. Names of layers and sets are paths ("A/B/C", see layer_path.h) that start at the
// document with a leading "/" and at the current set otherwise; sets on the way are made when they
// don't exist. The 8-bit name must not be null, the Unicode name may be; both are paths of their
// own and should have the same number of tokens. Sources and masks may be empty.
class PSDBuilder {
  public:
    // As the constructor of psdfile::PSDFile.
    PSDBuilder(std::uint16_t width, std::uint16_t height, std::uint8_t depth, double resolution,
               double pixelAspectRatio, std::uint16_t compression, std::uint16_t version,
               bool noRleForMerged16);

    // blendKey: see psdfile/blend_keys.h. flags: 0 visible, 2 hidden.
    void AddRGBLayer(const char* name, const char16_t* unicodeName, std::uint32_t blendKey,
                     std::uint8_t flags, psdfile::PSDChannelImageDataSourcePtr red,
                     psdfile::PSDChannelImageDataSourcePtr green,
                     psdfile::PSDChannelImageDataSourcePtr blue,
                     psdfile::PSDChannelImageDataSourcePtr alpha,
                     psdfile::PSDChannelImageDataSourcePtr mask, bool maskEnabled, bool clipping);

    // adjustment must not be empty.
    void AddAdjustmentLayer(
        const char* name, const char16_t* unicodeName, std::uint32_t blendKey, std::uint8_t flags,
        boost::shared_ptr<psdfile::PSDLayerRecordExtraDataResourceBlock> adjustment,
        psdfile::PSDChannelImageDataSourcePtr mask, bool maskEnabled, bool clipping);

    // Makes the set current. If it exists it stays as it is and the other arguments are ignored.
    void BeginLayerSet(const char* name, const char16_t* unicodeName, std::uint32_t blendKey,
                       std::uint8_t flags, bool open, psdfile::PSDChannelImageDataSourcePtr mask,
                       bool maskEnabled);

    // Back to what was current before the matching BeginLayerSet, which there must be.
    void EndLayerSet();

    // Follows the path from set to set. In each container the first child with the wanted Unicode
    // name counts, and failing that, if it isn't a set, the first with the 8-bit name. Where
    // neither is a set, the result is empty, or with `create` a closed pass-through set is
    // appended. A null path gives an empty result. A Unicode path that is null or has fewer tokens
    // leaves its names empty.
    boost::shared_ptr<PSDBuilderLayerContainer> FindLayerSet(const char* path,
                                                             const char16_t* unicodePath,
                                                             bool create);

    // A spare channel of the document. The names are no paths.
    void AddChannel(const char* name, const char16_t* unicodeName,
                    psdfile::PSDChannelImageDataSourcePtr source);

    void AddImageResource(boost::shared_ptr<psdfile::PSDPart> block);

    // Replaces what an earlier call set.
    void SetMergedImage(bool hasRealMergedData, psdfile::PSDChannelImageDataSourcePtr red,
                        psdfile::PSDChannelImageDataSourcePtr green,
                        psdfile::PSDChannelImageDataSourcePtr blue,
                        psdfile::PSDChannelImageDataSourcePtr alpha);

    // Writes the document as psdfile::PSDFile does; the tree is left as it was. For the large
    // format set both the document's version to 2 and PSBMode(stream) to 1.
    void Write(std::ostream& stream);

    boost::shared_ptr<PSDBuilderDoc> doc;
    boost::weak_ptr<PSDBuilderLayerContainer> current;            // where relative paths start
    std::deque<boost::weak_ptr<PSDBuilderLayerContainer>> stack;  // what EndLayerSet goes back to
};

std::ostream& operator<<(std::ostream& stream, PSDBuilder& builder);

}  // namespace psdbuilder
