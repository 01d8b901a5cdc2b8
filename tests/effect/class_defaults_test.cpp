#include "effect/class_defaults.h"

#include "effect/element_classes.h"
#include "tests/effect/element_frame.h"

namespace {

constexpr ParamID switches[] = {"visible"_layerParam,      "transparency"_layerParam,
                                "premultiply"_layerParam,  "groupWithPrevious"_layerParam,
                                "gammaCorrect"_layerParam, "colorCorrect"_layerParam};

class ClassDefaults : public ElementFrameTest {
  protected:
    // The settings of a layer that had the opposite of every default before.
    void Expect(Class_ID id, const effect::LayerDefaults& expected) {
        SCOPED_TRACE(testing::Message() << std::hex << id.PartA() << ' ' << id.PartB());
        const host::RenderElement& element = AddElement(id, "element");
        effect::PSDOutputLayer& layer = LayerOf(element);
        const auto get = [&layer](ParamID parameter) { return layer.pblock->GetInt(parameter); };
        const bool values[] = {expected.visible,      expected.transparency,
                               expected.premultiply,  expected.groupWithPrevious,
                               expected.gammaCorrect, expected.colorCorrect};
        for (std::size_t i = 0; i < std::size(switches); ++i)
            layer.pblock->SetValue(switches[i], 0, values[i] ? FALSE : TRUE);
        layer.pblock->SetValue("enabled"_layerParam, 0, FALSE);
        layer.pblock->SetValue("mask"_layerParam, 0, TRUE);
        layer.pblock->SetValue("split"_layerParam, 0, TRUE);
        layer.pblock->SetValue("mergeDown"_layerParam, 0, TRUE);
        layer.pblock->SetValue("blendingMode"_layerParam, 0, 26);
        layer.pblock->SetValue("outputAs"_layerParam, 0, 1 - expected.outputAs);

        EXPECT_EQ(effect::ApplyClassDefaults(&layer), 1);
        for (std::size_t i = 0; i < std::size(switches); ++i)
            EXPECT_EQ(get(switches[i]), values[i] ? TRUE : FALSE) << switches[i];
        EXPECT_EQ(get("enabled"_layerParam), TRUE);
        EXPECT_EQ(get("mask"_layerParam), FALSE);
        EXPECT_EQ(get("split"_layerParam), FALSE);
        EXPECT_EQ(get("mergeDown"_layerParam), FALSE);
        EXPECT_EQ(get("blendingMode"_layerParam), expected.blendingMode);
        EXPECT_EQ(get("outputAs"_layerParam), expected.outputAs);
        EXPECT_EQ(layer.Element(), &element);
    }
};

TEST_F(ClassDefaults, OfAnUnknownClassAreAPlainLayer) {
    Expect(unknownElement, {});
}

TEST_F(ClassDefaults, OfTheHostsElements) {
    Expect({9, 0}, {.transparency = false, .blendingMode = 7});
    Expect({12, 0}, {.visible = false, .transparency = false, .outputAs = 1, .gammaCorrect = true});
    Expect({4, 0}, {.premultiply = false});
}

TEST_F(ClassDefaults, OfVRaysElements) {
    const effect::LayerDefaults light{.transparency = false, .blendingMode = 9};
    Expect({0x11e87638, 0x029e3355}, light);
    Expect({0x3d462e09, 0x7f3e1bd1}, light);
    Expect({0x73a90d68, 0x62245636}, light);
    Expect({0x36315e91, 0x50e55dbd}, {.transparency = false,
                                      .premultiply = false,
                                      .blendingMode = 3,
                                      .groupWithPrevious = true});
    const effect::LayerDefaults shadow{.visible = false, .transparency = false, .blendingMode = 9};
    Expect({0x7e697a63, 0x36e83aaf}, shadow);
    Expect({0x2be23135, 0x790b1389}, shadow);
    Expect({0x2fbc1433, 0x275c59e3},
           {.visible = false, .transparency = false, .gammaCorrect = true});
    Expect({0x2d304e42, 0x19d838a4}, {.transparency = false, .gammaCorrect = true});
    Expect({0x58a32517, 0x70d06c58}, {.visible = false, .transparency = false, .outputAs = 1});
    Expect({0x2e056b03, 0x318604b3},
           {.visible = false, .premultiply = false, .gammaCorrect = true, .colorCorrect = true});
}

TEST_F(ClassDefaults, NeedALayerWithAnElement) {
    EXPECT_EQ(effect::ApplyClassDefaults(nullptr), 0);
    host::RenderElement& element = AddElement({9, 0}, "Atmosphere");
    effect::PSDOutputLayer& layer = LayerOf(element);
    layer.pblock->SetValue("renderElement"_layerParam, 0, static_cast<ReferenceTarget*>(nullptr));
    layer.pblock->SetValue("blendingMode"_layerParam, 0, 5);
    EXPECT_EQ(effect::ApplyClassDefaults(&layer), 0);
    EXPECT_EQ(layer.pblock->GetInt("blendingMode"_layerParam), 5);
}

}  // namespace
