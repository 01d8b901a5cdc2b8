// What belongs to an object, or to a set of objects, by the render IDs of the nodes.
#pragma once

#include "sources/id_mask_channel.h"
#include "sources/render_id_set.h"

class ILayerProperties;
class INode;

namespace sources {

// One object, or all members of a group, given its head. A null node has no pixels.
class SpecificNodeRenderIDToPSDChannel : public SpecificGBufferIDToPSDChannel {
  public:
    // The node's IDs are taken here; it need not live on.
    SpecificNodeRenderIDToPSDChannel(Bitmap* bitmap, INode* node, int component,
                                     bool premultiplied);

    void ComputeBounds() override;
    bool FragmentMatches(GBufReader* reader) override;

  private:
    RenderIDSet renderIDs;
};

// The objects whose render IDs are put into `renderIDs`, before the bounds or a row are asked for.
class NodesToPSDChannel : public SpecificGBufferIDToPSDChannel {
  public:
    NodesToPSDChannel(Bitmap* bitmap, int component, bool premultiplied);

    void ComputeBounds() override;
    bool FragmentMatches(GBufReader* reader) override;

    // Empty at first. 65535, which is no object, never has pixels.
    RenderIDSet renderIDs;
};

// The objects of the host's named selection set with that index, as they are in it now.
class NamedSelectionSetToPSDChannel : public NodesToPSDChannel {
  public:
    NamedSelectionSetToPSDChannel(Bitmap* bitmap, int setIndex, int component, bool premultiplied);
};

// The objects of a scene layer, as they are in it now, and those of the layers inside it. A null
// layer has no pixels.
class MaxLayerToPSDChannel : public NodesToPSDChannel {
  public:
    MaxLayerToPSDChannel(Bitmap* bitmap, ILayerProperties* layer, int component,
                         bool premultiplied);
};

}  // namespace sources
