#include "effect/psd_output_layer.h"

#include <algorithm>

#include "plugin/parameters.h"

namespace effect {
namespace {

// Numbers of blend modes (psdfile/blend_keys.h).
constexpr int normal = 0;
constexpr int screen = 7;
constexpr int linearDodge = 9;
constexpr int missingAt32Bits[] = {4, 5, screen, 8, 10, 11, 12, 13, 14, 15, 17, 22};

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

void PSDOutputLayer::PrepareFor32Bits() {
    const int mode = pblock->GetInt("blendingMode"_layerParam);
    if (std::find(std::begin(missingAt32Bits), std::end(missingAt32Bits), mode) ==
        std::end(missingAt32Bits)) {
        return;
    }
    pblock->SetValue("blendingMode"_layerParam, 0, mode == screen ? linearDodge : normal);
}

}  // namespace effect
