#include "plugin/post_load_migration.h"

#include "effect/psd_output.h"
#include "plugin/parameter_accessor.h"
#include "plugin/parameters.h"

namespace plugin {
namespace {

// Versions count 1 to 4; those above 100 are of a numbering before it, and so older than all.
constexpr DWORD formerNumberingAbove = 100;

bool IsOlderThan(DWORD version, DWORD wanted) {
    return version < wanted || version > formerNumberingAbove;
}

void SetNumber(IParamBlock2& pblock, ParamID id, int value) {
    pblock.SetValue(id, 0, value);
}

constexpr ParamID outputsAs[] = {
    "outputSceneLayersAs"_param,
    "outputNodeIDsAs"_param,
    "outputMtlIDsAs"_param,
    "outputObjectsAs"_param,
};

// Layers of one colour, premultiplied or not, became the cut-out of the render.
void ReplaceColorLayers(IParamBlock2& pblock) {
    constexpr int color = 2;
    constexpr int premultipliedColor = 3;
    constexpr int renderCutOut = 5;
    for (const ParamID id : outputsAs) {
        const int value = pblock.GetInt(id);
        if (value == color || value == premultipliedColor) SetNumber(pblock, id, renderCutOut);
    }
}

// What the first versions didn't have stays off in their scenes.
constexpr ParamID offBeforeVersion2[] = {
    "filterEmptyLayersAndChannelsForAnimations"_param,
    "filterEmptyRenderElements"_param,
    "filterEmptyLayerSets"_param,
    "createRenderElementsLayerSet"_param,
    "createRenderElementsLayerSetMaskFromAlpha"_param,
    "unnamed61"_param,
    "createGBufferLayerSet"_param,
    "createZDepthChannel"_param,
    "createCurvesAdjustmentLayer"_param,
};

// Old scenes keep the output that they had: a new effect's defaults aren't theirs.
void Migrate(IParamBlock2& pblock, DWORD version) {
    if (version > formerNumberingAbove) {
        SetNumber(pblock, "bitDepth"_param, StoredBitDepth(pblock));
        SetNumber(pblock, "matchRenderOutputFilename"_param, FALSE);
    }
    ReplaceColorLayers(pblock);
    if (IsOlderThan(version, 2)) {
        for (const ParamID id : offBeforeVersion2)
            SetNumber(pblock, id, 0);
    }
    if (IsOlderThan(version, 3)) {
        constexpr int applyToRender = 0;
        constexpr int applyToAll = 2;
        SetNumber(pblock, "matteLayersVisible"_param, FALSE);
        SetNumber(pblock, "gammaCorrectConfig"_param,
                  pblock.GetInt("legacyGammaAll"_param) ? applyToAll : applyToRender);
        SetNumber(pblock, "colorCorrectConfig"_param, applyToRender);
    }
    if (IsOlderThan(version, 4)) SetNumber(pblock, "autoSort"_param, FALSE);
}

class MigrationCallback final : public PostLoadCallback {
  public:
    explicit MigrationCallback(effect::PSDOutput& loaded) : effect(loaded) {}

    void proc(ILoad*) override {
        IParamBlock2* pblock = effect.pblock;
        BaseInterface* found = pblock ? pblock->GetInterface(IPARAMBLOCK2POSTLOADINFO_ID) : nullptr;
        if (found) Migrate(*pblock, static_cast<IParamBlock2PostLoadInfo*>(found)->GetVersion());
        delete this;
    }

  private:
    effect::PSDOutput& effect;
};

}  // namespace

PostLoadCallback* MakePostLoadCallback(effect::PSDOutput& effect) {
    return new MigrationCallback(effect);
}

}  // namespace plugin
