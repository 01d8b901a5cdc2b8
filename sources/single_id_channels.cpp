#include "sources/single_id_channels.h"

#include "sources/id_bounds.h"

namespace sources {
namespace {

Box2 BoundsOf(const IDBounds& table, UWORD id) {
    const auto found = table.find(id);
    return found != table.end() ? found->second : Box2{};
}

// A fragment that has no render ID isn't of the background.
bool IsBackground(GBufReader* reader) {
    UWORD renderID = noRenderID;
    return reader->ReadChannelData(GB_NODE_RENDER_ID, &renderID) && renderID == noRenderID;
}

}  // namespace

SpecificNodeIDToPSDChannel::SpecificNodeIDToPSDChannel(Bitmap* source, UWORD id, int selector,
                                                       bool keepPremultiplied)
    : SpecificGBufferIDToPSDChannel(source, selector, keepPremultiplied), nodeID(id) {}

void SpecificNodeIDToPSDChannel::ComputeBounds() {
    bounds = BoundsOf(nodeIDBounds, nodeID);
}

bool SpecificNodeIDToPSDChannel::FragmentMatches(GBufReader* reader) {
    UWORD id = 0;
    return reader->ReadChannelData(GB_NODE_ID, &id) && id == nodeID && !IsBackground(reader);
}

SpecificMtlIDToPSDChannel::SpecificMtlIDToPSDChannel(Bitmap* source, UWORD id, int selector,
                                                     bool keepPremultiplied)
    : SpecificGBufferIDToPSDChannel(source, selector, keepPremultiplied), mtlID(id) {}

void SpecificMtlIDToPSDChannel::ComputeBounds() {
    bounds = BoundsOf(mtlIDBounds, mtlID);
}

bool SpecificMtlIDToPSDChannel::FragmentMatches(GBufReader* reader) {
    UBYTE id = 0;
    return reader->ReadChannelData(GB_MTL_ID, &id) && id == mtlID && !IsBackground(reader);
}

}  // namespace sources
