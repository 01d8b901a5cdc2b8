#include "command/flat_reading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/failure.h"
#include "tests/command/pass_samples.h"

namespace command {
namespace {

using pass_samples::Always;
using pass_samples::Sample;
using testing::ElementsAre;

// Counts how often its rows are read, and what is asked for.
class CountingFile : public RenderFile {
  public:
    explicit CountingFile(const std::string& fileBytes)
        : bytes(fileBytes), file(OpenRenderFile("a.exr", bytes.data(), bytes.size())) {}

    const Description& GetDescription() const override { return file->GetDescription(); }
    Picture Read(const Beauty& beauty) override { return file->Read(beauty); }
    void ReadRows(std::size_t framePart, std::span<const ChannelRef> channels,
                  const RowConsumer& consumer) override {
        ++passes;
        for (const ChannelRef& ref : channels)
            asked.push_back(GetDescription().layers[ref.layer].channels[ref.channel].name);
        file->ReadRows(framePart, channels, consumer);
    }

    ChannelRef Channel(const std::string& name) const {
        const auto& layers = GetDescription().layers;
        for (std::size_t layer = 0; layer < layers.size(); ++layer) {
            for (std::size_t i = 0; i < layers[layer].channels.size(); ++i) {
                if (layers[layer].channels[i].name == name) return {layer, i};
            }
        }
        throw std::logic_error("no channel " + name);
    }

    int passes = 0;
    std::vector<std::string> asked;

  private:
    std::string bytes;
    std::unique_ptr<RenderFile> file;
};

std::vector<float> PixelAt(host::ImageBitmap& image, int x, int y) {
    BMM_Color_fl color{};
    EXPECT_EQ(image.Storage()->GetLinearPixels(x, y, 1, &color), 1);
    return {color.r, color.g, color.b, color.a};
}

std::string Colors() {
    return Sample(3, 2)
        .Half("R", [](int x, int) { return x / 4.0; })
        .Half("G", Always(0.5))
        .Half("B", [](int, int y) { return y / 2.0; })
        .Float("Z", Always(8))
        .Unsigned("objectID", [](int x, int) { return x; })
        .Bytes();
}

TEST(FlatReading, AllImagesAndFragmentsComeOfOnePass) {
    CountingFile file(Colors());
    FlatReading reading(file, 0);
    EXPECT_FALSE(reading.HasImages());
    const std::size_t picture =
        reading.AddImage({file.Channel("R"), file.Channel("G"), file.Channel("B"), {}});
    const std::size_t depth = reading.AddImage({file.Channel("Z"), {}, {}, {}});
    const std::size_t ids = reading.AddImage({file.Channel("objectID"), {}, {}, {}});
    EXPECT_TRUE(reading.HasImages());
    host::FragmentBuffer buffer(3, 2, BMM_CHAN_NODE_ID | BMM_CHAN_COVERAGE);
    FragmentBuilder builder(buffer, {});
    NumberSet numbers;
    reading.MakeFragments(
        {.objectID = file.Channel("objectID"), .depth = file.Channel("Z"), .picture = picture},
        builder, &numbers, nullptr);
    reading.Read();
    EXPECT_EQ(file.passes, 1);
    EXPECT_THAT(file.asked, testing::UnorderedElementsAre("R", "G", "B", "Z", "objectID"));
    EXPECT_THAT(PixelAt(*reading.TakeImage(picture, 1.0F), 2, 1),
                ElementsAre(0.5F, 0.5F, 0.5F, 1.0F));
    EXPECT_THAT(PixelAt(*reading.TakeImage(depth, 1.0F), 0, 0), ElementsAre(8, 8, 8, 1));
    EXPECT_THAT(PixelAt(*reading.TakeImage(ids, 1.0F), 2, 0), ElementsAre(2, 2, 2, 1));
    EXPECT_TRUE(buffer.IsComplete());
    EXPECT_EQ(numbers.List(10), "1-2");
}

TEST(FlatReading, TheSameChannelInAllColoursIsGrey) {
    CountingFile file(Colors());
    FlatReading reading(file, 0);
    const ChannelRef green = file.Channel("G");
    const std::size_t image = reading.AddImage({green, green, green, {}});
    reading.Read();
    const auto bitmap = reading.TakeImage(image, 1.0F);
    EXPECT_EQ(bitmap->Storage()->Components(), 1);
    EXPECT_THAT(file.asked, ElementsAre("G"));
}

TEST(FlatReading, AMissingColourBeforeAnotherIsBlack) {
    CountingFile file(Colors());
    FlatReading reading(file, 0);
    const std::size_t blue = reading.AddImage({{}, {}, file.Channel("G"), {}});
    const std::size_t greenMissing =
        reading.AddImage({file.Channel("G"), {}, file.Channel("Z"), {}});
    const std::size_t withAlpha = reading.AddImage({{}, file.Channel("G"), {}, file.Channel("R")});
    reading.Read();
    EXPECT_THAT(PixelAt(*reading.TakeImage(blue, 1.0F), 1, 0), ElementsAre(0, 0, 0.5F, 1));
    EXPECT_THAT(PixelAt(*reading.TakeImage(greenMissing, 1.0F), 1, 0), ElementsAre(0.5F, 0, 8, 1));
    EXPECT_THAT(PixelAt(*reading.TakeImage(withAlpha, 1.0F), 1, 0), ElementsAre(0, 0.5F, 0, 0.25F));
}

TEST(FlatReading, FragmentsHaveThePicturesColours) {
    CountingFile file(Colors());
    FlatReading reading(file, 0);
    const std::size_t picture =
        reading.AddImage({file.Channel("G"), {}, file.Channel("Z"), file.Channel("G")});
    host::FragmentBuffer buffer(3, 2, BMM_CHAN_COLOR | BMM_CHAN_COVERAGE);
    FragmentBuilder builder(buffer, {});
    reading.MakeFragments({.objectID = file.Channel("objectID"), .picture = picture}, builder,
                          nullptr, nullptr);
    reading.Read();
    GBufReader* reader = buffer.CreateReader();
    ASSERT_TRUE(reader->StartLine(0));
    ASSERT_GE(reader->StartPixel(1), 0);
    ASSERT_TRUE(reader->StartNextLayer());
    Color24 color{};
    UBYTE coverage = 0;
    reader->ReadChannelData(GB_COLOR, &color);
    reader->ReadChannelData(GB_COVERAGE, &coverage);
    EXPECT_EQ(coverage, 128);
    EXPECT_NEAR(color.r, 254, 1) << "divided by its coverage";
    EXPECT_EQ(color.g, 0);
    EXPECT_EQ(color.b, 255);
    buffer.DestroyReader(reader);
}

TEST(FlatReading, AnAlphaIsMadeOnlyWherePixelsAreMissing) {
    Sample sample = Sample(3, 1).Half("R", Always(1)).Float("x", Always(1));
    const auto hasAlpha = [&](bool wanted) {
        CountingFile file(sample.Bytes());
        FlatReading reading(file, 0);
        const std::size_t image = reading.AddImage({file.Channel("R"), {}, {}, {}}, wanted);
        reading.Read();
        const auto bitmap = reading.TakeImage(image, 1.0F);
        EXPECT_EQ(PixelAt(*bitmap, 1, 0), (std::vector<float>{1, 1, 1, 1}));
        if (bitmap->Storage()->HasAlpha()) {
            EXPECT_EQ(PixelAt(*bitmap, 0, 0), (std::vector<float>{0, 0, 0, 0}));
        }
        return bitmap->Storage()->HasAlpha() != FALSE;
    };
    EXPECT_FALSE(hasAlpha(true));
    sample.GetPart().data = {1, 0, 2, 0};
    EXPECT_TRUE(hasAlpha(true));
    EXPECT_FALSE(hasAlpha(false));
}

TEST(FlatReading, ValuesThatAreNotFiniteAreCountedByImage) {
    CountingFile file(Sample(2, 1)
                          .Half("R", Always(std::numeric_limits<double>::infinity()))
                          .Half("x", Always(0))
                          .Bytes());
    FlatReading reading(file, 0);
    const std::size_t bad = reading.AddImage({file.Channel("R"), {}, {}, {}});
    const std::size_t good = reading.AddImage({file.Channel("x"), {}, {}, {}});
    reading.Read();
    EXPECT_EQ(reading.NotFinite(bad), 2U);
    EXPECT_EQ(reading.NotFinite(good), 0U);
}

TEST(FlatReading, DamageIsAnError) {
    std::string bytes = Sample(64, 64).Half("R", Always(1)).Bytes();
    bytes.replace(bytes.size() - 16, 16, 16, '\xff');
    CountingFile file(bytes);
    FlatReading reading(file, 0);
    reading.AddImage({file.Channel("R"), {}, {}, {}});
    EXPECT_THROW(reading.Read(), InputError);
}

}  // namespace
}  // namespace command
