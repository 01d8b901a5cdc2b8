// Which render IDs the user means by an object, a scene layer or a selection set. A group of
// objects stands for its members.
#pragma once

#include "sources/render_id_set.h"

class ILayerProperties;
class INamedSelectionSetManager;
class INode;

namespace sources {

// All of them add to what `ids` has. Objects that aren't in the render, and null pointers, add
// nothing.

// A group's head adds all members of groups below it, at any depth, and not itself.
void AddRenderIDs(INode* node, RenderIDSet& ids);
// With the layers inside it.
void AddRenderIDs(ILayerProperties* layer, RenderIDSet& ids);
// Adds nothing for an index that is out of range.
void AddRenderIDs(INamedSelectionSetManager& sets, int setIndex, RenderIDSet& ids);

}  // namespace sources
