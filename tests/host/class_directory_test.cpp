#include "host/class_directory.h"

#include <gtest/gtest.h>

#include "host/application.h"
#include "host/host_renderer.h"
#include "tests/host/recording_format.h"

namespace {

class RendererDesc : public ClassDesc {
  public:
    int IsPublic() override { return 1; }
    void* Create(BOOL) override { return new host::HostRenderer(ClassID()); }
    const MCHAR* ClassName() override { return _M("Renderer"); }
    SClass_ID SuperClassID() override { return RENDERER_CLASS_ID; }
    Class_ID ClassID() override { return Class_ID(1, 2); }
    const MCHAR* Category() override { return _M(""); }
};

TEST(ClassDirectory, AClassIsFoundByBothItsIds) {
    host::ClassDirectory directory;
    RendererDesc desc;
    ASSERT_TRUE(directory.Add(&desc));
    EXPECT_EQ(directory.Find(RENDERER_CLASS_ID, Class_ID(1, 2)), &desc);
    EXPECT_EQ(directory.Find(RENDER_EFFECT_CLASS_ID, Class_ID(1, 2)), nullptr);
    EXPECT_EQ(directory.Find(RENDERER_CLASS_ID, Class_ID(2, 1)), nullptr);
}

TEST(ClassDirectory, AClassIsAddedOnce) {
    host::ClassDirectory directory;
    RendererDesc desc;
    RendererDesc again;
    EXPECT_TRUE(directory.Add(&desc));
    EXPECT_FALSE(directory.Add(&again));
    EXPECT_FALSE(directory.Add(nullptr));
    EXPECT_EQ(directory.Classes().size(), 1U);
}

TEST(ClassDirectory, ClassesOfOneKindAreListedInTheirOrder) {
    host::ClassDirectory directory;
    RecordingFormatDesc second(BMMIO_WRITER, 2);
    RecordingFormatDesc first(BMMIO_WRITER, 1);
    RendererDesc renderer;
    for (ClassDesc* desc : std::initializer_list<ClassDesc*>{&second, &renderer, &first})
        directory.Add(desc);
    EXPECT_EQ(directory.OfSuperClass(BMM_IO_CLASS_ID), (std::vector<ClassDesc*>{&second, &first}));
    EXPECT_EQ(directory.OfSuperClass(RENDERER_CLASS_ID), std::vector<ClassDesc*>{&renderer});
    EXPECT_TRUE(directory.OfSuperClass(RENDER_EFFECT_CLASS_ID).empty());
}

TEST(ClassDirectory, CreateInstanceMakesAnObjectOfTheClass) {
    host::ClassDirectory directory;
    RendererDesc desc;
    directory.Add(&desc);
    const host::Owned<host::HostRenderer> renderer(static_cast<host::HostRenderer*>(
        directory.CreateInstance(RENDERER_CLASS_ID, Class_ID(1, 2))));
    ASSERT_TRUE(renderer);
    EXPECT_EQ(renderer->ClassID(), Class_ID(1, 2));
    EXPECT_EQ(directory.CreateInstance(RENDERER_CLASS_ID, Class_ID(3, 4)), nullptr);
}

}  // namespace
