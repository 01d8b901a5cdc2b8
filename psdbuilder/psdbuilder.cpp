// The facade: where a path leads, and the tree's way into a file.

#include "psdbuilder/psdbuilder.h"

#include <boost/make_shared.hpp>
#include <boost/pointer_cast.hpp>
#include <cassert>
#include <string>
#include <utility>

#include "psdbuilder/layer_path.h"
#include "psdfile/file.h"

namespace psdbuilder {

namespace {

using ContainerPtr = boost::shared_ptr<PSDBuilderLayerContainer>;
using LayerPtr = boost::shared_ptr<PSDBuilderLayerGeneric>;
using SetPtr = boost::shared_ptr<PSDBuilderLayerSet>;
using Path = LayerPath<char>;
using UnicodePath = LayerPath<char16_t>;

Path ParsePath(const char* path) {
    return Path(path);
}

// Without a Unicode path all Unicode names are empty.
UnicodePath ParsePath(const char16_t* path) {
    return UnicodePath(path == nullptr ? u"" : path);
}

void Attach(const ContainerPtr& parent, const LayerPtr& layer) {
    layer->parent = parent;
    parent->children.push_back(layer);
}

// The first child with the name if that is a set. Another child of the name hides sets behind it.
template <class Text>
SetPtr FindSet(const PSDBuilderLayerContainer& container, Text PSDBuilderLayerGeneric::*nameField,
               const Text& name) {
    for (const LayerPtr& child : container.children) {
        if ((*child).*nameField == name) {
            return boost::dynamic_pointer_cast<PSDBuilderLayerSet>(child);
        }
    }
    return {};
}

ContainerPtr FollowPath(ContainerPtr container, const Path& path, const UnicodePath& unicodePath,
                        bool create) {
    for (std::size_t i = 0; i < path.tokens.size(); ++i) {
        const std::string& name = path.tokens[i];
        const std::u16string unicodeName =
            i < unicodePath.tokens.size() ? unicodePath.tokens[i] : std::u16string();
        SetPtr set;
        if (!unicodeName.empty()) {
            set = FindSet(*container, &PSDBuilderLayerGeneric::unicodeName, unicodeName);
        }
        if (!set) set = FindSet(*container, &PSDBuilderLayerGeneric::name, name);
        if (!set) {
            if (!create) return {};
            set = boost::make_shared<PSDBuilderLayerSet>();
            set->name = name;
            set->unicodeName = unicodeName;
            set->blendKey = psdfile::blendKeyPassThrough;
            Attach(container, set);
        }
        container = set;
    }
    return container;
}

ContainerPtr StartOf(const PSDBuilder& builder, const Path& path) {
    return path.absolute ? builder.doc : builder.current.lock();
}

// Names the node after the end of the path and puts it below what is in its container.
void AttachByPath(const PSDBuilder& builder, const char* name, const char16_t* unicodeName,
                  const LayerPtr& layer) {
    const Path path = ParsePath(name);
    const UnicodePath unicodePath = ParsePath(unicodeName);
    layer->name = path.Leaf();
    layer->unicodeName = unicodePath.Leaf();
    Attach(FollowPath(StartOf(builder, path), path.Parent(), unicodePath.Parent(), true), layer);
}

void SetCommonFields(PSDBuilderLayerGeneric& layer, std::uint32_t blendKey, std::uint8_t flags,
                     psdfile::PSDChannelImageDataSourcePtr mask, bool maskEnabled, bool clipping) {
    layer.blendKey = blendKey;
    layer.flags = flags;
    layer.mask = std::move(mask);
    layer.maskEnabled = maskEnabled;
    layer.clipping = clipping;
}

}  // namespace

PSDBuilder::PSDBuilder(std::uint16_t width, std::uint16_t height, std::uint8_t depth,
                       double resolution, double pixelAspectRatio, std::uint16_t compression,
                       std::uint16_t version, bool noRleForMerged16)
    : doc(boost::make_shared<PSDBuilderDoc>()), current(doc) {
    doc->width = width;
    doc->height = height;
    doc->depth = depth;
    doc->resolution = resolution;
    doc->pixelAspectRatio = pixelAspectRatio;
    doc->compression = compression;
    doc->version = version;
    doc->noRleForMerged16 = noRleForMerged16;
}

void PSDBuilder::AddRGBLayer(const char* name, const char16_t* unicodeName, std::uint32_t blendKey,
                             std::uint8_t flags, psdfile::PSDChannelImageDataSourcePtr red,
                             psdfile::PSDChannelImageDataSourcePtr green,
                             psdfile::PSDChannelImageDataSourcePtr blue,
                             psdfile::PSDChannelImageDataSourcePtr alpha,
                             psdfile::PSDChannelImageDataSourcePtr mask, bool maskEnabled,
                             bool clipping) {
    auto layer = boost::make_shared<PSDBuilderRGBLayer>();
    SetCommonFields(*layer, blendKey, flags, std::move(mask), maskEnabled, clipping);
    layer->red = std::move(red);
    layer->green = std::move(green);
    layer->blue = std::move(blue);
    layer->alpha = std::move(alpha);
    AttachByPath(*this, name, unicodeName, layer);
}

void PSDBuilder::AddAdjustmentLayer(
    const char* name, const char16_t* unicodeName, std::uint32_t blendKey, std::uint8_t flags,
    boost::shared_ptr<psdfile::PSDLayerRecordExtraDataResourceBlock> adjustment,
    psdfile::PSDChannelImageDataSourcePtr mask, bool maskEnabled, bool clipping) {
    auto layer = boost::make_shared<PSDBuilderAdjustmentLayer>();
    SetCommonFields(*layer, blendKey, flags, std::move(mask), maskEnabled, clipping);
    layer->adjustment = std::move(adjustment);
    AttachByPath(*this, name, unicodeName, layer);
}

void PSDBuilder::BeginLayerSet(const char* name, const char16_t* unicodeName,
                               std::uint32_t blendKey, std::uint8_t flags, bool open,
                               psdfile::PSDChannelImageDataSourcePtr mask, bool maskEnabled) {
    ContainerPtr found = FindLayerSet(name, unicodeName, false);
    if (!found) {
        auto set = boost::make_shared<PSDBuilderLayerSet>();
        SetCommonFields(*set, blendKey, flags, std::move(mask), maskEnabled, false);
        set->open = open;
        AttachByPath(*this, name, unicodeName, set);
        found = set;
    }
    stack.push_back(current);
    current = found;
}

void PSDBuilder::EndLayerSet() {
    assert(!stack.empty());
    current = stack.back();
    stack.pop_back();
}

ContainerPtr PSDBuilder::FindLayerSet(const char* path, const char16_t* unicodePath, bool create) {
    if (path == nullptr) return {};
    const Path names = ParsePath(path);
    return FollowPath(StartOf(*this, names), names, ParsePath(unicodePath), create);
}

void PSDBuilder::AddChannel(const char* name, const char16_t* unicodeName,
                            psdfile::PSDChannelImageDataSourcePtr source) {
    doc->channels.push_back({name, unicodeName == nullptr ? u"" : unicodeName, std::move(source)});
}

void PSDBuilder::AddImageResource(boost::shared_ptr<psdfile::PSDPart> block) {
    doc->imageResources.push_back(std::move(block));
}

void PSDBuilder::SetMergedImage(bool hasRealMergedData, psdfile::PSDChannelImageDataSourcePtr red,
                                psdfile::PSDChannelImageDataSourcePtr green,
                                psdfile::PSDChannelImageDataSourcePtr blue,
                                psdfile::PSDChannelImageDataSourcePtr alpha) {
    doc->hasRealMergedData = hasRealMergedData;
    doc->mergedRed = std::move(red);
    doc->mergedGreen = std::move(green);
    doc->mergedBlue = std::move(blue);
    doc->mergedAlpha = std::move(alpha);
}

void PSDBuilder::Write(std::ostream& stream) {
    psdfile::PSDFile file(doc->width, doc->height, doc->depth, doc->resolution,
                          doc->pixelAspectRatio, doc->compression, doc->version,
                          doc->noRleForMerged16);
    file.SetProgress(doc->progress);
    file.SetImageData(doc->hasRealMergedData, doc->mergedRed, doc->mergedGreen, doc->mergedBlue,
                      doc->mergedAlpha);
    for (const PSDBuilderChannel& channel : doc->channels) {
        file.AddAlphaChannel(channel.name.c_str(),
                             channel.unicodeName.empty() ? nullptr : channel.unicodeName.c_str(),
                             channel.source);
    }
    for (const boost::shared_ptr<psdfile::PSDPart>& block : doc->imageResources) {
        file.AddImageResource(block);
    }
    doc->AddToFile(file);
    stream << file;
}

std::ostream& operator<<(std::ostream& stream, PSDBuilder& builder) {
    builder.Write(stream);
    return stream;
}

}  // namespace psdbuilder
