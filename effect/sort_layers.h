// The sorted order of the render elements' layers.
#pragma once

namespace effect {

class PSDOutput;

// Channels after layers, each by the rank of the element's class; those of equal rank, which a
// class without one is too, stay as they were. `list` as for PSDOutput::Layer.
void SortLayers(PSDOutput& effect, int list);

}  // namespace effect
