#include "command/exr_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "command/beauty.h"
#include "command/exr_file.h"
#include "command/failure.h"
#include "tests/command/exr_samples.h"
#include "tests/command/fault_text.h"
#include "tests/command/pixels.h"
#include "tests/command/rows.h"

namespace command {
namespace {

using exr_samples::Distinct;
using exr_samples::Part;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

std::unique_ptr<RenderFile> Open(const std::string& bytes) {
    return OpenExrFile("a.exr", bytes.data(), bytes.size());
}

struct Wanted {
    std::string channel;
    std::size_t part = 0;
};

KeptRows Rows(const std::string& bytes, const std::vector<Wanted>& wanted,
              std::size_t framePart = 0) {
    const auto file = Open(bytes);
    std::vector<ChannelRef> refs;
    for (const Wanted& each : wanted)
        refs.push_back(FindChannel(file->GetDescription(), each.channel, each.part));
    return KeepRows(*file, framePart, refs);
}

std::string ExrRowsComplaint(const std::string& bytes, const std::vector<Wanted>& wanted) {
    return FaultText<InputError>([&] { Rows(bytes, wanted); });
}

// Every sample of the channel: the part's own where its data window is, 0 elsewhere; and the
// covered columns.
void ExpectRows(const KeptRows& rows, std::size_t i, const Window& frame, const Part& part,
                const std::string& channel) {
    ASSERT_THAT(rows, SizeIs(static_cast<std::size_t>(frame.Height())));
    for (int y = frame.top; y <= frame.bottom; ++y) {
        const KeptRow& row = rows[static_cast<std::size_t>(y - frame.top)][i];
        int covered = 0;
        for (int x = frame.left; x <= frame.right; ++x) {
            const bool inside = part.data.Contains({x, y, x, y});
            if (inside && covered++ == 0) {
                EXPECT_EQ(row.first, x - frame.left);
            }
            EXPECT_EQ(row.values[static_cast<std::size_t>(x - frame.left)],
                      inside ? Distinct(channel, x, y) : 0.0)
                << channel << " at " << x << ", " << y;
        }
        EXPECT_EQ(row.count, covered) << channel << " in row " << y;
    }
}

TEST(ExrRows, GiveEachChannelInItsOwnType) {
    const Part part{.channels = {{"R"}, {"Z", Imf::FLOAT}, {"A", Imf::UINT}}};
    const KeptRows rows = Rows(exr_samples::Write(part), {{"Z"}, {"R"}, {"A"}, {"R"}});
    ASSERT_THAT(rows, SizeIs(3));
    EXPECT_THAT(rows, Each(SizeIs(4)));
    EXPECT_EQ(rows[0][0].type, SampleType::Float);
    EXPECT_EQ(rows[0][1].type, SampleType::Half);
    EXPECT_EQ(rows[0][2].type, SampleType::Unsigned32);
    ExpectRows(rows, 0, part.display, part, "Z");
    ExpectRows(rows, 1, part.display, part, "R");
    EXPECT_THAT(rows[2][2].values, Each(4.0));
    ExpectRows(rows, 3, part.display, part, "R");
}

TEST(ExrRows, UnsignedSamplesAreExact) {
    const Part part{.channels = {{"id", Imf::UINT}}, .values = [](const std::string&, int x, int) {
                        return x == 0 ? 16777217.0 : x == 1 ? 4294967295.0 : 4294967291.0 + x;
                    }};
    EXPECT_THAT(Rows(exr_samples::Write(part), {{"id"}})[1][0].values,
                ElementsAre(16777217.0, 4294967295.0, 4294967293.0, 4294967294.0));
}

TEST(ExrRows, KeepWhatIsNotFinite) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const Part part{.channels = {{"R"}, {"Z", Imf::FLOAT}},
                    .values = [](const std::string&, int x, int) {
                        return x == 0 ? infinity : x == 1 ? -infinity : std::nan("");
                    }};
    const KeptRows rows = Rows(exr_samples::Write(part), {{"R"}, {"Z"}});
    for (const KeptRow& row : rows[0]) {
        EXPECT_EQ(row.values[0], infinity);
        EXPECT_EQ(row.values[1], -infinity);
        EXPECT_TRUE(std::isnan(row.values[2]));
    }
}

TEST(ExrRows, EveryCompressionTilesAndLineOrdersGiveTheSame) {
    Part part{
        .channels = {{"R"}, {"Z", Imf::FLOAT}}, .display = {0, 0, 40, 70}, .data = {-3, 2, 37, 80}};
    for (const Imf::Compression compression :
         {Imf::NO_COMPRESSION, Imf::RLE_COMPRESSION, Imf::ZIPS_COMPRESSION, Imf::ZIP_COMPRESSION,
          Imf::PIZ_COMPRESSION, Imf::PXR24_COMPRESSION}) {
        for (const int tileSide : {0, 16}) {
            part.compression = compression;
            part.tileSide = tileSide;
            part.mipmaps = tileSide > 0;
            const KeptRows rows = Rows(exr_samples::Write(part), {{"R"}, {"Z"}});
            ExpectRows(rows, 0, part.display, part, "R");
            ExpectRows(rows, 1, part.display, part, "Z");
        }
    }
}

TEST(ExrRows, PartsOfDifferentDataWindowsAreReadInLockstep) {
    const Window display{-4, -3, 9, 7};
    std::vector<Part> parts;
    // As the frame; inside; around it; over a corner; beside, above and below it.
    for (const Window data :
         {display, Window{0, 0, 3, 2}, Window{-9, -9, 20, 20}, Window{5, 4, 30, 30},
          Window{20, 0, 22, 3}, Window{0, -20, 3, -10}, Window{0, 100, 3, 101}}) {
        Part part{.channels = {{"R"}, {"Z", Imf::FLOAT}}, .display = display, .data = data};
        part.name = "part" + std::to_string(parts.size());
        part.tileSide = parts.size() % 2 == 0 ? 0 : 4;
        parts.push_back(part);
    }
    std::vector<Wanted> wanted;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        wanted.push_back({"Z", i});
        wanted.insert(wanted.begin(), {"R", i});
    }
    const KeptRows rows = Rows(exr_samples::Write(parts), wanted, 2);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        ExpectRows(rows, parts.size() - 1 - i, display, parts[i], "R");
        ExpectRows(rows, parts.size() + i, display, parts[i], "Z");
    }
}

TEST(ExrRows, SeveralBlocksOfRowsAreReadWhole) {
    // More than a megabyte of rows.
    const Part part{.channels = {{"R"}, {"Z", Imf::FLOAT}},
                    .display = {0, 0, 1999, 299},
                    .data = {0, 1, 1999, 298}};
    const KeptRows rows = Rows(exr_samples::Write(part), {{"R"}, {"Z"}});
    ExpectRows(rows, 0, part.display, part, "R");
    ExpectRows(rows, 1, part.display, part, "Z");
}

TEST(ExrRows, NoChannelsGiveEmptyRows) {
    const KeptRows rows = Rows(exr_samples::Write(Part()), {});
    EXPECT_THAT(rows, SizeIs(3));
    EXPECT_THAT(rows, Each(IsEmpty()));
}

TEST(ExrRows, AFileCanBeReadAgain) {
    const std::string bytes = exr_samples::Write(Part{.tileSide = 2});
    const auto file = Open(bytes);
    const ChannelRef red = FindChannel(file->GetDescription(), "R");
    for (int i = 0; i < 2; ++i) {
        file->Read(ChooseBeauty(file->GetDescription()));
        ExpectRows(KeepRows(*file, 0, {red}), 0, Part().display, Part(), "R");
    }
}

TEST(ExrRows, ChannelsWithFewerSamplesAreRefusedBeforeTheFirstRow) {
    const Part part{
        .channels = {{"R", Imf::HALF, 2}, {"G"}}, .display = {0, 0, 3, 3}, .data = {0, 0, 3, 3}};
    const std::string bytes = exr_samples::Write(part);
    EXPECT_EQ(ExrRowsComplaint(bytes, {{"G"}, {"R"}}),
              "a.exr: layer \"RG\" has channels with fewer samples than pixels, which can't be "
              "read; convert them to full size");
    EXPECT_EQ(ExrRowsComplaint(bytes, {{"G"}}), "");
}

TEST(ExrRows, DeepChannelsAreRefused) {
    const std::string bytes =
        exr_samples::Write(Part{.channels = {{"Z", Imf::FLOAT}}, .deep = true});
    EXPECT_EQ(ExrRowsComplaint(bytes, {{"Z"}}),
              "a.exr: layer \"Z\" is deep and can't be read as a flat one");
}

TEST(ExrRows, WhatTheConsumerThrowsPasses) {
    const auto bytes = exr_samples::Write(Part());
    const auto file = Open(bytes);
    const ChannelRef red = FindChannel(file->GetDescription(), "R");
    EXPECT_EQ(FaultText<std::logic_error>([&] {
                  file->ReadRows(0, std::span(&red, 1),
                                 [](int, auto) { throw std::logic_error("enough"); });
              }),
              "enough");
}

TEST(ExrRows, DamagedAndLyingFilesAreRefused) {
    std::string bytes = exr_samples::Write(Part());
    EXPECT_THAT(ExrRowsComplaint(bytes.substr(0, bytes.size() - 5), {{"R"}}),
                StartsWith("a.exr: "));
    EXPECT_THAT(ExrRowsComplaint(exr_samples::WithWindows(bytes, {0, 0, 65534, 65534}) +
                                     std::string(100000, '\0'),
                                 {{"R"}}),
                StartsWith("a.exr: "));
    bytes.replace(bytes.size() - 20, 20, std::string(20, '\xff'));
    EXPECT_THAT(ExrRowsComplaint(bytes, {{"R"}}), StartsWith("a.exr: damaged or cut short ("));
}

// The picture is made of the same samples.
TEST(ExrRows, AgreeWithThePictureOfARealRender) {
    const std::string path = VELTRANE_SOURCE_DIR "/examples/still.exr";
    const auto file = OpenExrFile(path);
    const Beauty beauty = ChooseBeauty(file->GetDescription());
    const Picture picture = file->Read(beauty);
    std::vector<ChannelRef> refs;
    for (const std::string& name : {beauty.red, beauty.green, beauty.blue, beauty.alpha})
        refs.push_back(FindChannel(file->GetDescription(), name));
    const KeptRows rows = KeepRows(*file, 0, refs);
    ASSERT_THAT(rows, SizeIs(static_cast<std::size_t>(picture.height)));
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const auto pixel = PixelAt(picture, x, y);
            for (std::size_t i = 0; i < pixel.size(); ++i) {
                ASSERT_EQ(rows[static_cast<std::size_t>(y)][i].values[static_cast<std::size_t>(x)],
                          double{pixel[i]});
            }
        }
    }
}

}  // namespace
}  // namespace command
