#include "effect/psd_output_layer.h"

#include <elementclasses.h>

#include <set>

#include "host/render_element.h"
#include "host/target_reference.h"
#include "plugin/class_descriptors.h"
#include "tests/effect/effect_fixture.h"

namespace {

// Stands for a render element.
class Target : public ReferenceTarget {
  public:
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }
};

class PSDOutputLayer : public EffectTest {
  protected:
    PSDOutputLayer()
        : layer(static_cast<effect::PSDOutputLayer*>(plugin::ClassDescriptors()[1]->Create())) {}

    host::Owned<effect::PSDOutputLayer> layer;
};

TEST_F(PSDOutputLayer, HasItsBlockAndItsRenderElementAsReferences) {
    EXPECT_EQ(layer->ClassID(), Class_ID(0x347c6bc4, 0x153540b4));
    EXPECT_EQ(layer->SuperClassID(), 512U);
    EXPECT_EQ(layer->NumRefs(), 2);
    EXPECT_EQ(layer->NumParamBlocks(), 1);
    ASSERT_NE(layer->pblock, nullptr);
    EXPECT_EQ(layer->GetReference(0), layer->pblock);
    EXPECT_EQ(layer->GetReference(1), nullptr);
    EXPECT_EQ(layer->GetReference(2), nullptr);
    EXPECT_EQ(layer->GetParamBlock(0), layer->pblock);
    EXPECT_EQ(layer->GetParamBlock(1), nullptr);
    EXPECT_EQ(layer->GetParamBlockByID(0), layer->pblock);
    EXPECT_EQ(layer->GetParamBlockByID(1), nullptr);
}

TEST_F(PSDOutputLayer, ItsRenderElementIsTheParameterOfThatName) {
    const host::Owned<Target> element(new Target);
    layer->pblock->SetValue("renderElement"_layerParam, 0, element.get());
    EXPECT_EQ(layer->GetReference(1), element.get());
    EXPECT_EQ(layer->pblock->GetReferenceTarget("renderElement"_layerParam), element.get());
    EXPECT_EQ(layer->Element(), nullptr) << "a target that is no render element";
    layer.reset();
}

TEST_F(PSDOutputLayer, HasItsElementsName) {
    EXPECT_EQ(layer->Element(), nullptr);
    EXPECT_EQ(layer->ElementName(), MSTR(_M("<deleted>")));
    host::RenderElement& element =
        Host().elements[RS_Production].Add(SPECULAR_ELEMENT, _M("Specular"));
    layer->pblock->SetValue("renderElement"_layerParam, 0, &element);
    EXPECT_EQ(layer->Element(), &element);
    EXPECT_EQ(layer->ElementName(), MSTR(_M("Specular")));
    element.SetElementName(_M("Glanz"));
    EXPECT_EQ(layer->ElementName(), MSTR(_M("Glanz")));
    Host().elements[RS_Production].Remove(&element);
    EXPECT_EQ(layer->Element(), nullptr);
    EXPECT_EQ(layer->ElementName(), MSTR(_M("<deleted>")));
}

TEST_F(PSDOutputLayer, ARenderElementThatIsGoneLeavesNone) {
    host::Owned<Target> element(new Target);
    layer->pblock->SetValue("renderElement"_layerParam, 0, element.get());
    element.reset();
    EXPECT_EQ(layer->GetReference(1), nullptr);
}

TEST_F(PSDOutputLayer, PreparedFor32BitsHasAModeThatExistsThere) {
    const std::set<int> missing = {4, 5, 7, 8, 10, 11, 12, 13, 14, 15, 17, 22};
    for (int mode = 0; mode <= 26; ++mode) {
        layer->pblock->SetValue("blendingMode"_layerParam, 0, mode);
        layer->PrepareFor32Bits();
        const int expected = mode == 7 ? 9 : missing.count(mode) ? 0 : mode;
        EXPECT_EQ(layer->pblock->GetInt("blendingMode"_layerParam), expected) << mode;
    }
}

TEST_F(PSDOutputLayer, WithoutNewerModesHasOneThatIsOlder) {
    const std::set<int> newer = {5, 9, 13, 14, 15, 22, 23, 24, 25, 26};
    for (int mode = 0; mode <= 26; ++mode) {
        layer->pblock->SetValue("blendingMode"_layerParam, 0, mode);
        layer->ReplaceNewerModes();
        const int expected = mode == 9 ? 7 : newer.count(mode) ? 0 : mode;
        EXPECT_EQ(layer->pblock->GetInt("blendingMode"_layerParam), expected) << mode;
    }
}

TEST_F(PSDOutputLayer, ShowsItsBlockAsItsOnlyTrack) {
    EXPECT_EQ(layer->NumSubs(), 1);
    EXPECT_EQ(layer->SubAnim(0), layer->pblock);
    EXPECT_EQ(layer->SubAnim(1), nullptr);
    EXPECT_EQ(layer->SubAnimName(0), MSTR(_M("params")));
    EXPECT_EQ(layer->SubAnimName(1), MSTR());
}

TEST_F(PSDOutputLayer, ItsFirstReferenceIsNothingButABlock) {
    IParamBlock2* block = layer->pblock;
    Target target;
    EXPECT_EQ(layer->ReplaceReference(0, &target), REF_FAIL);
    EXPECT_EQ(layer->pblock, block);
}

TEST_F(PSDOutputLayer, ACopyHasItsSettingsAndItsElement) {
    host::RenderElement& element =
        Host().elements[RS_Production].Add(SPECULAR_ELEMENT, _M("Specular"));
    layer->pblock->SetValue("renderElement"_layerParam, 0, &element);
    layer->pblock->SetValue("blendingMode"_layerParam, 0, 16);
    DefaultRemapDir remap;
    const host::Owned<effect::PSDOutputLayer> copy(
        static_cast<effect::PSDOutputLayer*>(layer->Clone(remap)));
    ASSERT_NE(copy->pblock, nullptr);
    EXPECT_NE(copy->pblock, layer->pblock);
    EXPECT_EQ(copy->Element(), &element);
    EXPECT_EQ(copy->pblock->GetReferenceTarget("renderElement"_layerParam), &element);
    EXPECT_EQ(copy->pblock->GetInt("blendingMode"_layerParam), 16);
    EXPECT_EQ(remap.FindMapping(layer.get()), copy.get());
    Host().elements[RS_Production].Remove(&element);
    EXPECT_EQ(copy->Element(), nullptr);
    EXPECT_EQ(layer->Element(), nullptr);
}

TEST_F(PSDOutputLayer, ACopyWithoutAnElementHasNone) {
    DefaultRemapDir remap;
    const host::Owned<effect::PSDOutputLayer> copy(
        static_cast<effect::PSDOutputLayer*>(layer->Clone(remap)));
    EXPECT_EQ(copy->GetReference(1), nullptr);
    EXPECT_EQ(copy->pblock->GetReferenceTarget("renderElement"_layerParam), nullptr);
}

}  // namespace
