// How each kind of node comes into the file.

#include "psdbuilder/layers.h"

namespace psdbuilder {

void PSDBuilderLayerGeneric::AddToFile(psdfile::PSDFile& /*file*/) {}

void PSDBuilderRGBLayer::AddToFile(psdfile::PSDFile& file) {
    file.AddLayer(name.c_str(), unicodeName.c_str(), blendKey, flags, red, green, blue, alpha, mask,
                  maskEnabled, clipping);
}

void PSDBuilderAdjustmentLayer::AddToFile(psdfile::PSDFile& file) {
    file.AddAdjustmentLayer(name.c_str(), unicodeName.c_str(), blendKey, flags, adjustment, mask,
                            maskEnabled, clipping);
}

void PSDBuilderLayerSet::AddToFile(psdfile::PSDFile& file) {
    file.AddLayerSet(name.c_str(), unicodeName.c_str(), blendKey, flags, open, mask, maskEnabled);
    PSDBuilderLayerContainer::AddToFile(file);
    file.EndLayerSet();
}

}  // namespace psdbuilder
