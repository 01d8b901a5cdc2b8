#include "sources/node_set_channels.h"

#include <INamedSelectionSetManager.h>

#include "sources/id_bounds.h"
#include "sources/node_render_ids.h"

namespace sources {
namespace {

Box2 BoundsOf(const RenderIDSet& ids) {
    Box2 all;
    ids.ForEach([&all](std::uint16_t id) {
        const auto found = nodeRenderIDBounds.find(id);
        if (found == nodeRenderIDBounds.end()) return;
        all += IPoint2{found->second.left, found->second.top};
        all += IPoint2{found->second.right, found->second.bottom};
    });
    return all;
}

// noRenderID where the fragment has none.
UWORD RenderIDOf(GBufReader* reader) {
    UWORD id = noRenderID;
    reader->ReadChannelData(GB_NODE_RENDER_ID, &id);
    return id;
}

}  // namespace

SpecificNodeRenderIDToPSDChannel::SpecificNodeRenderIDToPSDChannel(Bitmap* source, INode* node,
                                                                   int selector,
                                                                   bool keepPremultiplied)
    : SpecificGBufferIDToPSDChannel(source, selector, keepPremultiplied) {
    AddRenderIDs(node, renderIDs);
}

void SpecificNodeRenderIDToPSDChannel::ComputeBounds() {
    bounds = BoundsOf(renderIDs);
}

// The set never has noRenderID.
bool SpecificNodeRenderIDToPSDChannel::FragmentMatches(GBufReader* reader) {
    return renderIDs.Contains(RenderIDOf(reader));
}

NodesToPSDChannel::NodesToPSDChannel(Bitmap* source, int selector, bool keepPremultiplied)
    : SpecificGBufferIDToPSDChannel(source, selector, keepPremultiplied) {}

void NodesToPSDChannel::ComputeBounds() {
    bounds = BoundsOf(renderIDs);
}

bool NodesToPSDChannel::FragmentMatches(GBufReader* reader) {
    const UWORD id = RenderIDOf(reader);
    return id != noRenderID && renderIDs.Contains(id);
}

NamedSelectionSetToPSDChannel::NamedSelectionSetToPSDChannel(Bitmap* source, int setIndex,
                                                             int selector, bool keepPremultiplied)
    : NodesToPSDChannel(source, selector, keepPremultiplied) {
    if (INamedSelectionSetManager* sets = INamedSelectionSetManager::GetInstance()) {
        AddRenderIDs(*sets, setIndex, renderIDs);
    }
}

MaxLayerToPSDChannel::MaxLayerToPSDChannel(Bitmap* source, ILayerProperties* layer, int selector,
                                           bool keepPremultiplied)
    : NodesToPSDChannel(source, selector, keepPremultiplied) {
    AddRenderIDs(layer, renderIDs);
}

}  // namespace sources
