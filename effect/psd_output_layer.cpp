#include "effect/psd_output_layer.h"

#include <renderelements.h>

#include <algorithm>
#include <span>

#include "effect/blend_modes.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

constexpr int missingAt32Bits[] = {4, 5, screenMode, 8, 10, 11, 12, 13, 14, 15, 17, 22};
constexpr int newerModes[] = {5, linearDodgeMode, 13, 14, 15, 22, 23, 24, 25, 26};

// A mode of `missing` becomes Normal, but for one that has something near to it.
void ReplaceMode(IParamBlock2& pblock, std::span<const int> missing, int mode, int nearest) {
    const int present = pblock.GetInt("blendingMode"_layerParam);
    if (std::find(missing.begin(), missing.end(), present) == missing.end()) return;
    pblock.SetValue("blendingMode"_layerParam, 0, present == mode ? nearest : normalMode);
}

}  // namespace

PSDOutputLayer::PSDOutputLayer(ClassDesc2& descriptor) {
    descriptor.MakeAutoParamBlocks(this);
}

IParamBlock2* PSDOutputLayer::GetParamBlockByID(BlockID id) {
    return pblock && pblock->GetDesc()->ID == id ? pblock : nullptr;
}

RefTargetHandle PSDOutputLayer::GetReference(int number) {
    if (number == 0) return pblock;
    return number == 1 ? renderElement : nullptr;
}

void PSDOutputLayer::SetReference(int number, RefTargetHandle target) {
    if (number == 0) pblock = static_cast<IParamBlock2*>(target);
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
    ReplaceMode(*pblock, missingAt32Bits, screenMode, linearDodgeMode);
}

void PSDOutputLayer::ReplaceNewerModes() {
    ReplaceMode(*pblock, newerModes, linearDodgeMode, screenMode);
}

}  // namespace effect
