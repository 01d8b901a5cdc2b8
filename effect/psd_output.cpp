#include "effect/psd_output.h"

#include <random.h>

#include <iterator>

#include "effect/psd_output_layer.h"
#include "effect/selection_set_list.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

constexpr int ownNotifications[] = {NOTIFY_PRE_RENDER, NOTIFY_POST_RENDER};
constexpr int frameNotifications[] = {NOTIFY_PRE_RENDERFRAME, NOTIFY_POST_RENDERFRAME};

constexpr ParamID layerLists[] = {"layersProduction"_param, "layersSecondary"_param};

// Each effect keeps its choice of scene layers under a number of its own.
int DrawSceneLayerNumber() {
    Random random;
    return static_cast<int>(random.get() % (Random::s_rand_max - 99) + 100);
}

}  // namespace

PSDOutput::PSDOutput(ClassDesc2& descriptor, const LibraryServices& libraryServices)
    : services(libraryServices) {
    descriptor.MakeAutoParamBlocks(this);
    pblock->SetValue("sceneLayerAppDataChunkId"_param, 0, DrawSceneLayerNumber());
    SwitchAllSelectionSetsOn(*pblock);
    for (int code : ownNotifications)
        RegisterNotification(OnNotification, this, code);
}

PSDOutput::~PSDOutput() {
    for (int code : ownNotifications)
        UnRegisterNotification(OnNotification, this, code);
    // Those of a render that never came to its end.
    for (int code : frameNotifications) {
        while (UnRegisterNotification(OnNotification, this, code) != 0) {
        }
    }
    LeaveFileDialog();
    DeleteAllRefsFromMe();
}

// The definition is the class's and stays when the field that it points at goes.
void PSDOutput::LeaveFileDialog() {
    if (!pblock) return;
    ParamDef& definition = pblock->GetDesc()->GetParamDef("filename"_param);
    if (definition.init_file == filenameField) definition.init_file = nullptr;
}

IParamBlock2* PSDOutput::GetParamBlock(int number) {
    if (number == 0) return pblock;
    return number == 1 ? secondBlock : nullptr;
}

IParamBlock2* PSDOutput::GetParamBlockByID(BlockID id) {
    for (IParamBlock2* block : {pblock, secondBlock}) {
        if (block && block->GetDesc()->ID == id) return block;
    }
    return nullptr;
}

ParamID PSDOutput::LayerList(int list) {
    const bool known = list >= 0 && list < static_cast<int>(std::size(layerLists));
    return known ? layerLists[list] : ParamID{-1};
}

int PSDOutput::LayerCount(int list) const {
    const ParamID id = LayerList(list);
    return pblock && id >= 0 ? pblock->Count(id) : 0;
}

PSDOutputLayer* PSDOutput::Layer(int list, int index) const {
    if (index < 0 || index >= LayerCount(list)) return nullptr;
    ReferenceTarget* target = pblock->GetReferenceTarget(LayerList(list), 0, index);
    const bool isLayer = target && target->ClassID() == psdOutputLayerClassID;
    return isLayer ? static_cast<PSDOutputLayer*>(target) : nullptr;
}

RefTargetHandle PSDOutput::GetReference(int number) {
    return GetParamBlock(number);
}

void PSDOutput::SetReference(int number, RefTargetHandle target) {
    auto* block = static_cast<IParamBlock2*>(target);
    if (number == 0) pblock = block;
    if (number == 1) secondBlock = block;
}

RefResult PSDOutput::NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage, BOOL) {
    return REF_SUCCEED;
}

bool PSDOutput::SupportsBitmap(Bitmap& bitmap) {
    outputBitmap = &bitmap;
    return true;
}

}  // namespace effect
