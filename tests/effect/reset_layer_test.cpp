#include "effect/reset_layer.h"

#include <elementclasses.h>

#include "plugin/library_services.h"
#include "tests/effect/element_frame.h"

namespace {

// What the user keeps as default, for whichever class; empty for nothing.
std::vector<std::pair<ParamID, int>> userPreset;

int LoadPreset(effect::PSDOutputLayer* layer) {
    for (const auto& [id, value] : userPreset)
        layer->pblock->SetValue(id, 0, value);
    return userPreset.empty() ? 0 : 1;
}

class ResetLayer : public ElementFrameTest {
  protected:
    ResetLayer() {
        services.loadLayerPreset = LoadPreset;
        own.reset(new effect::PSDOutput(static_cast<ClassDesc2&>(*LibClassDesc(0)), services));
        userPreset.clear();
    }
    ~ResetLayer() override { userPreset.clear(); }

    effect::PSDOutputLayer& Layer(Class_ID id) {
        AddElement(id, "element");
        return *effect->Layer(0, effect->LayerCount(0) - 1);
    }
    void Reset(effect::PSDOutputLayer& layer) { effect::ResetLayer(*own, layer); }
    static int Get(const effect::PSDOutputLayer& layer, ParamID id) {
        return layer.pblock->GetInt(id);
    }

    effect::LibraryServices services = plugin::Services();
    host::Owned<effect::PSDOutput> own;
};

TEST_F(ResetLayer, WithoutAPresetGivesTheDefaultsOfTheClass) {
    effect::PSDOutputLayer& layer = Layer(ATMOSPHERE_ELEMENT);
    for (const ParamID id : {"visible"_layerParam, "enabled"_layerParam, "mask"_layerParam})
        layer.pblock->SetValue(id, 0, id == "mask"_layerParam);
    layer.pblock->SetValue("blendingMode"_layerParam, 0, 3);
    Reset(layer);
    EXPECT_EQ(Get(layer, "blendingMode"_layerParam), 7) << "of atmosphere: Screen";
    EXPECT_EQ(Get(layer, "enabled"_layerParam), TRUE);
    EXPECT_EQ(Get(layer, "mask"_layerParam), FALSE);
}

TEST_F(ResetLayer, APresetLiesOverTheDefaults) {
    userPreset = {{"blendingMode"_layerParam, 4}, {"visible"_layerParam, FALSE}};
    effect::PSDOutputLayer& layer = Layer(ATMOSPHERE_ELEMENT);
    layer.pblock->SetValue("mask"_layerParam, 0, TRUE);
    Reset(layer);
    EXPECT_EQ(Get(layer, "blendingMode"_layerParam), 4);
    EXPECT_EQ(Get(layer, "visible"_layerParam), FALSE);
    EXPECT_EQ(Get(layer, "mask"_layerParam), FALSE) << "what the preset hasn't is the class's";
}

TEST_F(ResetLayer, ABlendModeThat32BitsDontHaveIsReplacedAtLast) {
    own->pblock->SetValue("bitDepth"_param, 0, 32);
    effect::PSDOutputLayer& layer = Layer(ATMOSPHERE_ELEMENT);
    Reset(layer);
    EXPECT_EQ(Get(layer, "blendingMode"_layerParam), 9);
    userPreset = {{"blendingMode"_layerParam, 4}};
    Reset(layer);
    EXPECT_EQ(Get(layer, "blendingMode"_layerParam), 0) << "the preset's too";
    userPreset = {{"blendingMode"_layerParam, 3}};
    Reset(layer);
    EXPECT_EQ(Get(layer, "blendingMode"_layerParam), 3);
}

TEST_F(ResetLayer, ALayerWithoutAnElementHasNoClassToGoBackTo) {
    effect::PSDOutputLayer& layer = Layer(ATMOSPHERE_ELEMENT);
    layer.pblock->SetValue("mask"_layerParam, 0, TRUE);
    Elements().Clear();
    Reset(layer);
    EXPECT_EQ(Get(layer, "mask"_layerParam), TRUE);
}

TEST_F(ResetLayer, IsWhatANewLayerStartsWith) {
    userPreset = {{"blendingMode"_layerParam, 4}};
    const host::RenderElement& element = Elements().Add(ATMOSPHERE_ELEMENT, _M("element"));
    EXPECT_TRUE(effect::SyncRenderElements(*own, 0));
    ASSERT_EQ(own->LayerCount(0), 1);
    effect::PSDOutputLayer& layer = *own->Layer(0, 0);
    EXPECT_EQ(layer.Element(), &element);
    EXPECT_EQ(Get(layer, "blendingMode"_layerParam), 4);
    layer.pblock->SetValue("blendingMode"_layerParam, 0, 16);
    effect::SyncRenderElements(*own, 0);
    EXPECT_EQ(Get(layer, "blendingMode"_layerParam), 16) << "only when it is new";
}

}  // namespace
