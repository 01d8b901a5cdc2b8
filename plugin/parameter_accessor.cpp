#include "plugin/parameter_accessor.h"

#include <IPathConfigMgr.h>
#include <maxapi.h>
#include <maxheap.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "plugin/block_changes.h"
#include "plugin/parameters.h"

namespace plugin {
namespace {

// Null for an owner that is no PSDOutput, which counts as no owner.
effect::PSDOutput* OwnerAsEffect(ReferenceMaker* owner) {
    const bool isEffect = owner && owner->ClassID() == effect::psdOutputClassID;
    return isEffect ? static_cast<effect::PSDOutput*>(owner) : nullptr;
}

// Frees the old text. Without memory the old text stays.
void ReplaceText(PB2Value& v, const MCHAR* text) {
    const std::size_t bytes = (std::basic_string_view<MCHAR>(text).size() + 1) * sizeof(MCHAR);
    auto* copy = static_cast<MCHAR*>(MAX_malloc(bytes));
    if (!copy) return;
    std::memcpy(copy, text, bytes);
    MAX_free(v.s);
    v.s = copy;
}

MaxSDK::Util::Path DefaultOutputPath() {
    IPathConfigMgr* paths = IPathConfigMgr::GetPathConfigMgr();
    MaxSDK::Util::Path path(paths ? paths->GetDir(APP_RENDER_OUTPUT_DIR) : nullptr);
    path.AddTrailingBackslash();
    MSTR scene;
    SplitFilename(MSTR(GetCOREInterface()->GetCurFileName()), nullptr, &scene, nullptr);
    if (scene.isNull()) scene = MSTR(_M("Untitled"));
    return MaxSDK::Util::Path(MSTR(path.GetCStr()) + scene + _M(".psd"));
}

// The path that stands for what was given; as given where it names no file.
MSTR NormalFilename(const MSTR& given) {
    if (given.isNull()) return MSTR(DefaultOutputPath().GetCStr());
    MaxSDK::Util::Path absolute(given);
    absolute.ConvertToAbsolute();
    MaxSDK::Util::Path leaf = absolute;
    leaf.StripToLeaf();
    return leaf.IsEmpty() ? given : MSTR(absolute.GetCStr());
}

// The file dialog of `filename` starts at the owner's present path.
void StartFileDialogAt(effect::PSDOutput& owner, const MSTR& name) {
    const std::basic_string_view<MCHAR> text = name.data();
    const std::size_t length = std::min(text.size(), std::size(owner.filenameField) - 1);
    std::copy_n(text.begin(), length, owner.filenameField);
    owner.filenameField[length] = 0;
    owner.pblock->GetDesc()->GetParamDef("filename"_param).init_file = owner.filenameField;
}

void NormalizeFilename(PB2Value& v, effect::PSDOutput* owner) {
    if (owner) owner->shortFilename = MSTR();
    if (!v.s) return;
    const MSTR given(v.s);
    ReplaceText(v, owner ? plugin::NormalizeFilename(*owner, given) : NormalFilename(given));
}

// Units of a typed list: all that is taken, and from how many on a parameter map's own buffer may
// have cut it.
constexpr std::size_t longestTypedList = 8192;
constexpr std::size_t shortestCutList = 256;

// A parameter map's buffer is shorter than the edit field that it reads. What it brings is taken
// for a cut text when the field shows the same and goes on.
void CompleteTypedList(PB2Value& v, const effect::PSDOutput& owner, ParamID list) {
    EffectPanel* panel = OpenPanel();
    const std::optional<MSTR> shown = panel && v.s ? panel->TypedIDList(owner, list) : std::nullopt;
    if (!shown) return;
    const std::basic_string<MCHAR> typed(
        std::basic_string_view<MCHAR>(shown->data()).substr(0, longestTypedList));
    const std::basic_string_view<MCHAR> given(v.s);
    const std::size_t both = std::min(typed.size(), given.size());
    if (typed.compare(0, both, given.substr(0, both)) != 0) return;
    if (typed.size() == given.size() || typed.size() < shortestCutList) return;
    ReplaceText(v, typed.c_str());
}

// The host's reads go through the accessor, also where the stored value is wanted.
bool legacyBitDepthAsStored = false;

bool IsLayerList(ParamID id) {
    return id == "layersProduction"_param || id == "layersSecondary"_param;
}

void PrepareLayersFor32Bits(const effect::PSDOutput& output) {
    for (int list : {0, 1}) {
        for (int i = 0; i < output.LayerCount(list); ++i) {
            if (effect::PSDOutputLayer* layer = output.Layer(list, i)) layer->PrepareFor32Bits();
        }
    }
}

}  // namespace

void PSDOutputPBAccessor::Get(PB2Value& v, ReferenceMaker* owner, ParamID id, int, TimeValue,
                              Interval&) {
    effect::PSDOutput* output = OwnerAsEffect(owner);
    // A path that was never set comes as the empty text, and stays it: that no file is assigned
    // must be seen. Only setting the empty text asks for the default.
    if (id == "filename"_param && v.s && *v.s) NormalizeFilename(v, output);
    if (id == "usePS7Extensions"_param) v.i = TRUE;
    if (id == "legacyBitDepth"_param && output && output->pblock && !legacyBitDepthAsStored) {
        v.i = output->pblock->GetInt("bitDepth"_param) == 8 ? 8 : 16;
    }
}

void PSDOutputPBAccessor::Set(PB2Value& v, ReferenceMaker* owner, ParamID id, int, TimeValue) {
    effect::PSDOutput* output = OwnerAsEffect(owner);
    if (id == "filename"_param) NormalizeFilename(v, output);
    if (output && (id == "nodeIDList"_param || id == "mtlIDList"_param)) {
        CompleteTypedList(v, *output, id);
    }
    if (id == "bitDepth"_param && v.i == 32 && output) PrepareLayersFor32Bits(*output);
}

void PSDOutputPBAccessor::TabChanged(tab_changes changeCode, Tab<PB2Value>*, ReferenceMaker* owner,
                                     ParamID id, int tabIndex, int) {
    effect::PSDOutput* output = OwnerAsEffect(owner);
    if (!IsLayerList(id) || !output || !output->pblock) return;
    switch (changeCode) {
        case tab_insert:
        case tab_append:
        case tab_delete:
        case tab_setcount:
        case tab_sort:
            if (EffectPanel* panel = PanelOf(*output)) panel->RedrawRenderElements();
            break;
        case tab_ref_deleted:
            // The first entry stays behind as a null, which every reader of the list copes with.
            if (tabIndex < 1) break;
            output->pblock->Delete(id, tabIndex, 1);
            if (EffectPanel* panel = PanelOf(*output)) panel->RefreshRenderElementRows();
            break;
        default:
            break;
    }
}

PSDOutputPBAccessor& EffectAccessor() {
    static PSDOutputPBAccessor accessor;
    return accessor;
}

MSTR NormalizeFilename(effect::PSDOutput& effect, const MSTR& given) {
    effect.shortFilename = MSTR();
    MSTR name = NormalFilename(given);
    if (effect.pblock) StartFileDialogAt(effect, name);
    return name;
}

int StoredBitDepth(IParamBlock2& pblock) {
    const bool outer = std::exchange(legacyBitDepthAsStored, true);
    const int stored = pblock.GetInt("legacyBitDepth"_param);
    legacyBitDepthAsStored = outer;
    return stored == 8 ? 8 : 16;
}

}  // namespace plugin
