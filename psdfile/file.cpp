// The document in file form: how layers and channels become records, and the order of sections.

#include "psdfile/file.h"

#include <boost/make_shared.hpp>
#include <utility>

#include "psdfile/channel_image_data.h"
#include "psdfile/stream_state.h"
#include "psdfile/thumbnail.h"

namespace psdfile {

namespace {

constexpr std::uint16_t largestPSDSide = 30000;

std::uint16_t MergedCompression(std::uint8_t depth, std::uint16_t compression,
                                bool noRleForMerged16) {
    switch (depth) {
        case 8:
            return compression == compressionRLE ? compressionRLE : compressionRaw;
        case 16:
            return compression == compressionRaw || noRleForMerged16 ? compressionRaw
                                                                     : compressionRLE;
        default:
            return compressionRaw;
    }
}

void AddWideName(PSDLayerRecord& record, const char16_t* wideName) {
    if (wideName == nullptr || *wideName == u'\0') return;
    record.extraData.blocks.Add(boost::make_shared<PSDUnicodeLayerName>(wideName));
}

void SetRectangle(PSDLayerRecord& record, std::uint32_t width, std::uint32_t height) {
    record.top.value = 0;
    record.left.value = 0;
    record.bottom.value = height;
    record.right.value = width;
}

}  // namespace

PSDFile::PSDFile(std::uint16_t width, std::uint16_t height, std::uint8_t depth, double resolution,
                 double pixelAspectRatio, std::uint16_t fileCompression, std::uint16_t version,
                 bool noRleForMerged16)
    : compression(fileCompression) {
    header.width = width;
    header.height = height;
    header.depth = depth;
    colorMode.depth = depth;
    image.width = width;
    image.height = height;
    const bool tooLargeForPSD = width > largestPSDSide || height > largestPSDSide;
    header.version = version == 1 && tooLargeForPSD ? std::uint16_t{2} : version;
    AddImageResource(boost::make_shared<PSDIRB_ResolutionInfo>(resolution));
    AddImageResource(boost::make_shared<PSDIRB_PixelAspectRatio>(pixelAspectRatio));
    image.compression.value = MergedCompression(depth, compression, noRleForMerged16);
}

void PSDFile::SetProgress(PSDWriteProgressCallback* callback) {
    progress = callback;
    layers.layersInfo.progress = callback;
    image.progress = callback;
}

std::uint16_t PSDFile::LayerCompression() const {
    const bool known = header.depth == 8 ? compression == compressionRLE
                                         : compression == compressionZIP ||
                                               compression == compressionZIPWithPrediction;
    return known ? compression : compressionRaw;
}

PSDLayerRecord& PSDFile::AddRecord(const char* name, std::uint32_t blendKey, std::uint8_t flags) {
    auto& record = layers.layersInfo.records.AddFront<PSDLayerRecord>();
    SetRectangle(record, 0, 0);
    record.blendKey.value = blendKey;
    record.flags.value = flags;
    record.extraData.name.text = name;
    return record;
}

void PSDFile::AddChannel(PSDLayerRecord& record, std::int16_t id, std::uint32_t width,
                         std::uint32_t height, std::uint8_t depth, std::uint16_t channelCompression,
                         const PSDChannelImageDataSourcePtr& source) {
    auto& channel = layers.layersInfo.channels.AddFront<PSDChannelImageData>(
        width, height, depth, channelCompression, source, true);
    channel.solids = solids;
    record.channelInfos.AddFront<PSDChannelInfo>(id, &channel);
}

void PSDFile::AddFullChannel(PSDLayerRecord& record, std::int16_t id,
                             const PSDChannelImageDataSourcePtr& source) {
    AddChannel(record, id, header.width, header.height, static_cast<std::uint8_t>(header.depth),
               LayerCompression(), source);
}

// They have the file's depth, since the layer section takes its own from the first channel.
void PSDFile::AddEmptyChannels(PSDLayerRecord& record) {
    for (const std::int16_t id : {channelTransparency, channelRed, channelGreen, channelBlue}) {
        AddChannel(record, id, 0, 0, static_cast<std::uint8_t>(header.depth), compressionRaw,
                   nullptr);
    }
}

void PSDFile::AddMask(PSDLayerRecord& record, const PSDChannelImageDataSourcePtr& source,
                      bool enabled) {
    if (!source) return;
    PSDLayerMaskData& mask = record.extraData.mask;
    mask.present = true;
    if (!enabled) mask.flags.value = PSDLayerMaskData::flagDisabled;
    if (source->IsSolid()) {
        mask.defaultColor.value = source->GetSolidValue8();
        AddChannel(record, channelLayerMask, 0, 0, static_cast<std::uint8_t>(header.depth),
                   compressionRaw, source);
    } else {
        mask.bottom.value = header.height;
        mask.right.value = header.width;
        AddFullChannel(record, channelLayerMask, source);
    }
}

void PSDFile::AddLayer(const char* name, const char16_t* wideName, std::uint32_t blendKey,
                       std::uint8_t flags, const PSDChannelImageDataSourcePtr& red,
                       const PSDChannelImageDataSourcePtr& green,
                       const PSDChannelImageDataSourcePtr& blue,
                       const PSDChannelImageDataSourcePtr& alpha,
                       const PSDChannelImageDataSourcePtr& mask, bool maskEnabled, bool clipping) {
    if (!red || !green || !blue) return;
    // Without alpha the layer's transparency is protected, and that is the only flag it keeps.
    constexpr std::uint8_t flagTransparencyProtected = 1;
    PSDLayerRecord& record = AddRecord(name, blendKey, alpha ? flags : flagTransparencyProtected);
    SetRectangle(record, header.width, header.height);
    record.clipping.value = clipping ? 1 : 0;
    AddWideName(record, wideName);
    AddMask(record, mask, maskEnabled);
    AddFullChannel(record, channelBlue, blue);
    AddFullChannel(record, channelGreen, green);
    AddFullChannel(record, channelRed, red);
    if (alpha) AddFullChannel(record, channelTransparency, alpha);
}

void PSDFile::AddAdjustmentLayer(
    const char* name, const char16_t* wideName, std::uint32_t blendKey, std::uint8_t flags,
    const boost::shared_ptr<PSDLayerRecordExtraDataResourceBlock>& block,
    const PSDChannelImageDataSourcePtr& mask, bool maskEnabled, bool clipping) {
    PSDLayerRecord& record = AddRecord(name, blendKey, flags);
    record.clipping.value = clipping ? 1 : 0;
    record.extraData.blocks.Add(block);
    AddWideName(record, wideName);
    AddMask(record, mask, maskEnabled);
    AddEmptyChannels(record);
}

void PSDFile::AddLayerSet(const char* name, const char16_t* wideName, std::uint32_t blendKey,
                          std::uint8_t flags, bool expanded,
                          const PSDChannelImageDataSourcePtr& mask, bool maskEnabled) {
    PSDLayerRecord& record = AddRecord(name, blendKeyNormal, flags);
    record.extraData.blocks.Add(boost::make_shared<PSDSectionDivider>(
        expanded ? sectionOpenFolder : sectionClosedFolder, blendKey));
    AddWideName(record, wideName);
    AddMask(record, mask, maskEnabled);
    AddEmptyChannels(record);
}

void PSDFile::EndLayerSet() {
    PSDLayerRecord& record = AddRecord("</Layer set>", blendKeyNormal, 0);
    record.extraData.blocks.Add(boost::make_shared<PSDSectionDivider>(sectionEnd));
    AddWideName(record, u"</Layer set>");
    AddEmptyChannels(record);
}

void PSDFile::SetImageData(bool hasRealMergedData, const PSDChannelImageDataSourcePtr& red,
                           const PSDChannelImageDataSourcePtr& green,
                           const PSDChannelImageDataSourcePtr& blue,
                           const PSDChannelImageDataSourcePtr& alpha) {
    if (!red || !green || !blue) return;
    if (alpha) {
        AddAlphaChannel("Transparency", u"Transparency", alpha);
        layers.layersInfo.hasMergedTransparency = true;
    }
    for (const PSDChannelImageDataSourcePtr& source : {blue, green, red}) {
        image.channels.AddFront<PSDChannelImageData>(image.width, image.height,
                                                     static_cast<std::uint8_t>(header.depth),
                                                     image.compression.value, source, false);
    }
    header.channels = static_cast<std::uint16_t>(image.channels.Count());
    AddImageResource(boost::make_shared<PSDIRB_VersionInfo>(1, hasRealMergedData, u"LoomfileKit",
                                                            u"LoomfileKit", 1));
}

void PSDFile::AddAlphaChannel(const char* name, const char16_t* wideName,
                              const PSDChannelImageDataSourcePtr& source) {
    resources.alphaNames.AddName(name);
    if (wideName != nullptr) resources.unicodeAlphaNames.AddName(wideName);
    image.channels.Add<PSDChannelImageData>(image.width, image.height,
                                            static_cast<std::uint8_t>(header.depth),
                                            image.compression.value, source, false);
    header.channels = static_cast<std::uint16_t>(image.channels.Count());
}

void PSDFile::AddImageResource(boost::shared_ptr<PSDPart> block) {
    resources.blocks.Add(std::move(block));
}

void PSDFile::AddThumbnail(std::uint32_t width, std::uint32_t height,
                           const PSDChannelImageDataSourcePtr& red,
                           const PSDChannelImageDataSourcePtr& green,
                           const PSDChannelImageDataSourcePtr& blue) {
    if (!red || !green || !blue) return;
    AddImageResource(boost::make_shared<PSDIRB_Thumbnail>(width, height, red, green, blue));
}

void PSDFile::WriteBody(std::ostream& stream) {
    if (PSBMode(stream) != 0) header.version = 2;
    if (progress != nullptr) {
        progress->ImageProgress(0, static_cast<int>(image.channels.Count()));
        progress->LayerProgress(0, static_cast<int>(layers.layersInfo.channels.Count()));
    }
    stream << header << colorMode << resources << layers << image;
    CheckFileSize(stream);
}

}  // namespace psdfile
