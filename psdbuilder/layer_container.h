// What holds layers: the document and its layer sets.
#pragma once

#include <boost/shared_ptr.hpp>
#include <vector>

#include "psdfile/file.h"

namespace psdbuilder {

class PSDBuilderLayerGeneric;

class PSDBuilderLayerContainer {
  public:
    PSDBuilderLayerContainer() = default;
    PSDBuilderLayerContainer(const PSDBuilderLayerContainer&) = delete;
    PSDBuilderLayerContainer& operator=(const PSDBuilderLayerContainer&) = delete;
    virtual ~PSDBuilderLayerContainer() = default;

    // Adds the children to the file, first child first. Leaves the tree as it is.
    virtual void AddToFile(psdfile::PSDFile& file);

    // From the top of the layer stack to the bottom.
    std::vector<boost::shared_ptr<PSDBuilderLayerGeneric>> children;
};

// Takes every layer set out of the container that has no layer at any depth, whatever else it
// has: mask, name, flags. Layers stay.
void RemoveEmptyLayerSets(PSDBuilderLayerContainer& container);

}  // namespace psdbuilder
