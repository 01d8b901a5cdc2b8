// A whole document in file form: filled layer by layer from the top, then written with
// `stream << file`.
#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <ostream>

#include "psdfile/channel_source.h"
#include "psdfile/color_mode_data.h"
#include "psdfile/file_header.h"
#include "psdfile/image_data.h"
#include "psdfile/image_resources.h"
#include "psdfile/layer_blocks.h"
#include "psdfile/layer_record.h"
#include "psdfile/layer_section.h"
#include "psdfile/part.h"
#include "psdfile/progress.h"
#include "psdfile/solid_channels.h"

namespace psdfile {

// The stream must be seekable, stand at its start, be binary, and have PSBMode set before the
// write if the large format is wanted. Nothing is thrown and nothing returned: afterwards, a failed
// stream means that the file is not complete, and FileTooLarge that it passed 2 GB as a PSD.
//
// Sources are only asked for rows during the write. All have the document's size.
class PSDFile : public PSDPart {
  public:
    // Sizes in pixels; depth 8, 16 or 32 bits a channel; resolution in pixels per inch.
    // compression: of channel_image_data.h; what a depth can't use becomes raw. version 1 becomes 2
    // when a side exceeds 30000. noRleForMerged16 leaves the merged image of a 16-bit file raw.
    PSDFile(std::uint16_t width, std::uint16_t height, std::uint8_t depth, double resolution,
            double pixelAspectRatio, std::uint16_t compression, std::uint16_t version,
            bool noRleForMerged16);
    // The channel infos of its records point at its own channels.
    PSDFile(const PSDFile&) = delete;
    PSDFile& operator=(const PSDFile&) = delete;

    // May be null; must outlive the write.
    void SetProgress(PSDWriteProgressCallback* callback);

    // Layers are added from the top of the stack down. For all three operations: name must not be
    // null, wideName may be null or empty; mask may be empty; a disabled mask is kept but not
    // applied; clipping clips the layer to the one below.

    // Adds nothing if red, green or blue is empty. Without alpha the flags are replaced by 1.
    void AddLayer(const char* name, const char16_t* wideName, std::uint32_t blendKey,
                  std::uint8_t flags, const PSDChannelImageDataSourcePtr& red,
                  const PSDChannelImageDataSourcePtr& green,
                  const PSDChannelImageDataSourcePtr& blue,
                  const PSDChannelImageDataSourcePtr& alpha,
                  const PSDChannelImageDataSourcePtr& mask, bool maskEnabled, bool clipping);

    // block must not be empty.
    void AddAdjustmentLayer(const char* name, const char16_t* wideName, std::uint32_t blendKey,
                            std::uint8_t flags,
                            const boost::shared_ptr<PSDLayerRecordExtraDataResourceBlock>& block,
                            const PSDChannelImageDataSourcePtr& mask, bool maskEnabled,
                            bool clipping);

    // Layers added from here to the matching EndLayerSet stand in the set.
    void AddLayerSet(const char* name, const char16_t* wideName, std::uint32_t blendKey,
                     std::uint8_t flags, bool expanded, const PSDChannelImageDataSourcePtr& mask,
                     bool maskEnabled);
    void EndLayerSet();

    // The merged image and the version block. Does nothing if red, green or blue is empty; alpha
    // may be empty. hasRealMergedData: the picture is the true composite of the layers.
    void SetImageData(bool hasRealMergedData, const PSDChannelImageDataSourcePtr& red,
                      const PSDChannelImageDataSourcePtr& green,
                      const PSDChannelImageDataSourcePtr& blue,
                      const PSDChannelImageDataSourcePtr& alpha);

    // An extra channel behind those of the merged image. wideName may be null, and then all wide
    // names are left out of the file.
    void AddAlphaChannel(const char* name, const char16_t* wideName,
                         const PSDChannelImageDataSourcePtr& source);

    // Any part may be added; it stands among the image resource blocks, which it shares.
    void AddImageResource(boost::shared_ptr<PSDPart> block);

    // The sources must be of the thumbnail's size. Does nothing if one is empty.
    void AddThumbnail(std::uint32_t width, std::uint32_t height,
                      const PSDChannelImageDataSourcePtr& red,
                      const PSDChannelImageDataSourcePtr& green,
                      const PSDChannelImageDataSourcePtr& blue);

    void WriteBody(std::ostream& stream) override;

    PSDFileHeader header;
    PSDColorModeData colorMode;
    PSDImageResources resources;
    PSDLayerAndMaskInformation layers;
    PSDImageData image;
    std::uint16_t compression;
    PSDWriteProgressCallback* progress = nullptr;  // not owned

  private:
    PSDLayerRecord& AddRecord(const char* name, std::uint32_t blendKey, std::uint8_t flags);
    void AddChannel(PSDLayerRecord& record, std::int16_t id, std::uint32_t width,
                    std::uint32_t height, std::uint8_t depth, std::uint16_t channelCompression,
                    const PSDChannelImageDataSourcePtr& source);
    void AddFullChannel(PSDLayerRecord& record, std::int16_t id,
                        const PSDChannelImageDataSourcePtr& source);
    void AddEmptyChannels(PSDLayerRecord& record);
    void AddMask(PSDLayerRecord& record, const PSDChannelImageDataSourcePtr& mask, bool enabled);
    [[nodiscard]] std::uint16_t LayerCompression() const;

    boost::shared_ptr<SolidChannels> solids = boost::make_shared<SolidChannels>();
};

}  // namespace psdfile
