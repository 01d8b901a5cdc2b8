#include "host/host_renderer.h"

#include <gtest/gtest.h>

#include "host/owned.h"

namespace {

TEST(HostRenderer, VRayHasItsFrameBufferBlock) {
    const host::Owned<host::HostRenderer> renderer(new host::HostRenderer(VRAY_CLASS_ID));
    EXPECT_EQ(renderer->ClassID(), VRAY_CLASS_ID);
    EXPECT_EQ(renderer->SuperClassID(), RENDERER_CLASS_ID);
    EXPECT_EQ(renderer->NumParamBlocks(), 16);
    EXPECT_EQ(renderer->GetParamBlock(14), nullptr);
    EXPECT_EQ(renderer->GetParamBlock(16), nullptr);
    IParamBlock2* block = renderer->GetParamBlock(15);
    ASSERT_TRUE(block);
    EXPECT_EQ(block->GetOwner(), renderer.get());
    for (const ParamID id : std::initializer_list<ParamID>{170, 171, 172, 189, 228, 280}) {
        EXPECT_TRUE(block->SetValue(id, 0, 1));
        EXPECT_EQ(block->GetInt(id), 1);
    }
    EXPECT_FALSE(block->SetValue(173, 0, 1));
}

TEST(HostRenderer, EachVRayHasABlockOfItsOwn) {
    const host::Owned<host::HostRenderer> first(new host::HostRenderer(VRAY_CLASS_ID));
    const host::Owned<host::HostRenderer> second(new host::HostRenderer(VRAY_CLASS_ID));
    first->GetParamBlock(15)->SetValue(171, 0, 800);
    EXPECT_EQ(first->GetParamBlock(15)->GetInt(171), 800);
    EXPECT_EQ(second->GetParamBlock(15)->GetInt(171), 640);
}

TEST(HostRenderer, VRaysSwitchTo32BitsIsSetByAScript) {
    const host::Owned<host::HostRenderer> renderer(new host::HostRenderer(VRAY_CLASS_ID));
    IParamBlock2* block = renderer->GetParamBlock(15);
    EXPECT_EQ(renderer->properties.Evaluate("output_force32bit_3dsmax_vfb")->b, 0);
    EXPECT_TRUE(renderer->properties.Evaluate("output_force32bit_3dsmax_vfb = true"));
    EXPECT_EQ(block->GetInt(280), 1);
    EXPECT_EQ(renderer->properties.Evaluate("output_force32bit_3dsmax_vfb")->b, 1);
    EXPECT_TRUE(renderer->properties.Evaluate("output_force32bit_3dsmax_vfb = false"));
    EXPECT_EQ(block->GetInt(280), 0);
}

TEST(HostRenderer, OtherClassesHaveNoBlock) {
    const host::Owned<host::HostRenderer> renderer(new host::HostRenderer(CORONA_CLASS_ID));
    EXPECT_EQ(renderer->NumParamBlocks(), 0);
    EXPECT_EQ(renderer->GetParamBlock(15), nullptr);
    EXPECT_FALSE(renderer->properties.Evaluate("output_on"));
}

}  // namespace
