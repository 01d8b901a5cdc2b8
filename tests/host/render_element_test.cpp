#include "host/render_element.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vrayframebuffer.h>

#include "host/image_bitmap.h"
#include "host/scene.h"
#include "tests/host/sample_objects.h"

namespace {

using host::RenderElement;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Class_ID DIFFUSE{4, 0};
constexpr Class_ID VRAY_DIFFUSE{0x36315e91, 0x50e55dbd};

class RenderElements : public testing::Test {
  protected:
    ~RenderElements() override { elements.Clear(); }
    RenderElement& Add(Class_ID id) { return elements.Add(id, _M("Diffuse")); }

    host::RenderElementManager elements;
};

TEST_F(RenderElements, AnElementHasItsClassAndName) {
    RenderElement& element = Add(DIFFUSE);
    EXPECT_EQ(element.ClassID(), DIFFUSE);
    EXPECT_EQ(element.SuperClassID(), RENDER_ELEMENT_CLASS_ID);
    EXPECT_EQ(MSTR(element.ElementName()), MSTR(_M("Diffuse")));
    EXPECT_TRUE(element.IsEnabled());
    EXPECT_EQ(element.NumParamBlocks(), 0);
    EXPECT_EQ(element.GetParamBlock(0), nullptr);
    IRenderElement& asElement = element;
    EXPECT_EQ(asElement.GetInterface(VRAY_RENDER_ELEMENT_INTERFACE), nullptr);
    EXPECT_EQ(asElement.GetInterface(MULTI_MATTE_INTERFACE), nullptr);
    EXPECT_EQ(asElement.GetInterface(Interface_ID(1, 2)), nullptr);
}

TEST_F(RenderElements, ChangesAreToldToTheDependents) {
    RenderElement& element = Add(DIFFUSE);
    SampleTarget maker;
    maker.ReplaceReference(0, &element);
    element.SetElementName(_M("Other"));
    element.SetEnabled(false);
    EXPECT_EQ(maker.messages, std::vector<Message>(2, Message{&element, REFMSG_CHANGE, PART_ALL}));
    EXPECT_EQ(MSTR(element.ElementName()), MSTR(_M("Other")));
    EXPECT_FALSE(element.IsEnabled());
    element.SetElementName(nullptr);
    EXPECT_EQ(MSTR(element.ElementName()), MSTR());
}

TEST_F(RenderElements, ABitmapComesAndGoes) {
    RenderElement& element = Add(DIFFUSE);
    PBBitmap* picture = nullptr;
    element.GetPBBitmap(picture);
    EXPECT_EQ(picture, nullptr);
    auto image = host::ImageBitmap::FromFloat({1, 1}, {0.0F, 0.0F, 0.0F, 1.0F});
    Bitmap* bitmap = image.get();
    element.SetBitmap(std::move(image));
    element.GetPBBitmap(picture);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->bm, bitmap);
    element.SetBitmap(nullptr);
    element.GetPBBitmap(picture);
    EXPECT_EQ(picture, nullptr);
}

TEST_F(RenderElements, AVRayElementAnswersForItselfAndHasAnEnablingParameter) {
    IRenderElement& element = Add(VRAY_DIFFUSE);
    EXPECT_TRUE(element.GetInterface(VRAY_RENDER_ELEMENT_INTERFACE));
    ASSERT_EQ(element.NumParamBlocks(), 1);
    IParamBlock2* block = element.GetParamBlock(0);
    EXPECT_EQ(block->GetInt(host::VRAY_ELEMENT_ENABLED), 1);
    EXPECT_EQ(block->GetDesc()->IDtoIndex(host::VRAY_DENOISER_MODE), -1);
    EXPECT_EQ(element.GetParamBlock(1), nullptr);
}

TEST_F(RenderElements, TheDenoiserHasAModeBesides) {
    EXPECT_EQ(Add(VRAY_DENOISER_ELEMENT).GetParamBlock(0)->GetInt(host::VRAY_DENOISER_MODE), 2);
}

TEST_F(RenderElements, TheOptionsAreOneOfVRaysElements) {
    EXPECT_TRUE(host::IsVRayElement(VRAY_OPTIONS_ELEMENT));
    EXPECT_TRUE(host::IsVRayElement(VRAY_ALPHA_ELEMENT));
    EXPECT_FALSE(host::IsVRayElement(DIFFUSE));
}

TEST_F(RenderElements, ParametersAreSetAddedAndTakenAway) {
    RenderElement& element = Add(VRAY_DIFFUSE);
    element.SetParameter(host::VRAY_ELEMENT_ENABLED, 0);
    element.SetParameter(50, 7);
    EXPECT_EQ(element.GetParamBlock(0)->GetInt(host::VRAY_ELEMENT_ENABLED), 0);
    EXPECT_EQ(element.GetParamBlock(0)->GetInt(50), 7);
    element.RemoveParameter(host::VRAY_ELEMENT_ENABLED);
    EXPECT_EQ(element.GetParamBlock(0)->GetDesc()->IDtoIndex(host::VRAY_ELEMENT_ENABLED), -1);
    EXPECT_EQ(element.GetParamBlock(0)->GetInt(50), 7);
    element.RemoveParameter(51);
    element.RemoveParameter(50);
    EXPECT_EQ(element.GetParamBlock(0), nullptr);
    RenderElement& other = Add(DIFFUSE);
    other.SetParameter(1, 3);
    EXPECT_EQ(other.GetParamBlock(0)->GetInt(1), 3);
}

TEST_F(RenderElements, AMultiMatteDescribesItsComponents) {
    host::Scene scene;
    host::Node& gone = scene.AddNode(_M("Gone"));
    host::Node& there = scene.AddNode(_M("There"));
    RenderElement& element = Add(VRAY_MULTI_MATTE_ELEMENT);
    MultiMatteComponent given;
    given.idOn = true;
    given.id = 5;
    given.isMaterial = true;
    given.include = false;
    INode* nodes[] = {&gone, &there};
    given.nodes.Append(2, nodes);
    element.SetMultiMatte(1, given);
    scene.Remove(gone);

    auto* matte = static_cast<IMultiMatte*>(
        static_cast<IRenderElement&>(element).GetInterface(MULTI_MATTE_INTERFACE));
    ASSERT_TRUE(matte);
    MultiMatteComponent described;
    matte->GetComponent(1, described);
    EXPECT_TRUE(described.idOn);
    EXPECT_EQ(described.id, 5);
    EXPECT_TRUE(described.isMaterial);
    EXPECT_FALSE(described.include);
    ASSERT_EQ(described.nodes.Count(), 1);
    EXPECT_EQ(described.nodes[0], &there);
    for (const int empty : {0, 2, 3, -1}) {
        matte->GetComponent(empty, described);
        EXPECT_FALSE(described.idOn);
        EXPECT_EQ(described.nodes.Count(), 0);
        EXPECT_TRUE(described.include);
    }
}

TEST_F(RenderElements, AManagerListsItsElementsInTheirOrder) {
    RenderElement& first = elements.Add(DIFFUSE, _M("a"));
    RenderElement& second = elements.Add(DIFFUSE, _M("b"));
    elements.Add(VRAY_DIFFUSE, _M("b"));
    EXPECT_EQ(elements.NumRenderElements(), 3);
    EXPECT_EQ(elements.GetRenderElement(0), &first);
    EXPECT_EQ(elements.GetRenderElement(3), nullptr);
    EXPECT_EQ(elements.GetRenderElement(-1), nullptr);
    EXPECT_EQ(elements.Find(_M("b")), &second);
    EXPECT_EQ(elements.Find(_M("c")), nullptr);
}

TEST_F(RenderElements, AnElementThatGoesTellsItsDependents) {
    RenderElement& first = elements.Add(DIFFUSE, _M("a"));
    RenderElement& second = elements.Add(VRAY_DIFFUSE, _M("b"));
    SampleTarget maker;
    maker.ReplaceReference(0, &second);
    maker.onMessage = [&](ReferenceTarget*, PartID&, RefMessage) {
        EXPECT_EQ(elements.Find(_M("b")), nullptr);
        return REF_SUCCEED;
    };
    EXPECT_TRUE(elements.Remove(&second));
    EXPECT_THAT(maker.messages, ElementsAre(Message{&second, REFMSG_TARGET_DELETED, PART_ALL}));
    EXPECT_EQ(maker.GetReference(0), nullptr);
    EXPECT_FALSE(elements.Remove(nullptr));
    EXPECT_EQ(elements.GetRenderElement(0), &first);
    EXPECT_EQ(elements.NumRenderElements(), 1);
}

}  // namespace
