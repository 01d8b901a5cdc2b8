#include "host/vray_frame_buffer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>

#include "host/host_renderer.h"

namespace {

using testing::ElementsAre;

// 3 x 2 pixels.
constexpr int WIDTH = 3;
constexpr int HEIGHT = 2;

// Component c of the pixel of number p is `start` + p / 16 + c / 128.
std::shared_ptr<host::ImageBitmap> Image(int components, float start, bool hasAlpha = true,
                                         int width = WIDTH) {
    host::ImageFormat format{width, HEIGHT, hasAlpha};
    format.components = components;
    std::vector<float> values;
    for (int pixel = 0; pixel < width * HEIGHT; ++pixel) {
        for (int component = 0; component < components; ++component) {
            values.push_back(start + static_cast<float>(pixel) / 16 +
                             static_cast<float>(component) / 128);
        }
    }
    return host::ImageBitmap::FromFloat(format, std::move(values));
}

std::array<float, 4> Units(const BMM_Color_fl& pixel) {
    return {pixel.r, pixel.g, pixel.b, pixel.a};
}

class VRayFrame : public testing::Test {
  protected:
    void SetUp() override { frame.BeginFrame(WIDTH, HEIGHT); }
    void Add(int alias, std::shared_ptr<host::ImageBitmap> image) {
        ASSERT_TRUE(frame.AddChannel({alias, RDCT_3FLOAT, "name", std::move(image)}));
    }
    // The pixel (1, 1) of the channel, whose number is 4.
    BMM_Color_fl Pixel(int channel) {
        BMM_Color_fl pixel{-1.0F, -1.0F, -1.0F, -1.0F};
        EXPECT_TRUE(frame.GetPixels(channel, 0, {1, 1, 2, 2, 1, 1, 0, 0}, VRAY_PIXELS_FLOAT,
                                    sizeof(pixel), &pixel, 0, 0, 0));
        return pixel;
    }

    host::VRayFrameBuffer frame;
};

TEST_F(VRayFrame, IsReachedThroughTheRenderer) {
    const host::Owned<host::HostRenderer> renderer(new host::HostRenderer(VRAY_CLASS_ID));
    Renderer& asRenderer = *renderer;
    EXPECT_EQ(asRenderer.GetInterface(VRAY_FRAME_BUFFER_INTERFACE), nullptr);
    const auto shared = std::make_shared<host::VRayFrameBuffer>();
    renderer->SetFrameBuffer(shared);
    auto* buffer =
        static_cast<IVRayFrameBuffer*>(asRenderer.GetInterface(VRAY_FRAME_BUFFER_INTERFACE));
    ASSERT_EQ(buffer, shared.get());
    EXPECT_EQ(asRenderer.GetInterface(Interface_ID(1, 2)), nullptr);
    EXPECT_EQ(buffer->GetImage(), nullptr) << "there is no frame yet";
    shared->BeginFrame(WIDTH, HEIGHT);
    ASSERT_TRUE(buffer->GetImage());
    EXPECT_EQ(buffer->GetImage()->GetInterface(1), nullptr);
    auto* pixels = static_cast<IVRayPixelBuffer*>(
        buffer->GetImage()->GetInterface(VRAY_PIXEL_BUFFER_INTERFACE));
    ASSERT_TRUE(pixels);
    EXPECT_EQ(pixels->GetWidth(), WIDTH);
    EXPECT_EQ(pixels->GetHeight(), HEIGHT);
    shared->EndFrame();
    EXPECT_EQ(buffer->GetImage(), nullptr);
    renderer->SetFrameBuffer(nullptr);
    EXPECT_EQ(asRenderer.GetInterface(VRAY_FRAME_BUFFER_INTERFACE), nullptr);
}

TEST_F(VRayFrame, OtherRenderersHaveNone) {
    const host::Owned<host::HostRenderer> renderer(new host::HostRenderer(CORONA_CLASS_ID));
    renderer->SetFrameBuffer(std::make_shared<host::VRayFrameBuffer>());
    EXPECT_EQ(renderer->GetInterface(VRAY_FRAME_BUFFER_INTERFACE), nullptr);
}

TEST_F(VRayFrame, DescribesItsChannels) {
    ASSERT_TRUE(frame.AddChannel({126, RDCT_3FLOAT, "RGB color", Image(3, 0)}));
    ASSERT_TRUE(frame.AddChannel({117, RDCT_FLOAT, "Z-Depth \xc3\xa9", Image(1, 0)}));
    EXPECT_EQ(frame.GetNumChannels(), 2);
    VRayChannelDescription description;
    ASSERT_TRUE(frame.DescribeChannel(1, description));
    EXPECT_EQ(description.alias, 117);
    EXPECT_EQ(description.type, RDCT_FLOAT);
    EXPECT_STREQ(description.name, "Z-Depth \xc3\xa9");
    EXPECT_FALSE(frame.DescribeChannel(2, description));
    EXPECT_FALSE(frame.DescribeChannel(-1, description));
    EXPECT_EQ(description.alias, 117);
    EXPECT_EQ(frame.FindChannel(117), 1);
    EXPECT_EQ(frame.FindChannel(126), 0);
    EXPECT_EQ(frame.FindChannel(125), -1);
}

TEST_F(VRayFrame, TakesOnlyImagesOfItsSize) {
    EXPECT_FALSE(frame.AddChannel({126, RDCT_3FLOAT, "", nullptr}));
    EXPECT_FALSE(frame.AddChannel({126, RDCT_3FLOAT, "", Image(3, 0, true, WIDTH + 1)}));
    frame.EndFrame();
    EXPECT_FALSE(frame.AddChannel({126, RDCT_3FLOAT, "", Image(3, 0)}));
    EXPECT_EQ(frame.GetNumChannels(), 0);
}

TEST_F(VRayFrame, ANewFrameStartsWithoutChannels) {
    Add(126, Image(4, 0));
    frame.BeginFrame(5, 7);
    EXPECT_EQ(frame.GetNumChannels(), 0);
    EXPECT_EQ(frame.GetWidth(), 5);
    EXPECT_EQ(frame.GetHeight(), 7);
}

TEST_F(VRayFrame, AnswersTheColourMappingAsItWasSet) {
    EXPECT_EQ(frame.GetProperty(VRAY_PROPERTY_COLOR_MAPPED), 0U);
    frame.SetColorMapped(3);
    EXPECT_EQ(frame.GetProperty(VRAY_PROPERTY_COLOR_MAPPED), 3U);
    EXPECT_EQ(frame.GetProperty(124), 0U);
}

TEST_F(VRayFrame, AChannelWithAnAlphaGivesItsOwn) {
    Add(126, Image(4, 0.0F));
    Add(125, Image(1, 0.5F));
    EXPECT_THAT(Units(Pixel(0)),
                ElementsAre(0.25F, 0.25F + 1.0F / 128, 0.25F + 2.0F / 128, 0.25F + 3.0F / 128));
}

TEST_F(VRayFrame, AChannelWithoutAnAlphaGivesTheAlphaChannels) {
    Add(126, Image(4, 0.0F));
    Add(101, Image(3, 0.125F));
    Add(125, Image(1, 0.5F));
    EXPECT_THAT(Units(Pixel(1)),
                ElementsAre(0.375F, 0.375F + 1.0F / 128, 0.375F + 2.0F / 128, 0.75F));
}

TEST_F(VRayFrame, WithoutAnAlphaChannelThePicturesAlphaIsTaken) {
    Add(101, Image(3, 0.125F));
    Add(102, Image(4, 0.125F, false));
    Add(126, Image(4, 0.0F));
    EXPECT_EQ(Pixel(0).a, 0.25F + 3.0F / 128);
    EXPECT_EQ(Pixel(1).a, 0.25F + 3.0F / 128) << "its fourth component means nothing";
}

TEST_F(VRayFrame, WithoutAnyAlphaItIsOne) {
    Add(101, Image(3, 0.0F));
    Add(126, Image(4, 0.0F, false));
    EXPECT_EQ(Pixel(0).a, 1.0F);
    EXPECT_EQ(Pixel(1).a, 1.0F);
    std::array<BMM_Color_64, WIDTH> row{};
    ASSERT_TRUE(frame.GetPixels(0, 0, {0, 1, WIDTH, 2, WIDTH, 1, 0, 0}, VRAY_PIXELS_16, sizeof(row),
                                row.data(), 0, -1, 0));
    EXPECT_EQ(row[1].a, 65535);
    EXPECT_EQ(row[1].r, 16384);
}

TEST_F(VRayFrame, AChannelOfOneValueGivesItInAllColours) {
    Add(125, Image(1, 0.5F));
    EXPECT_THAT(Units(Pixel(0)), testing::Each(0.75F));
}

TEST_F(VRayFrame, ARegionMayHaveSeveralRows) {
    Add(126, Image(4, 0.0F));
    std::array<BMM_Color_fl, 4> pixels{};
    ASSERT_TRUE(frame.GetPixels(0, 0, {1, 0, 3, 2, 2, 2, 0, 0}, VRAY_PIXELS_FLOAT, sizeof(pixels),
                                pixels.data(), 0, 0, 0));
    EXPECT_THAT((std::array{pixels[0].r, pixels[1].r, pixels[2].r, pixels[3].r}),
                ElementsAre(1.0F / 16, 2.0F / 16, 4.0F / 16, 5.0F / 16));
}

TEST_F(VRayFrame, ALongRowHasItsAlphaToTheEnd) {
    frame.BeginFrame(1000, HEIGHT);
    Add(101, Image(3, 0.0F, true, 1000));
    Add(125, Image(1, 0.5F, true, 1000));
    std::vector<BMM_Color_fl> row(1000);
    ASSERT_TRUE(frame.GetPixels(0, 0, {0, 0, 1000, 1, 1000, 1, 0, 0}, VRAY_PIXELS_FLOAT,
                                row.size() * sizeof(row[0]), row.data(), 0, 0, 0));
    for (std::size_t x = 0; x < row.size(); ++x) {
        ASSERT_EQ(row[x].a, 0.5F + static_cast<float>(x) / 16);
    }
}

TEST_F(VRayFrame, ReadsThatCannotBeHadLeaveTheBuffer) {
    Add(126, Image(4, 0.0F));
    const VRayRegion good{0, 0, 3, 1, 3, 1, 0, 0};
    const auto fails = [&](int channel, VRayRegion region, int format, std::size_t bytes) {
        std::array<std::array<float, 4>, 3> buffer{};
        const bool read =
            frame.GetPixels(channel, 0, region, format, bytes, buffer.data(), 0, 0, 0);
        return !read && buffer == std::array<std::array<float, 4>, 3>{};
    };
    constexpr std::size_t BYTES = 3 * sizeof(BMM_Color_fl);
    EXPECT_FALSE(fails(0, good, VRAY_PIXELS_FLOAT, BYTES)) << "the good one";
    EXPECT_TRUE(fails(1, good, VRAY_PIXELS_FLOAT, BYTES));
    EXPECT_TRUE(fails(-1, good, VRAY_PIXELS_FLOAT, BYTES));
    EXPECT_TRUE(fails(0, good, 302, BYTES));
    EXPECT_TRUE(fails(0, good, VRAY_PIXELS_16, BYTES));
    EXPECT_TRUE(fails(0, good, VRAY_PIXELS_FLOAT, BYTES - 1));
    EXPECT_TRUE(fails(0, good, VRAY_PIXELS_FLOAT, BYTES + 1));
    for (const VRayRegion& region :
         {VRayRegion{-1, 0, 2, 1, 3, 1, 0, 0}, VRayRegion{1, 0, 4, 1, 3, 1, 0, 0},
          VRayRegion{0, -1, 3, 0, 3, 1, 0, 0}, VRayRegion{0, 2, 3, 3, 3, 1, 0, 0},
          VRayRegion{0, 0, 3, 1, 2, 1, 0, 0}, VRayRegion{0, 0, 3, 1, 3, 2, 0, 0},
          VRayRegion{0, 0, 0, 1, 0, 1, 0, 0}, VRayRegion{0, 0, 3, 0, 3, 0, 0, 0},
          VRayRegion{2, 0, 1, 1, -1, 1, 0, 0}}) {
        EXPECT_TRUE(fails(0, region, VRAY_PIXELS_FLOAT, BYTES));
    }
    EXPECT_FALSE(frame.GetPixels(0, 0, good, VRAY_PIXELS_FLOAT, BYTES, nullptr, 0, 0, 0));
}

}  // namespace
