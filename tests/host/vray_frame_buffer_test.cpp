#include "host/vray_frame_buffer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>

#include "host/host_renderer.h"
#include "host/text.h"
#include "tests/host/temporary_folder.h"

namespace {

using testing::ElementsAre;

// 3 x 2 pixels.
constexpr int WIDTH = 3;
constexpr int HEIGHT = 2;

// Component c of the pixel of number p is `start` + p / 16 + c / 128.
std::shared_ptr<host::ImageBitmap> ChannelImage(int components, float start, bool hasAlpha = true,
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
    ASSERT_TRUE(frame.AddChannel({126, RDCT_3FLOAT, "RGB color", ChannelImage(3, 0)}));
    ASSERT_TRUE(frame.AddChannel({117, RDCT_FLOAT, "Z-Depth \xc3\xa9", ChannelImage(1, 0)}));
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
    EXPECT_FALSE(frame.AddChannel({126, RDCT_3FLOAT, "", ChannelImage(3, 0, true, WIDTH + 1)}));
    frame.EndFrame();
    EXPECT_FALSE(frame.AddChannel({126, RDCT_3FLOAT, "", ChannelImage(3, 0)}));
    EXPECT_EQ(frame.GetNumChannels(), 0);
}

TEST_F(VRayFrame, ANewFrameStartsWithoutChannels) {
    Add(126, ChannelImage(4, 0));
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
    Add(126, ChannelImage(4, 0.0F));
    Add(125, ChannelImage(1, 0.5F));
    EXPECT_THAT(Units(Pixel(0)),
                ElementsAre(0.25F, 0.25F + 1.0F / 128, 0.25F + 2.0F / 128, 0.25F + 3.0F / 128));
}

TEST_F(VRayFrame, AChannelWithoutAnAlphaGivesTheAlphaChannels) {
    Add(126, ChannelImage(4, 0.0F));
    Add(101, ChannelImage(3, 0.125F));
    Add(125, ChannelImage(1, 0.5F));
    EXPECT_THAT(Units(Pixel(1)),
                ElementsAre(0.375F, 0.375F + 1.0F / 128, 0.375F + 2.0F / 128, 0.75F));
}

TEST_F(VRayFrame, WithoutAnAlphaChannelThePicturesAlphaIsTaken) {
    Add(101, ChannelImage(3, 0.125F));
    Add(102, ChannelImage(4, 0.125F, false));
    Add(126, ChannelImage(4, 0.0F));
    EXPECT_EQ(Pixel(0).a, 0.25F + 3.0F / 128);
    EXPECT_EQ(Pixel(1).a, 0.25F + 3.0F / 128) << "its fourth component means nothing";
}

TEST_F(VRayFrame, WithoutAnyAlphaItIsOne) {
    Add(101, ChannelImage(3, 0.0F));
    Add(126, ChannelImage(4, 0.0F, false));
    EXPECT_EQ(Pixel(0).a, 1.0F);
    EXPECT_EQ(Pixel(1).a, 1.0F);
    std::array<BMM_Color_64, WIDTH> row{};
    ASSERT_TRUE(frame.GetPixels(0, 0, {0, 1, WIDTH, 2, WIDTH, 1, 0, 0}, VRAY_PIXELS_16, sizeof(row),
                                row.data(), 0, -1, 0));
    EXPECT_EQ(row[1].a, 65535);
    EXPECT_EQ(row[1].r, 16384);
}

TEST_F(VRayFrame, AChannelOfOneValueGivesItInAllColours) {
    Add(125, ChannelImage(1, 0.5F));
    EXPECT_THAT(Units(Pixel(0)), testing::Each(0.75F));
}

TEST_F(VRayFrame, ARegionMayHaveSeveralRows) {
    Add(126, ChannelImage(4, 0.0F));
    std::array<BMM_Color_fl, 4> pixels{};
    ASSERT_TRUE(frame.GetPixels(0, 0, {1, 0, 3, 2, 2, 2, 0, 0}, VRAY_PIXELS_FLOAT, sizeof(pixels),
                                pixels.data(), 0, 0, 0));
    EXPECT_THAT((std::array{pixels[0].r, pixels[1].r, pixels[2].r, pixels[3].r}),
                ElementsAre(1.0F / 16, 2.0F / 16, 4.0F / 16, 5.0F / 16));
}

TEST_F(VRayFrame, ALongRowHasItsAlphaToTheEnd) {
    frame.BeginFrame(1000, HEIGHT);
    Add(101, ChannelImage(3, 0.0F, true, 1000));
    Add(125, ChannelImage(1, 0.5F, true, 1000));
    std::vector<BMM_Color_fl> row(1000);
    ASSERT_TRUE(frame.GetPixels(0, 0, {0, 0, 1000, 1, 1000, 1, 0, 0}, VRAY_PIXELS_FLOAT,
                                row.size() * sizeof(row[0]), row.data(), 0, 0, 0));
    for (std::size_t x = 0; x < row.size(); ++x) {
        ASSERT_EQ(row[x].a, 0.5F + static_cast<float>(x) / 16);
    }
}

TEST_F(VRayFrame, ReadsThatCannotBeHadLeaveTheBuffer) {
    Add(126, ChannelImage(4, 0.0F));
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

// A look that swaps red and blue, doubles green and claims the alpha for itself.
host::VRayLook SampleLook() {
    return {[](BMM_Color_fl* pixels, int count) {
                for (int i = 0; i < count; ++i) {
                    pixels[i] = {pixels[i].b, 2 * pixels[i].g, pixels[i].r, 7.0F};
                }
            },
            [](std::ostream& stream) {
                stream << "table";
                return true;
            }};
}

class VRayLookTest : public VRayFrame {
  protected:
    VRayLookTest() { frame.SetLook(SampleLook()); }
    // One row of pixels, as a channel of the type.
    void AddRow(std::vector<float> components, VRayChannelType type = RDCT_3FLOAT,
                int componentsOfAPixel = 4) {
        const int width = static_cast<int>(components.size()) / componentsOfAPixel;
        if (frame.GetWidth() != width || frame.GetHeight() != 1) {
            frame.BeginFrame(width, 1);
        }
        host::ImageFormat format{width, 1};
        format.components = componentsOfAPixel;
        ASSERT_TRUE(frame.AddChannel(
            {101, type, "", host::ImageBitmap::FromFloat(format, std::move(components))}));
    }
    template <class Pixel>
    std::vector<Pixel> Row(int channel, int readFlag, int format) {
        const int width = frame.GetWidth();
        std::vector<Pixel> row(static_cast<std::size_t>(width));
        EXPECT_TRUE(frame.GetPixels(channel, 0, {0, 0, width, 1, width, 1, 0, 0}, format,
                                    row.size() * sizeof(Pixel), row.data(), 0, readFlag, 0));
        return row;
    }
    std::vector<std::array<float, 4>> Floats(int channel = 0, int readFlag = 0) {
        std::vector<std::array<float, 4>> units;
        for (const auto& pixel : Row<BMM_Color_fl>(channel, readFlag, VRAY_PIXELS_FLOAT)) {
            units.push_back(Units(pixel));
        }
        return units;
    }
};

using Unit = std::array<float, 4>;

TEST_F(VRayLookTest, LiesOverThePixels) {
    AddRow({0.125F, 0.25F, 0.5F, 1.0F, 4.0F, -1.0F, 0.0F, 1.0F});
    EXPECT_THAT(Floats(), ElementsAre(Unit{0.5F, 0.5F, 0.125F, 1.0F}, Unit{0, -2, 4, 1}));
}

TEST_F(VRayLookTest, IsAppliedToStraightColours) {
    // Green squared tells what the look saw: 0.5 of a pixel that covers a quarter.
    frame.SetLook({[](BMM_Color_fl* pixels, int count) {
                       for (int i = 0; i < count; ++i) {
                           pixels[i].g *= pixels[i].g;
                       }
                   },
                   SampleLook().writeTable});
    AddRow({0.0F, 0.125F, 0.25F, 0.25F, 0.0F, 0.5F, 0.25F, 0.0F, 0.0F, 0.5F, 0.25F, -1.0F});
    EXPECT_THAT(Floats(), ElementsAre(Unit{0, 0.0625F, 0.25F, 0.25F}, Unit{0, 0.25F, 0.25F, 0},
                                      Unit{0, 0.25F, 0.25F, -1}))
        << "without coverage the colours are taken as they are";
}

TEST_F(VRayLookTest, TakesColoursAsTheyAreThatThePicturesAlphaIsNotIn) {
    frame.SetLook({[](BMM_Color_fl* pixels, int count) {
                       for (int i = 0; i < count; ++i) {
                           pixels[i].g *= pixels[i].g;
                       }
                   },
                   SampleLook().writeTable});
    frame.BeginFrame(1, 1);
    ASSERT_TRUE(
        frame.AddChannel({101, RDCT_3FLOAT, "",
                          host::ImageBitmap::FromFloat({.width = 1, .height = 1, .components = 3},
                                                       {0.0F, 0.5F, 0.0F}),
                          false}));
    ASSERT_TRUE(frame.AddChannel(
        {VRAY_CHANNEL_ALPHA, RDCT_FLOAT, "",
         host::ImageBitmap::FromFloat({.width = 1, .height = 1, .components = 1}, {0.25F})}));
    EXPECT_THAT(Floats(), ElementsAre(Unit{0.0F, 0.25F, 0.0F, 0.25F}));
}

TEST_F(VRayLookTest, TakesThePicturesAlphaForAChannelWithoutItsOwn) {
    AddRow({0.25F, 0.5F, 0.125F}, RDCT_3FLOAT, 3);
    ASSERT_TRUE(frame.AddChannel(
        {VRAY_CHANNEL_ALPHA, RDCT_FLOAT, "",
         host::ImageBitmap::FromFloat({.width = 1, .height = 1, .components = 1}, {0.5F})}));
    EXPECT_THAT(Floats(), ElementsAre(Unit{0.125F, 1.0F, 0.25F, 0.5F}));
}

TEST_F(VRayLookTest, IsRoundedAfterItWasApplied) {
    // Below a step of 16 bits before it is divided by the alpha and lifted.
    frame.SetLook({[](BMM_Color_fl* pixels, int count) {
                       for (int i = 0; i < count; ++i) {
                           pixels[i].r *= 65536.0F;
                       }
                   },
                   SampleLook().writeTable});
    AddRow({1.0F / 65536 / 4, 2.0F, -1.0F, 1.0F});
    const auto row = Row<BMM_Color_64>(0, 0, VRAY_PIXELS_16);
    EXPECT_EQ(row[0].r, 16384) << "0.25";
    EXPECT_EQ(row[0].g, 65535);
    EXPECT_EQ(row[0].b, 0);
    EXPECT_EQ(row[0].a, 65535);
}

TEST_F(VRayLookTest, CorrectsLongRowsToTheEndAndEachPixelOnce) {
    constexpr std::size_t PIXELS = 1000;
    std::vector<float> components;
    for (std::size_t pixel = 0; pixel < PIXELS; ++pixel) {
        components.insert(components.end(), {static_cast<float>(pixel), 3.0F, 5.0F, 1.0F});
    }
    AddRow(std::move(components));
    const auto row = Floats();
    const auto row16 = Row<BMM_Color_64>(0, 0, VRAY_PIXELS_16);
    for (std::size_t pixel = 0; pixel < PIXELS; ++pixel) {
        ASSERT_EQ(row[pixel], (Unit{5, 6, static_cast<float>(pixel), 1})) << pixel;
        ASSERT_EQ(row16[pixel].b, pixel == 0 ? 0 : 65535) << pixel;
    }
}

TEST_F(VRayLookTest, OfARegionStartsAtItsLeft) {
    frame.BeginFrame(WIDTH, HEIGHT);
    Add(126, ChannelImage(4, 0.0F, true));
    const BMM_Color_fl plain = [&] {
        BMM_Color_fl pixel{};
        EXPECT_TRUE(frame.GetPixels(0, 0, {1, 1, 2, 2, 1, 1, 0, 0}, VRAY_PIXELS_FLOAT,
                                    sizeof(pixel), &pixel, 0, -1, 0));
        return pixel;
    }();
    EXPECT_EQ(plain.r, 0.25F);
    const BMM_Color_fl looked = Pixel(0);
    EXPECT_NEAR(looked.r, plain.b, 1e-6F);
    EXPECT_NEAR(looked.g, 2 * plain.g, 1e-6F);
    EXPECT_EQ(looked.a, plain.a);
}

TEST_F(VRayLookTest, IsLeftOutWhenItIsNotAskedFor) {
    AddRow({1, 2, 3, 1});
    EXPECT_THAT(Floats(0, -1), ElementsAre(Unit{1, 2, 3, 1}));
    EXPECT_EQ(Row<BMM_Color_64>(0, -1, VRAY_PIXELS_16)[0].g, 65535);
}

TEST_F(VRayLookTest, IsLeftOutOfChannelsOfOtherTypes) {
    for (const VRayChannelType type :
         {RDCT_FLOAT, RDCT_2FLOAT, RDCT_INT, RDCT_3FLOAT_SIGNED, RDCT_LAST}) {
        frame.BeginFrame(1, 1);
        AddRow({1, 2, 3, 1}, type);
        EXPECT_THAT(Floats(), ElementsAre(Unit{1, 2, 3, 1})) << type;
    }
}

TEST_F(VRayLookTest, IsSwitchedByOneOfTheCorrections) {
    AddRow({1, 2, 3, 1});
    auto* corrections = static_cast<IVRayColorCorrections*>(
        frame.GetImage()->GetInterface(VRAY_COLOR_CORRECTIONS_INTERFACE));
    ASSERT_TRUE(corrections);
    for (int index = 0; index < VRAY_COLOR_CORRECTIONS; ++index) {
        EXPECT_EQ(corrections->GetValue(index), index == host::VRAY_LOOK_ON ? 1.0F : 0.0F);
        corrections->SetValue(index, 0.0F);
    }
    EXPECT_THAT(Floats(), ElementsAre(Unit{1, 2, 3, 1}));
    for (int index = 0; index < VRAY_COLOR_CORRECTIONS; ++index) {
        if (index != host::VRAY_LOOK_ON) {
            corrections->SetValue(index, 1.0F);
        }
    }
    corrections->SetValue(host::VRAY_LOOK_ON, 0.5F);
    EXPECT_THAT(Floats(), ElementsAre(Unit{1, 2, 3, 1})) << "half is not on";
    corrections->SetValue(host::VRAY_LOOK_ON, 1.0F);
    EXPECT_THAT(Floats(), ElementsAre(Unit{3, 4, 1, 1}));
}

TEST_F(VRayLookTest, StaysFromFrameToFrame) {
    frame.SetValue(3, 0.25F);
    frame.EndFrame();
    AddRow({1, 2, 3, 1});
    EXPECT_EQ(frame.GetValue(3), 0.25F);
    EXPECT_THAT(Floats(), ElementsAre(Unit{3, 4, 1, 1}));
}

TEST_F(VRayFrame, KeepsCorrectionsThatMeanNothingWithoutALook) {
    EXPECT_EQ(frame.GetValue(host::VRAY_LOOK_ON), 0.0F);
    frame.SetValue(host::VRAY_LOOK_ON, 1.0F);
    EXPECT_EQ(frame.GetValue(host::VRAY_LOOK_ON), 1.0F);
    Add(126, ChannelImage(4, 0.0F));
    EXPECT_EQ(Pixel(0).r, 0.25F);
}

TEST_F(VRayFrame, CorrectionsOutOfRangeAreNone) {
    for (const int index : {-1, VRAY_COLOR_CORRECTIONS, std::numeric_limits<int>::min(),
                            std::numeric_limits<int>::max()}) {
        frame.SetValue(index, 1.0F);
        EXPECT_EQ(frame.GetValue(index), 0.0F);
    }
    for (int index = 0; index < VRAY_COLOR_CORRECTIONS; ++index) {
        EXPECT_EQ(frame.GetValue(index), 0.0F);
    }
}

class SavedCorrectionsTest : public VRayFrame {
  protected:
    bool Save() const { return frame.SaveCorrections(host::FromNativePath(file)); }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path / host::ToNativePath(_M("\u00e9 \U0001f600.cube"));
};

TEST_F(SavedCorrectionsTest, AreTheLooksTable) {
    std::ofstream(file) << "what was there before";
    frame.SetLook(SampleLook());
    frame.SetValue(host::VRAY_LOOK_ON, 0.0F);
    EXPECT_TRUE(Save());
    std::ifstream stream(file, std::ios::binary);
    EXPECT_EQ((std::string{std::istreambuf_iterator<char>(stream), {}}), "table");
}

TEST_F(SavedCorrectionsTest, WithoutALookMakeNoFile) {
    EXPECT_FALSE(Save());
    EXPECT_TRUE(std::filesystem::is_empty(folder.path));
}

TEST_F(SavedCorrectionsTest, LeaveNothingOfATableThatCantBeWritten) {
    host::VRayLook look = SampleLook();
    look.writeTable = [](std::ostream& stream) {
        stream << "half";
        return false;
    };
    frame.SetLook(look);
    EXPECT_FALSE(Save());
    EXPECT_TRUE(std::filesystem::is_empty(folder.path));
    look.writeTable = [](std::ostream& stream) {
        stream.setstate(std::ios::failbit);
        return true;
    };
    frame.SetLook(look);
    EXPECT_FALSE(Save());
    EXPECT_TRUE(std::filesystem::is_empty(folder.path));
}

TEST_F(SavedCorrectionsTest, NeedAPlaceForTheFile) {
    frame.SetLook(SampleLook());
    for (const std::filesystem::path& path :
         {folder.path, folder.path / "missing" / "a.cube", std::filesystem::path()}) {
        EXPECT_FALSE(frame.SaveCorrections(host::FromNativePath(path))) << path;
    }
    EXPECT_TRUE(std::filesystem::is_directory(folder.path));
}

#ifdef __linux__
TEST_F(SavedCorrectionsTest, LeaveADeviceThatIsFull) {
    frame.SetLook(SampleLook());
    EXPECT_FALSE(frame.SaveCorrections(_M("/dev/full")));
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
}
#endif

}  // namespace
