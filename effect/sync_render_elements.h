// Keeps the list of layers in step with the host's render elements.
#pragma once

class RenderGlobalContext;

namespace effect {

class PSDOutput;

// The list of layers that a render goes by.
int LayerListOf(const RenderGlobalContext& gc);

// Takes out layers whose element is gone, makes one for each element that has none, and sorts the
// list when it was empty or is to stay sorted. True when something may have changed. Without render
// elements of the host nothing is done.
bool SyncRenderElements(PSDOutput& effect, int list);

}  // namespace effect
