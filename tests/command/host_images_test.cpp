#include "command/host_images.h"

#include <gmock/gmock.h>

#include "command/image_formats.h"
#include "tests/command/image_samples.h"
#include "tests/command/pass_samples.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

using pass_samples::Always;
using pass_samples::Sample;
using testing::ElementsAre;
using testing::IsEmpty;

class HostImagesTest : public FolderTest {
  protected:
    std::vector<std::string> warnings;
    HostImages images{[this](const std::string& text) { warnings.push_back(text); }};
};

BMM_Color_fl PixelOf(host::ImageBitmap& image, int x, int y) {
    BMM_Color_fl pixel{};
    EXPECT_EQ(image.Storage()->GetLinearPixels(x, y, 1, &pixel), 1);
    return pixel;
}

TEST_F(HostImagesTest, OpenEXRIsReadWithItsAlpha) {
    const auto image = images.Load(Write("a.exr", Sample(3, 2)
                                                      .Picture(0.25)
                                                      .Half("A", [](int x, int) { return x * 0.5; })
                                                      .Float("depth.Z", Always(7))
                                                      .Bytes()));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->Storage()->Width(), 3);
    EXPECT_EQ(image->Storage()->Height(), 2);
    EXPECT_TRUE(image->Storage()->HasAlpha());
    EXPECT_EQ(PixelOf(*image, 1, 1).r, 0.25F);
    EXPECT_EQ(PixelOf(*image, 1, 1).a, 0.5F);
    EXPECT_EQ(PixelOf(*image, 2, 0).a, 1.0F);
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(HostImagesTest, OtherFormatsAreReadToo) {
    const auto image = images.Load(Write("a.png", image_samples::Png({1, 1, 4, 8, {0, 0, 0, 51}})));
    ASSERT_NE(image, nullptr);
    EXPECT_NEAR(PixelOf(*image, 0, 0).a, 0.2F, 1e-6F);
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(HostImagesTest, AnImageWithoutAlphaIsOpaqueAndToldOnce) {
    const std::string path = Write("a.png", image_samples::Png({1, 1, 3, 8, {255, 255, 255}}));
    const auto image = images.Load(path);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelOf(*image, 0, 0).a, 1.0F);
    EXPECT_NE(images.Load(path), nullptr);
    EXPECT_THAT(warnings,
                ElementsAre(path + ": it has no alpha, so it counts as opaque everywhere; give an "
                                   "image with the shadow in its alpha"));
}

TEST_F(HostImagesTest, WhyAnImageIsOfNoUseIsTold) {
    const std::string cut =
        Write("a.png", image_samples::Png({1, 1, 4, 8, {0, 0, 0, 51}}).substr(0, 40));
    EXPECT_EQ(images.Load(cut), nullptr);
    EXPECT_THAT(images.FaultOf(cut, 1, 1), testing::StartsWith("damaged or cut short ("));
    const std::string text = Write("a.txt", "text");
    EXPECT_EQ(images.Load(text), nullptr);
    EXPECT_EQ(images.FaultOf(text, 1, 1),
              "not an image that can be read; give an OpenEXR, " + ImageFormatList() + " file");
}

TEST_F(HostImagesTest, AnImageOfAnotherSizeThanTheFramesIsToldSo) {
    const std::string path = Write("a.exr", Sample(3, 2).Picture().Bytes());
    ASSERT_NE(images.Load(path), nullptr);
    EXPECT_EQ(images.FaultOf(path, 3, 4),
              "its size is 3x2 and the frame's 3x4; render it in the frame's size");
}

TEST_F(HostImagesTest, WhatTheHostDidNotEvenAskForIsLookedAt) {
    EXPECT_EQ(images.FaultOf(PathOf("b.exr"), 1, 1), "no such file; check the path");
    EXPECT_EQ(images.FaultOf(Utf8(folder), 1, 1), "a folder, not an image; give a file in it");
    const std::string path = Write("a.exr", Sample(3, 2).Picture().Bytes());
    EXPECT_EQ(images.FaultOf(path, 3, 2), "cannot be loaded; check its path");
}

}  // namespace
}  // namespace command
