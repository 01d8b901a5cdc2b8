// Formats that OpenImageIO reads, and Windows doesn't.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/failure.h"
#include "command/transfer_curve.h"
#include "tests/command/fault_text.h"
#include "tests/command/image_samples.h"
#include "tests/command/pixels.h"

namespace command {
namespace {

using image_samples::Image;
using testing::ElementsAre;
using testing::FloatEq;
using testing::StartsWith;

// What an sRGB value of 8 bits is in linear light.
float Linear(unsigned value) {
    return static_cast<float>(Decode({TransferCurve::Kind::SRGB}, value / 255.0));
}

TEST(OpenImageIODecoder, TgaIsEncodedWithStraightAlpha) {
    const Image image{.channels = 4, .samples = {10, 128, 255, 51}};
    EXPECT_THAT(PixelAt(ReadBytes("a.tga", image_samples::Tga(image)), 0, 0),
                ElementsAre(FloatEq(Linear(10) * 0.2F), FloatEq(Linear(128) * 0.2F), 0.2F, 0.2F));
}

TEST(OpenImageIODecoder, ATgaMayBePremultiplied) {
    const Image image{.channels = 4, .samples = {51, 0, 0, 51}};
    EXPECT_THAT(PixelAt(ReadBytes("a.tga", image_samples::Tga(image, 0, 4)), 0, 0),
                ElementsAre(FloatEq(0.2F), 0.0F, 0.0F, 0.2F));
}

TEST(OpenImageIODecoder, ATgasGammaReplacesTheCurve) {
    const Image image{.samples = {51, 0, 255}};
    EXPECT_THAT(PixelAt(ReadBytes("a.tga", image_samples::Tga(image, 20)), 0, 0),
                ElementsAre(FloatEq(0.04F), 0.0F, 1.0F, 1.0F));
}

TEST(OpenImageIODecoder, RowsOfATgaComeFromTheTop) {
    const Image image{.height = 2, .samples = {255, 255, 255, 0, 0, 0}};
    const Picture picture = ReadBytes("a.tga", image_samples::Tga(image));
    EXPECT_EQ(PixelAt(picture, 0, 0)[0], 1.0F);
    EXPECT_EQ(PixelAt(picture, 0, 1)[0], 0.0F);
}

TEST(OpenImageIODecoder, RadianceIsLinear) {
    // 128 / 256 times 2 to the power of 129 - 128.
    const Image image{.channels = 4, .samples = {128, 64, 0, 129}};
    EXPECT_THAT(PixelAt(ReadBytes("a.hdr", image_samples::Hdr(image)), 0, 0),
                ElementsAre(testing::FloatNear(1.0F, 0.01F), testing::FloatNear(0.5F, 0.01F),
                            testing::FloatNear(0.0F, 0.01F), 1.0F));
}

TEST(OpenImageIODecoder, RefusesAFileThatIsCutAnywhere) {
    Image image{.width = 5, .height = 4, .channels = 4};
    for (unsigned i = 0; i < 80; ++i)
        image.samples.push_back(i * 3);
    struct Sample {
        const char* name;
        std::string bytes;
        // Bytes at the end that hold no pixels.
        std::size_t tail;
    };
    const Sample samples[] = {
        {"a.tga", image_samples::Tga(image), 495 + 26},
        {"a.hdr", image_samples::Hdr(image), 0},
    };
    const auto complaint = [](const std::string& name, const std::string& bytes) {
        return FaultText<InputError>([&] { ReadBytes(name, bytes); });
    };
    for (const Sample& sample : samples) {
        EXPECT_EQ(complaint(sample.name, sample.bytes), "");
        for (std::size_t size = 12; size + sample.tail < sample.bytes.size(); size += 7) {
            EXPECT_THAT(complaint(sample.name, sample.bytes.substr(0, size)),
                        StartsWith(std::string(sample.name) + ": damaged or cut short ("))
                << size << " of " << sample.bytes.size();
        }
    }
}

}  // namespace
}  // namespace command
