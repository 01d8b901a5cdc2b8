#include "command/exr_deep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstring>

#include "command/beauty.h"
#include "command/deep_channels.h"
#include "command/exr_file.h"
#include "command/failure.h"
#include "tests/command/exr_samples.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

using exr_samples::Distinct;
using exr_samples::Part;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// The samples of every pixel, in rows.
using KeptPixels = std::vector<std::vector<std::vector<DeepSample>>>;

KeptPixels Pixels(const std::string& bytes, const DeepChannels& channels) {
    const auto file = OpenExrFile("a.exr", bytes.data(), bytes.size());
    const auto width =
        static_cast<std::size_t>(file->GetDescription().parts.front().displayWindow.Width());
    KeptPixels all;
    file->ReadDeepRows(0, channels, [&](int y, const DeepRow& row) {
        EXPECT_EQ(y, static_cast<int>(all.size()));
        auto& kept = all.emplace_back();
        for (std::size_t x = 0; x < width; ++x)
            kept.emplace_back(row.Pixel(x).begin(), row.Pixel(x).end());
    });
    return all;
}

DeepChannels ChannelsOf(const std::string& bytes, const std::string& beauty = {}) {
    const auto file = OpenExrFile("a.exr", bytes.data(), bytes.size());
    return ChooseDeepChannels(file->GetDescription(), ChooseBeauty(file->GetDescription(), beauty));
}

KeptPixels Pixels(const std::string& bytes) {
    return Pixels(bytes, ChannelsOf(bytes));
}

std::string ExrDeepComplaint(const std::string& bytes) {
    return FaultText<InputError>([&] { Pixels(bytes); });
}

// Pixel (x, y) has (x + y) % 4 samples, of different depths, from back to front.
Part DeepPart(int tileSide = 0) {
    return {.channels = {{"R"},
                         {"G", Imf::FLOAT},
                         {"B"},
                         {"A"},
                         {"Z", Imf::FLOAT},
                         {"ZBack", Imf::FLOAT},
                         {"objectID", Imf::UINT},
                         {"materialID", Imf::HALF}},
            .display = {-1, -2, 8, 9},
            .data = {-3, 0, 6, 12},
            .tileSide = tileSide,
            .deep = true,
            .sampleCount = [](int x, int y) { return (x + y + 20) % 4; },
            .deepValues =
                [](const std::string& channel, int x, int y, int sample) {
                    if (channel == "Z") return 100.0 - 10 * sample;
                    if (channel == "ZBack") return 101.0 - 10 * sample;
                    if (channel == "objectID") return 4294967290.0 + sample;
                    if (channel == "materialID") return 7.0 + sample;
                    if (channel == "A") return 0.25 * sample;
                    return Distinct(channel, x, y) + sample;
                }};
}

void ExpectSample(const std::string& bytes) {
    const Part part = DeepPart();
    const KeptPixels rows = Pixels(bytes);
    ASSERT_THAT(rows, SizeIs(12));
    for (int y = -2; y <= 9; ++y) {
        for (int x = -1; x <= 8; ++x) {
            const auto& pixel =
                rows[static_cast<std::size_t>(y + 2)][static_cast<std::size_t>(x + 1)];
            const bool inside = part.data.Contains({x, y, x, y});
            const auto count = static_cast<std::size_t>(inside ? part.sampleCount(x, y) : 0);
            ASSERT_THAT(pixel, SizeIs(count)) << x << ", " << y;
            for (std::size_t i = 0; i < count; ++i) {
                // Turned round.
                const auto n = static_cast<int>(count - 1 - i);
                const DeepSample& sample = pixel[i];
                EXPECT_EQ(sample.z, 100.0F - 10.0F * static_cast<float>(n));
                EXPECT_EQ(sample.zBack, sample.z + 1.0F);
                EXPECT_EQ(sample.alpha, 0.25F * static_cast<float>(n));
                EXPECT_EQ(sample.color[0], static_cast<float>(Distinct("R", x, y) + n));
                EXPECT_EQ(sample.color[1], static_cast<float>(Distinct("G", x, y) + n));
                EXPECT_EQ(sample.color[2], static_cast<float>(Distinct("B", x, y) + n));
                EXPECT_EQ(sample.ids[0],
                          std::bit_cast<std::uint32_t>(7.0F + static_cast<float>(n)));
                EXPECT_EQ(sample.ids[1], 4294967290U + static_cast<std::uint32_t>(n));
                EXPECT_EQ(sample.ids[2], 0U);
            }
        }
    }
}

TEST(ExrDeep, GivesEveryPixelsSamplesFrontToBack) {
    for (const Imf::Compression compression :
         {Imf::NO_COMPRESSION, Imf::RLE_COMPRESSION, Imf::ZIPS_COMPRESSION}) {
        Part part = DeepPart();
        part.compression = compression;
        ExpectSample(exr_samples::Write(part));
    }
}

TEST(ExrDeep, TilesGiveTheSame) {
    for (const int side : {1, 3, 4, 64}) {
        ExpectSample(exr_samples::Write(DeepPart(side)));
    }
}

TEST(ExrDeep, OverlappingSamplesAreMadeTidy) {
    // Halves of 0.75 are 0.5 each.
    const Part part{.channels = {{"R", Imf::FLOAT},
                                 {"G", Imf::FLOAT},
                                 {"B", Imf::FLOAT},
                                 {"A", Imf::FLOAT},
                                 {"Z", Imf::FLOAT},
                                 {"ZBack", Imf::FLOAT}},
                    .deep = true,
                    .sampleCount = [](int, int) { return 2; },
                    .deepValues =
                        [](const std::string& channel, int, int, int sample) {
                            if (channel == "Z") return sample == 0 ? 0.0 : 2.0;
                            if (channel == "ZBack") return sample == 0 ? 4.0 : 2.0;
                            return sample == 0 ? 0.75 : 0.25;
                        }};
    const auto pixel = Pixels(exr_samples::Write(part))[1][1];
    ASSERT_THAT(pixel, SizeIs(3));
    EXPECT_EQ(pixel[0].zBack, 2.0F);
    EXPECT_FLOAT_EQ(pixel[0].alpha, 0.5F);
    EXPECT_EQ(pixel[1].zBack, 2.0F);
    EXPECT_EQ(pixel[1].alpha, 0.25F);
    EXPECT_EQ(pixel[2].zBack, 4.0F);
    EXPECT_FLOAT_EQ(pixel[2].color[0], 0.5F);
}

TEST(ExrDeep, WithoutABackSamplesArePoints) {
    const Part part{.channels = {{"Y"}, {"Z", Imf::FLOAT}}, .deep = true};
    const auto rows = Pixels(exr_samples::Write(part));
    ASSERT_THAT(rows[2][3], SizeIs(1));
    EXPECT_EQ(rows[2][3][0].z, static_cast<float>(Distinct("Z", 3, 2)));
    EXPECT_EQ(rows[2][3][0].zBack, rows[2][3][0].z);
    EXPECT_EQ(rows[2][3][0].alpha, 1.0F);
    EXPECT_EQ(rows[2][3][0].color[2], static_cast<float>(Distinct("Y", 3, 2)));
}

TEST(ExrDeep, APartAmongFlatOnesIsReadInTheirFrame) {
    Part flat{.display = {0, 0, 3, 2}, .data = {0, 0, 3, 2}, .name = "flat"};
    Part deep{.channels = {{"R"}, {"G"}, {"B"}, {"Z", Imf::FLOAT}},
              .display = {0, 0, 3, 2},
              .data = {2, 1, 9, 9},
              .deep = true,
              .name = "deep"};
    const std::string bytes = exr_samples::Write({flat, deep});
    const auto rows = Pixels(bytes, ChannelsOf(bytes, "deep"));
    EXPECT_THAT(rows[0][2], IsEmpty());
    EXPECT_THAT(rows[1][1], IsEmpty());
    EXPECT_EQ(rows[1][2][0].color[1], static_cast<float>(Distinct("G", 2, 1)));
    EXPECT_EQ(FaultText<InputError>([&] { Pixels(bytes, {.part = 0, .z = "R"}); }),
              "a.exr: part \"flat\" is not deep; read its channels as flat ones");
}

TEST(ExrDeep, AChannelThatIsNotThereIsToldSo) {
    const std::string bytes = exr_samples::Write(DeepPart());
    EXPECT_EQ(FaultText<InputError>([&] { Pixels(bytes, {.red = "x", .z = "Z"}); }),
              "a.exr: there is no deep channel x");
    EXPECT_EQ(FaultText<InputError>([&] { Pixels(bytes, {.red = "R"}); }),
              "a.exr: deep pixels without a depth channel can't be read");
}

TEST(ExrDeep, SamplesInTheMillionsThatOverlapAreRefused) {
    const Part part{.channels = {{"Y"}, {"Z", Imf::FLOAT}, {"ZBack", Imf::FLOAT}},
                    .display = {0, 0, 0, 0},
                    .data = {0, 0, 0, 0},
                    .deep = true,
                    .sampleCount = [](int, int) { return 5000; },
                    .deepValues =
                        [](const std::string& channel, int, int, int sample) {
                            if (channel == "Y") return 0.0;
                            return channel == "Z" ? sample : 20000.0 - sample;
                        }};
    EXPECT_EQ(ExrDeepComplaint(exr_samples::Write(part)),
              "a.exr: a pixel in row 0 has too many deep samples that overlap; render it flat");
}

// Without compression the table of counts, a running total for each row, stands in the file as it
// is, behind the length of the samples.
TEST(ExrDeep, AFileThatLiesAboutItsSamplesIsRefused) {
    Part part{.channels = {{"Y", Imf::FLOAT}, {"Z", Imf::FLOAT}},
              .display = {0, 0, 2, 0},
              .data = {0, 0, 2, 0},
              .compression = Imf::NO_COMPRESSION,
              .deep = true};
    const std::string good = exr_samples::Write(part);
    ASSERT_EQ(ExrDeepComplaint(good), "");
    const std::uint32_t totals[] = {1, 2, 3};
    const std::string table(static_cast<const char*>(static_cast<const void*>(totals)),
                            sizeof totals);
    const std::size_t at = good.rfind(table);
    ASSERT_NE(at, std::string::npos);
    for (const std::uint32_t lie : {4U, 1000U, 100000000U, 0x7fffffffU, 0xffffffffU, 0U}) {
        std::string bytes = good;
        std::memcpy(bytes.data() + at + 8, &lie, sizeof lie);
        EXPECT_THAT(ExrDeepComplaint(bytes), StartsWith("a.exr: damaged or cut short (")) << lie;
    }
    // With a length that bears the lie out, only the file's own size tells.
    std::string bytes = good;
    const std::uint32_t lie = 100000000;
    const std::uint64_t length = std::uint64_t{lie} * 8;
    std::memcpy(bytes.data() + at + 8, &lie, sizeof lie);
    std::memcpy(bytes.data() + at - sizeof length, &length, sizeof length);
    EXPECT_EQ(
        ExrDeepComplaint(bytes),
        "a.exr: the rows from 0 on claim 100000000 deep samples, more than the file can hold; "
        "it is damaged: render or copy it again");
}

TEST(ExrDeep, DamagedAnywhereItNeverCrashes) {
    for (const int tileSide : {0, 2}) {
        Part part = DeepPart(tileSide);
        part.display = {0, 0, 2, 2};
        part.data = part.display;
        const std::string good = exr_samples::Write(part);
        for (std::size_t i = 8; i < good.size(); ++i) {
            std::string bytes = good;
            bytes[i] = static_cast<char>(~bytes[i]);
            const std::string complaint = ExrDeepComplaint(bytes);
            EXPECT_TRUE(complaint.empty() || complaint.starts_with("a.exr: ")) << complaint;
        }
    }
}

}  // namespace
}  // namespace command
