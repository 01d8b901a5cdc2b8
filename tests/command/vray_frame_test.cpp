#include "command/vray_frame.h"

#include <gtest/gtest.h>
#include <vrayelements.h>

namespace command {
namespace {

host::Owned<host::ImageBitmap> Image(int components, float value, int width = 2) {
    return host::ImageBitmap::FromFloat(
        {.width = width, .height = 1, .components = components},
        std::vector<float>(static_cast<std::size_t>(width * components), value));
}

VRayChannelDescription Describe(host::VRayFrameBuffer& buffer, int index) {
    VRayChannelDescription description{};
    EXPECT_TRUE(buffer.DescribeChannel(index, description));
    return description;
}

TEST(VRayFrame, BeginsWithThePictureAndItsAlpha) {
    host::VRayFrameBuffer buffer;
    const auto picture = Image(4, 0.5F, 3);
    VRayFrame frame(buffer, *picture);
    frame.AddPicture(nullptr, {});
    EXPECT_EQ(buffer.GetWidth(), 3);
    EXPECT_EQ(buffer.GetHeight(), 1);
    ASSERT_EQ(buffer.GetNumChannels(), 2);
    EXPECT_EQ(Describe(buffer, 0).alias, VRAY_CHANNEL_RGB);
    EXPECT_EQ(Describe(buffer, 0).type, RDCT_3FLOAT);
    EXPECT_EQ(buffer.FindChannel(VRAY_CHANNEL_ALPHA), 1);
    buffer.EndFrame();
    EXPECT_EQ(picture->Storage()->Width(), 3) << "the picture stays its owner's";
}

TEST(VRayFrame, ANameThatAnElementHasIsNoneOfThePictures) {
    host::VRayFrameBuffer buffer;
    const auto picture = Image(4, 0.5F);
    VRayFrame frame(buffer, *picture);
    const std::vector<std::string> names{"mine", "Alpha"};
    frame.AddPicture(nullptr, names);
    frame.AddElement({1, 2}, "Alpha", Image(1, 0.25F));
    EXPECT_STREQ(Describe(buffer, 0).name, "RGB color");
    EXPECT_STREQ(Describe(buffer, 1).name, "");
    EXPECT_EQ(buffer.FindChannel(VRAY_CHANNEL_ALPHA), 1);
    EXPECT_STREQ(Describe(buffer, 2).name, "Alpha");
}

// The alpha that elements without their own show.
float AlphaOfElements(host::ImageBitmap& picture, host::Owned<host::ImageBitmap> alpha) {
    host::VRayFrameBuffer buffer;
    VRayFrame frame(buffer, picture);
    frame.AddPicture(std::move(alpha), {});
    frame.AddElement({1, 2}, "mine", Image(3, 0.25F));
    BMM_Color_fl pixel{};
    const VRayRegion region{1, 0, 2, 1, 1, 1, 0, 0};
    EXPECT_TRUE(buffer.GetPixels(2, 0, region, VRAY_PIXELS_FLOAT, sizeof pixel, &pixel, 0, 0, 0));
    EXPECT_EQ(pixel.r, 0.25F);
    return pixel.a;
}

TEST(VRayFrame, ElementsHaveThePicturesAlpha) {
    const auto picture = host::ImageBitmap::FromFloat({.width = 2, .height = 1},
                                                      {0, 0, 0, 1, 0.125F, 0.125F, 0.125F, 0.75F});
    EXPECT_EQ(AlphaOfElements(*picture, nullptr), 0.75F);
    EXPECT_EQ(AlphaOfElements(*picture, Image(1, 0.5F)), 0.5F) << "the element of the alpha";
}

TEST(VRayFrame, ElementsOfAPictureWithoutAlphaAreOpaque) {
    EXPECT_EQ(AlphaOfElements(*Image(3, 0.125F), nullptr), 1.0F);
    EXPECT_EQ(AlphaOfElements(*Image(1, 0.125F), nullptr), 1.0F);
}

TEST(VRayFrame, AnElementsChannelGoesByItsClassAndName) {
    host::VRayFrameBuffer buffer;
    const auto picture = Image(4, 0.5F);
    VRayFrame frame(buffer, *picture);
    frame.AddPicture(nullptr, {});
    const VRayElementClass& known = VRAY_ELEMENT_CLASSES[2];
    frame.AddElement(known.id, "Reflections \xc3\xbc", Image(3, 0.25F));
    frame.AddElement({1, 2}, "mine", Image(1, 0.25F));
    ASSERT_EQ(buffer.GetNumChannels(), 4);
    EXPECT_EQ(Describe(buffer, 2).alias, known.channel);
    EXPECT_EQ(Describe(buffer, 2).type, RDCT_3FLOAT);
    EXPECT_STREQ(Describe(buffer, 2).name, "Reflections \xc3\xbc");
    EXPECT_EQ(Describe(buffer, 3).alias, VRAY_CHANNEL_OF_NAME);
    EXPECT_EQ(Describe(buffer, 3).type, RDCT_FLOAT);
}

TEST(VRayFrame, AFrameTakesThePlaceOfTheOneBefore) {
    host::VRayFrameBuffer buffer;
    const auto first = Image(4, 0.5F);
    VRayFrame before(buffer, *first);
    before.AddPicture(Image(1, 0.25F), {});
    before.AddElement({1, 2}, "mine", Image(3, 0.25F));
    const auto second = Image(4, 0.5F, 5);
    VRayFrame after(buffer, *second);
    EXPECT_EQ(buffer.GetNumChannels(), 0);
    after.AddPicture(nullptr, {});
    EXPECT_EQ(buffer.GetNumChannels(), 2);
    EXPECT_EQ(buffer.GetWidth(), 5);
}

}  // namespace
}  // namespace command
