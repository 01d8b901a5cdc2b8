// Walks over the children of a container.

#include "psdbuilder/layer_container.h"

#include "psdbuilder/layers.h"

namespace psdbuilder {

void PSDBuilderLayerContainer::AddToFile(psdfile::PSDFile& file) {
    for (const boost::shared_ptr<PSDBuilderLayerGeneric>& child : children) {
        child->AddToFile(file);
    }
}

void RemoveEmptyLayerSets(PSDBuilderLayerContainer& container) {
    std::erase_if(container.children, [](const boost::shared_ptr<PSDBuilderLayerGeneric>& child) {
        auto* set = dynamic_cast<PSDBuilderLayerSet*>(child.get());
        if (set == nullptr) return false;
        RemoveEmptyLayerSets(*set);
        return set->children.empty();
    });
}

}  // namespace psdbuilder
