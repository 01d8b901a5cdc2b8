#include "effect/psd_output_layer.h"

#include <renderelements.h>

#include <algorithm>
#include <span>

#include "effect/blend_modes.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

// A mode of `missing` becomes Normal, but for one that has something near to it.
void ReplaceMode(IParamBlock2& pblock, std::span<const int> missing, int mode, int nearest) {
    const int present = pblock.GetInt("blendingMode"_layerParam);
    if (std::find(missing.begin(), missing.end(), present) == missing.end()) return;
    pblock.SetValue("blendingMode"_layerParam, 0, present == mode ? nearest : normalMode);
}

}  // namespace

PSDOutputLayer::PSDOutputLayer(ClassDesc2& classDescriptor, const LibraryServices& libraryServices)
    : descriptor(classDescriptor), services(libraryServices) {
    descriptor.MakeAutoParamBlocks(this);
}

IParamBlock2* PSDOutputLayer::GetParamBlockByID(BlockID id) {
    return pblock && pblock->GetDesc()->ID == id ? pblock : nullptr;
}

MSTR PSDOutputLayer::SubAnimName(int number) {
    return number == 0 ? MSTR(services.getString(blockNameString)) : MSTR();
}

RefTargetHandle PSDOutputLayer::Clone(RemapDir& remap) {
    auto* copy = new PSDOutputLayer(descriptor, services);
    copy->ReplaceReference(0, remap.CloneRef(pblock));
    copy->ReplaceReference(1, remap.CloneRef(renderElement));
    BaseClone(this, copy, remap);
    return copy;
}

RefTargetHandle PSDOutputLayer::GetReference(int number) {
    if (number == 0) return pblock;
    return number == 1 ? renderElement : nullptr;
}

// Reference 0 takes nothing but a block.
void PSDOutputLayer::SetReference(int number, RefTargetHandle target) {
    auto* block = dynamic_cast<IParamBlock2*>(target);
    if (number == 0 && (block || !target)) pblock = block;
    if (number == 1) renderElement = target;
}

IRenderElement* PSDOutputLayer::Element() const {
    const bool isElement =
        renderElement && renderElement->SuperClassID() == RENDER_ELEMENT_CLASS_ID;
    return isElement ? static_cast<IRenderElement*>(renderElement) : nullptr;
}

MSTR PSDOutputLayer::ElementName() const {
    const IRenderElement* element = Element();
    return {element ? element->ElementName() : _M("<deleted>")};
}

void PSDOutputLayer::PrepareFor32Bits() {
    ReplaceMode(*pblock, modesMissingAt32Bits, screenMode, linearDodgeMode);
}

void PSDOutputLayer::ReplaceNewerModes() {
    ReplaceMode(*pblock, newerModes, linearDodgeMode, screenMode);
}

}  // namespace effect
