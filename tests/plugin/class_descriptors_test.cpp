#include "plugin/class_descriptors.h"

#include "effect/psd_output_layer.h"
#include "plugin/library.h"
#include "tests/effect/effect_fixture.h"

namespace {

// The class as the host sees it.
struct Facts {
    int isPublic;
    std::string className;
    SClass_ID superClass;
    Class_ID id;
    std::string category;
    std::string internalName;

    friend bool operator==(const Facts&, const Facts&) = default;
};

void PrintTo(const Facts& facts, std::ostream* out) {
    *out << facts.isPublic << " \"" << facts.className << "\" " << facts.superClass << std::hex
         << " (" << facts.id.PartA() << ", " << facts.id.PartB() << ") \"" << facts.category
         << "\" \"" << facts.internalName << '"';
}

// Texts share one buffer, so each is copied at once.
Facts FactsOf(ClassDesc& desc) {
    Facts facts;
    facts.isPublic = desc.IsPublic();
    facts.className = host::ToUtf8(desc.ClassName());
    facts.superClass = desc.SuperClassID();
    facts.id = desc.ClassID();
    facts.category = host::ToUtf8(desc.Category());
    facts.internalName = host::ToUtf8(desc.InternalName());
    return facts;
}

class ClassDescriptors : public EffectTest {
  protected:
    static ClassDesc& Offered(std::size_t i) { return *plugin::ClassDescriptors()[i]; }
};

TEST_F(ClassDescriptors, TheEffectIsPublic) {
    EXPECT_EQ(FactsOf(Offered(0)),
              (Facts{1, "veltrane", 4240, Class_ID(0x70068609, 0x01d5d297), "Effect", "veltrane"}));
}

TEST_F(ClassDescriptors, ItsLayersAreNotAndAreMadeByCodeAlone) {
    EXPECT_EQ(FactsOf(Offered(1)),
              (Facts{0, "veltraneRELayer", 512, Class_ID(0x347c6bc4, 0x153540b4), "",
                     "veltraneRELayer"}));
}

TEST_F(ClassDescriptors, AWriterOfNothingIsOffered) {
    EXPECT_EQ(FactsOf(Offered(2)),
              (Facts{1, "NullExport", 2864, Class_ID(0x4e56f5c2, 0x1421c9be), "", "NullExport"}));
}

TEST_F(ClassDescriptors, AnotherIsThereAndNotOffered) {
    ClassDesc& other = plugin::PSDExportBitmapIODescriptor();
    EXPECT_EQ(FactsOf(other), (Facts{1, "PSDExport", 2864, Class_ID(0x7b721906, 0x6d3226df), "",
                                     "PSDExportBitmapIO"}));
    ASSERT_EQ(plugin::ClassDescriptors().size(), 3U);
    for (ClassDesc* descriptor : plugin::ClassDescriptors())
        EXPECT_NE(descriptor, &other);
}

TEST_F(ClassDescriptors, AllAreOfTheLibrarysModule) {
    for (ClassDesc* descriptor : plugin::ClassDescriptors())
        EXPECT_EQ(descriptor->HInstance(), plugin::Module());
    EXPECT_EQ(plugin::PSDExportBitmapIODescriptor().HInstance(), plugin::Module());
    EXPECT_NE(plugin::Module(), nullptr);
}

TEST_F(ClassDescriptors, CreateIsTheSameWhileLoading) {
    for (const BOOL loading : {FALSE, TRUE}) {
        const host::Owned<effect::PSDOutput> output(
            static_cast<effect::PSDOutput*>(Offered(0).Create(loading)));
        ASSERT_NE(output->pblock, nullptr);
        EXPECT_EQ(output->ClassID(), Offered(0).ClassID());
        const host::Owned<effect::PSDOutputLayer> layer(
            static_cast<effect::PSDOutputLayer*>(Offered(1).Create(loading)));
        ASSERT_NE(layer->pblock, nullptr);
        EXPECT_EQ(layer->ClassID(), Offered(1).ClassID());
        const std::unique_ptr<BitmapIO> writer(static_cast<BitmapIO*>(Offered(2).Create(loading)));
        EXPECT_EQ(host::ToUtf8(writer->Ext(0)), "xxx");
        const std::unique_ptr<BitmapIO> other(
            static_cast<BitmapIO*>(plugin::PSDExportBitmapIODescriptor().Create(loading)));
        EXPECT_EQ(host::ToUtf8(other->Ext(0)), "PSD");
    }
}

TEST_F(ClassDescriptors, EachCreateMakesAnObjectOfItsOwn) {
    const std::unique_ptr<BitmapIO> first(static_cast<BitmapIO*>(Offered(2).Create()));
    const std::unique_ptr<BitmapIO> second(static_cast<BitmapIO*>(Offered(2).Create()));
    EXPECT_NE(first, second);
}

TEST_F(ClassDescriptors, TheEffectAndItsLayersHaveOneBlockEach) {
    const auto blocks = [](ClassDesc& descriptor) {
        auto* withBlocks = dynamic_cast<ClassDesc2*>(&descriptor);
        return withBlocks ? withBlocks->NumParamBlockDescs() : -1;
    };
    EXPECT_EQ(blocks(Offered(0)), 1);
    EXPECT_EQ(blocks(Offered(1)), 1);
    EXPECT_EQ(blocks(Offered(2)), 0);
    EXPECT_EQ(blocks(plugin::PSDExportBitmapIODescriptor()), 0);
}

TEST_F(ClassDescriptors, AreTakenByTheHostsDirectory) {
    for (ClassDesc* descriptor : plugin::ClassDescriptors())
        EXPECT_TRUE(Host().classes.Add(descriptor));
    EXPECT_TRUE(Host().classes.Add(&plugin::PSDExportBitmapIODescriptor()));
    const host::Owned<effect::PSDOutput> made(static_cast<effect::PSDOutput*>(
        Host().classes.CreateInstance(RENDER_EFFECT_CLASS_ID, effect::psdOutputClassID)));
    EXPECT_NE(made, nullptr);
    EXPECT_EQ(Host().classes.OfSuperClass(BMM_IO_CLASS_ID),
              (std::vector<ClassDesc*>{&Offered(2), &plugin::PSDExportBitmapIODescriptor()}));
}

}  // namespace
