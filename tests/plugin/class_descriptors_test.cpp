#include "plugin/class_descriptors.h"

#include <set>

#include "effect/psd_output_layer.h"
#include "tests/effect/effect_fixture.h"

namespace {

class ClassDescriptors : public EffectTest {
  protected:
    static std::string Ascii(const MCHAR* text) { return host::ToUtf8(text); }
};

TEST_F(ClassDescriptors, TheEffectIsPublic) {
    ClassDesc& output = *plugin::ClassDescriptors()[0];
    EXPECT_EQ(output.IsPublic(), 1);
    EXPECT_EQ(Ascii(output.ClassName()), "veltrane");
    EXPECT_EQ(output.SuperClassID(), 4240U);
    EXPECT_EQ(output.ClassID(), Class_ID(0x70068609, 0x1d5d297));
    EXPECT_EQ(Ascii(output.Category()), "Effect");
    EXPECT_EQ(Ascii(output.InternalName()), "veltrane");
}

TEST_F(ClassDescriptors, ItsLayersAreNot) {
    ClassDesc& layer = *plugin::ClassDescriptors()[1];
    EXPECT_EQ(layer.IsPublic(), 0);
    EXPECT_EQ(Ascii(layer.ClassName()), "veltraneRELayer");
    EXPECT_EQ(layer.SuperClassID(), 512U);
    EXPECT_EQ(layer.ClassID(), Class_ID(0x347c6bc4, 0x153540b4));
    EXPECT_EQ(Ascii(layer.Category()), "");
    EXPECT_EQ(Ascii(layer.InternalName()), "veltraneRELayer");
}

TEST_F(ClassDescriptors, CreateIsTheSameWhileLoading) {
    for (const BOOL loading : {FALSE, TRUE}) {
        const host::Owned<effect::PSDOutput> output(
            static_cast<effect::PSDOutput*>(plugin::ClassDescriptors()[0]->Create(loading)));
        ASSERT_NE(output->pblock, nullptr);
        EXPECT_EQ(output->ClassID(), plugin::ClassDescriptors()[0]->ClassID());
        const host::Owned<effect::PSDOutputLayer> layer(
            static_cast<effect::PSDOutputLayer*>(plugin::ClassDescriptors()[1]->Create(loading)));
        ASSERT_NE(layer->pblock, nullptr);
        EXPECT_EQ(layer->ClassID(), plugin::ClassDescriptors()[1]->ClassID());
    }
}

TEST_F(ClassDescriptors, EachHasOneBlockAndNoTwoAreOfOneClass) {
    std::set<std::pair<DWORD, DWORD>> ids;
    for (ClassDesc* descriptor : plugin::ClassDescriptors()) {
        EXPECT_TRUE(
            ids.insert({descriptor->ClassID().PartA(), descriptor->ClassID().PartB()}).second);
        auto* withBlocks = dynamic_cast<ClassDesc2*>(descriptor);
        ASSERT_NE(withBlocks, nullptr);
        EXPECT_EQ(withBlocks->NumParamBlockDescs(), 1);
        EXPECT_NE(withBlocks->GetParamBlockDescByID(0), nullptr);
    }
}

TEST_F(ClassDescriptors, AreTakenByTheHostsDirectory) {
    for (ClassDesc* descriptor : plugin::ClassDescriptors()) {
        EXPECT_TRUE(Host().classes.Add(descriptor));
    }
    const host::Owned<effect::PSDOutput> made(static_cast<effect::PSDOutput*>(
        Host().classes.CreateInstance(RENDER_EFFECT_CLASS_ID, effect::psdOutputClassID)));
    EXPECT_NE(made, nullptr);
}

}  // namespace
