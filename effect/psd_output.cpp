#include "effect/psd_output.h"

#include <random.h>

#include <iterator>
#include <new>
#include <unordered_set>

#include "effect/psd_output_layer.h"
#include "effect/selection_set_list.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

constexpr int ownNotifications[] = {
    NOTIFY_PRE_RENDER,
    NOTIFY_POST_RENDER,
    NOTIFY_NAMED_SEL_SET_PRE_MODIFY,
    NOTIFY_NAMED_SEL_SET_POST_MODIFY,
    NOTIFY_NAMED_SEL_SET_CREATED,
    NOTIFY_NAMED_SEL_SET_RENAMED,
    NOTIFY_NAMED_SEL_SET_DELETED,
};
constexpr int frameNotifications[] = {NOTIFY_PRE_RENDERFRAME, NOTIFY_POST_RENDERFRAME};

constexpr ParamID layerLists[] = {"layersProduction"_param, "layersSecondary"_param};

// In the string table.
constexpr int classNameString = 3;

// Never destroyed itself: the host may destroy an effect after this library's own statics.
std::unordered_set<const void*>& LivingEffects() {
    static auto& living = *new std::unordered_set<const void*>;
    return living;
}

bool IsAroundSelectionSetEdit(int code) {
    return code == NOTIFY_NAMED_SEL_SET_PRE_MODIFY || code == NOTIFY_NAMED_SEL_SET_POST_MODIFY;
}

// Each effect keeps its choice of scene layers under a number of its own.
int DrawSceneLayerNumber() {
    Random random;
    return static_cast<int>(random.get() % (Random::s_rand_max - 99) + 100);
}

}  // namespace

PSDOutput::PSDOutput(ClassDesc2& classDescriptor, const LibraryServices& libraryServices)
    : descriptor(classDescriptor), services(libraryServices) {
    descriptor.MakeAutoParamBlocks(this);
    pblock->SetValue("sceneLayerAppDataChunkId"_param, 0, DrawSceneLayerNumber());
    SwitchAllSelectionSetsOn(*pblock);
    for (int code : ownNotifications)
        RegisterNotification(OnEffectNotification, this, code);
    // At last: an effect that memory ran out for is none.
    LivingEffects().insert(this);
}

// The registrations around the edit of a selection set are not taken back but made once more, and
// stay with the host for good. They name an object that is gone, so OnEffectNotification asks
// whether an effect is living before it looks at one. Should a new effect come to lie at the same
// place, it hears of an edit more than once, which only sets the same flag again.
PSDOutput::~PSDOutput() {
    LivingEffects().erase(this);
    for (int code : ownNotifications) {
        if (IsAroundSelectionSetEdit(code)) {
            RegisterNotification(OnEffectNotification, this, code);
        } else {
            UnRegisterNotification(OnEffectNotification, this, code);
        }
    }
    // Those of a render that never came to its end.
    for (int code : frameNotifications) {
        while (UnRegisterNotification(OnEffectNotification, this, code) != 0) {
        }
    }
    LeaveFileDialog();
    DeleteAllRefsFromMe();
}

bool PSDOutput::IsLiving(const void* effect) {
    return LivingEffects().count(effect) != 0;
}

// The definition is the class's and stays when the field that it points at goes.
void PSDOutput::LeaveFileDialog() {
    ParamBlockDesc2* desc = descriptor.GetParamBlockDescByID(0);
    if (!desc) return;
    ParamDef& definition = desc->GetParamDef("filename"_param);
    if (definition.init_file == filenameField) definition.init_file = nullptr;
}

void PSDOutput::GetClassName(MSTR& s) {
    s = MSTR(services.getString(classNameString));
}

Animatable* PSDOutput::SubAnim(int number) {
    return number == 0 ? pblock : nullptr;
}

MSTR PSDOutput::SubAnimName(int number) {
    return number == 0 ? MSTR(services.getString(blockNameString)) : MSTR();
}

// The copy draws a number for its scene layers as every new effect does, and gets the original's
// back with the block.
RefTargetHandle PSDOutput::Clone(RemapDir& remap) {
    auto* copy = new PSDOutput(descriptor, services);
    copy->ReplaceReference(0, remap.CloneRef(pblock));
    copy->ReplaceReference(1, remap.CloneRef(secondBlock));
    BaseClone(this, copy, remap);
    return copy;
}

IOResult PSDOutput::Save(ISave* isave) {
    SpecialFX::Save(isave);
    return IO_OK;
}

IOResult PSDOutput::Load(ILoad* iload) {
    SpecialFX::Load(iload);
    dataVersion = 0;
    try {
        if (PostLoadCallback* migration = services.makePostLoadCallback(*this)) {
            iload->RegisterPostLoadCallback(migration);
        }
    } catch (const std::bad_alloc&) {
        // Old settings that nobody brings up to date would be taken for present ones.
        return IO_ERROR;
    }
    return IO_OK;
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
    auto* layer = isLayer ? static_cast<PSDOutputLayer*>(target) : nullptr;
    return layer && layer->pblock ? layer : nullptr;
}

RefTargetHandle PSDOutput::GetReference(int number) {
    return GetParamBlock(number);
}

// A target that is no block is not stored, by which the host sees that it is refused.
void PSDOutput::SetReference(int number, RefTargetHandle target) {
    auto* block = dynamic_cast<IParamBlock2*>(target);
    if (target && !block) return;
    if (number == 0) pblock = block;
    if (number == 1) secondBlock = block;
}

RefResult PSDOutput::NotifyRefChanged(const Interval&, RefTargetHandle hTarget, PartID&,
                                      RefMessage message, BOOL) {
    if (message != REFMSG_CHANGE || !pblock || hTarget != pblock) return REF_SUCCEED;
    int tabIndex = -1;
    const ParamID id = pblock->LastNotifyParamID(tabIndex);
    if (id < 0) return REF_SUCCEED;
    lastChanged = id;
    try {
        services.parameterChanged(*this, id);
    } catch (const std::bad_alloc&) {
        // What follows from the change waits for the next one.
    }
    return REF_SUCCEED;
}

SFXParamDlg* PSDOutput::CreateParamDialog(IRendParams* ip) {
    try {
        return services.createParamDialog(*this, ip);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

bool PSDOutput::SupportsBitmap(Bitmap& bitmap) {
    outputBitmap = &bitmap;
    return true;
}

}  // namespace effect
