#include "command/fragments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <random>

namespace command {

// What the tests look at of a fragment of the buffer.
struct Seen {
    int object;
    int material;
    int coverage;

    friend bool operator==(const Seen&, const Seen&) = default;
};

void PrintTo(const Seen& seen, std::ostream* out) {
    *out << "{" << seen.object << ", " << seen.material << ", " << seen.coverage << "}";
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float endless = std::numeric_limits<float>::infinity();
constexpr DWORD allChannels = BMM_CHAN_Z | BMM_CHAN_MTL_ID | BMM_CHAN_NODE_ID | BMM_CHAN_NORMAL |
                              BMM_CHAN_REALPIX | BMM_CHAN_COVERAGE | BMM_CHAN_NODE_RENDER_ID |
                              BMM_CHAN_COLOR | BMM_CHAN_TRANSP | BMM_CHAN_WEIGHT;

// Reads all fragments of a pixel.
std::vector<host::Fragment> Pixel(host::FragmentBuffer& buffer, int x, int y = 0) {
    std::vector<host::Fragment> fragments;
    GBufReader* reader = buffer.CreateReader();
    EXPECT_TRUE(reader->StartLine(y));
    EXPECT_GE(reader->StartPixel(x), 0);
    while (reader->StartNextLayer()) {
        host::Fragment each;
        reader->ReadChannelData(GB_Z, &each.z);
        reader->ReadChannelData(GB_MTL_ID, &each.mtlID);
        reader->ReadChannelData(GB_NODE_ID, &each.nodeID);
        reader->ReadChannelData(GB_NORMAL, &each.normal);
        reader->ReadChannelData(GB_REALPIX, &each.realPixel);
        reader->ReadChannelData(GB_COVERAGE, &each.coverage);
        reader->ReadChannelData(GB_NODE_RENDER_ID, &each.renderID);
        reader->ReadChannelData(GB_COLOR, &each.color);
        reader->ReadChannelData(GB_TRANSP, &each.transparency);
        reader->ReadChannelData(GB_WEIGHT, &each.weight);
        fragments.push_back(each);
    }
    buffer.DestroyReader(reader);
    return fragments;
}

std::vector<Seen> SeenAt(host::FragmentBuffer& buffer, int x) {
    std::vector<Seen> seen;
    for (const host::Fragment& each : Pixel(buffer, x))
        seen.push_back({each.renderID, each.mtlID, each.coverage});
    return seen;
}

// A row of a file, one pixel at a time.
class PixelRow {
  public:
    using Ranks = std::vector<std::pair<std::uint32_t, float>>;

    // Both with at most `ranks` entries.
    explicit PixelRow(std::size_t objectRanks, std::size_t materialRanks = 0)
        : objects(objectRanks), materials(materialRanks) {}

    void AddPixel(const Ranks& ofObjects, const Ranks& ofMaterials = {}) {
        Add(objects, ofObjects);
        Add(materials, ofMaterials);
    }

    FragmentRow Get() {
        objectRows = RowsOf(objects);
        materialRows = RowsOf(materials);
        FragmentRow row;
        row.objects = objectRows;
        row.materials = materialRows;
        return row;
    }

  private:
    struct Plane {
        std::vector<std::uint32_t> ids;
        std::vector<float> coverages;
    };

    static void Add(std::vector<Plane>& planes, const Ranks& ranks) {
        for (std::size_t i = 0; i < planes.size(); ++i) {
            planes[i].ids.push_back(i < ranks.size() ? ranks[i].first : 0);
            planes[i].coverages.push_back(i < ranks.size() ? ranks[i].second : 0.0F);
        }
    }

    static std::vector<RankRow> RowsOf(const std::vector<Plane>& planes) {
        std::vector<RankRow> rows;
        for (const Plane& plane : planes)
            rows.push_back({plane.ids, plane.coverages});
        return rows;
    }

    std::vector<Plane> objects;
    std::vector<Plane> materials;
    std::vector<RankRow> objectRows;
    std::vector<RankRow> materialRows;
};

// Ids are their indices plus 1000; 999 isn't wanted, and 998 is unknown.
FragmentOptions Options() {
    FragmentOptions options;
    options.objectIndex = [](std::uint32_t bits) {
        if (bits == 999) return noObject;
        return bits == 998 ? unknownObject : static_cast<std::uint16_t>(bits - 1000);
    };
    options.materialIndex = [](std::uint32_t bits) {
        return bits < 1000 ? noMaterial : static_cast<std::uint16_t>(bits - 1000);
    };
    return options;
}

host::FragmentBuffer& Append(std::unique_ptr<host::FragmentBuffer>& buffer, int width,
                             const FragmentRow& row, FragmentOptions options = Options()) {
    buffer = std::make_unique<host::FragmentBuffer>(width, 1, allChannels);
    FragmentBuilder(*buffer, std::move(options)).AppendRow(row);
    EXPECT_TRUE(buffer->IsComplete());
    return *buffer;
}

TEST(FragmentBuilder, RanksBecomeFragments) {
    PixelRow row(2, 2);
    row.AddPixel({{1007, 1.0F}}, {{1003, 1.0F}});
    row.AddPixel({{1007, 0.8F}, {1009, 0.2F}}, {{1003, 0.8F}, {1004, 0.2F}});
    row.AddPixel({});
    row.AddPixel({{1007, 1.0F}}, {{1003, 0.6F}, {1004, 0.4F}});
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 4, row.Get());
    EXPECT_THAT(SeenAt(buffer, 0), ElementsAre(Seen{7, 3, 255}));
    EXPECT_THAT(SeenAt(buffer, 1), ElementsAre(Seen{7, 3, 204}, Seen{9, 4, 51}));
    EXPECT_THAT(SeenAt(buffer, 2), IsEmpty());
    EXPECT_THAT(SeenAt(buffer, 3), ElementsAre(Seen{7, 3, 153}, Seen{7, 4, 102}));
}

TEST(FragmentBuilder, CoverageIsAlsoTheWeightAndNothingIsTransparent) {
    PixelRow row(1);
    row.AddPixel({{1007, 0.2F}});
    std::unique_ptr<host::FragmentBuffer> memory;
    const auto fragments = Pixel(Append(memory, 1, row.Get()), 0);
    ASSERT_EQ(fragments.size(), 1U);
    EXPECT_EQ(fragments[0].weight.r, 51);
    EXPECT_EQ(fragments[0].weight.g, 51);
    EXPECT_EQ(fragments[0].weight.b, 51);
    EXPECT_EQ(fragments[0].transparency.r, 0);
}

TEST(FragmentBuilder, RanksInAnyOrderAreFound) {
    PixelRow row(3, 3);
    row.AddPixel({{0, 0.0F}, {0, 0.0F}, {1007, 1.0F}}, {{0, 0.0F}, {1003, 1.0F}, {0, 0.0F}});
    row.AddPixel({{1007, 1.0F}, {0, 0.0F}, {1008, 1.0F}});
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 2, row.Get());
    EXPECT_THAT(SeenAt(buffer, 0), ElementsAre(Seen{7, 3, 255}));
    EXPECT_THAT(SeenAt(buffer, 1), ElementsAre(Seen{7, 0, 255}, Seen{8, 0, 255}));
}

TEST(FragmentBuilder, TheBackgroundsIdIsSkippedWhateverItCovers) {
    PixelRow row(2, 2);
    row.AddPixel({{0, 1.0F}}, {{0, 1.0F}});
    row.AddPixel({{0, 0.5F}, {1007, 0.2F}}, {{0, 0.5F}, {1003, 0.2F}});
    row.AddPixel({{1007, nan}, {1008, -1.0F}}, {{1003, nan}, {1004, 0.0F}});
    row.AddPixel({{999, 1.0F}});
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 4, row.Get());
    EXPECT_THAT(SeenAt(buffer, 0), IsEmpty());
    EXPECT_THAT(SeenAt(buffer, 1), ElementsAre(Seen{7, 3, 51}));
    EXPECT_THAT(SeenAt(buffer, 2), IsEmpty());
    EXPECT_THAT(SeenAt(buffer, 3), IsEmpty());
}

TEST(FragmentBuilder, IdsWithoutAPlaceKeepTheirCoverage) {
    PixelRow row(2, 2);
    row.AddPixel({{998, 1.0F}}, {{500, 1.0F}});
    std::unique_ptr<host::FragmentBuffer> memory;
    EXPECT_THAT(SeenAt(Append(memory, 1, row.Get()), 0), ElementsAre(Seen{unknownObject, 0, 255}));
}

TEST(FragmentBuilder, MaterialsAloneMakeFragmentsOfAnUnknownObject) {
    PixelRow row(0, 2);
    row.AddPixel({}, {{1003, 0.8F}, {1004, 0.2F}});
    std::unique_ptr<host::FragmentBuffer> memory;
    EXPECT_THAT(SeenAt(Append(memory, 1, row.Get()), 0),
                ElementsAre(Seen{unknownObject, 3, 204}, Seen{unknownObject, 4, 51}));
}

TEST(FragmentBuilder, NumbersComeFromTheObjectsTableAndElseFromTheRow) {
    PixelRow row(2);
    row.AddPixel({{1000, 0.6F}, {1002, 0.4F}});
    const std::vector<UWORD> numbers{11, 12};
    const std::vector<std::uint32_t> objectIDs{70000};
    const std::vector<std::uint32_t> small{70};
    const std::vector<std::uint32_t> materialIDs{5};
    FragmentOptions options = Options();
    options.objectIDs = numbers;
    FragmentRow planes = row.Get();
    planes.objectIDs = objectIDs;
    planes.materialIDs = materialIDs;
    std::unique_ptr<host::FragmentBuffer> memory;
    auto fragments = Pixel(Append(memory, 1, planes, options), 0);
    ASSERT_EQ(fragments.size(), 2U);
    EXPECT_EQ(fragments[0].nodeID, 11);
    EXPECT_EQ(fragments[1].nodeID, 0) << "70000 has no place in the G-Buffer";
    EXPECT_EQ(fragments[0].mtlID, 5);
    EXPECT_EQ(fragments[1].mtlID, 5);
    planes.objectIDs = small;
    fragments = Pixel(Append(memory, 1, planes, options), 0);
    EXPECT_EQ(fragments[0].nodeID, 11);
    EXPECT_EQ(fragments[1].nodeID, 70);
}

TEST(FragmentBuilder, DepthsOfTheBackgroundAreNone) {
    const std::vector<float> depth{2.5F, 1e10F, 1e11F, endless, nan, 0.0F, -1.0F, 9.9e9F};
    PixelRow row(1);
    for (std::size_t i = 0; i < depth.size(); ++i)
        row.AddPixel({{1007, 1.0F}});
    FragmentRow planes = row.Get();
    planes.depth = depth;
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 8, planes);
    for (int x = 0; x < 8; ++x) {
        const auto fragments = Pixel(buffer, x);
        ASSERT_EQ(fragments.size(), 1U) << x;
        const bool known = x == 0 || x == 7;
        EXPECT_EQ(std::isnan(fragments[0].z), !known) << x;
    }
    float z = 0.0F;
    EXPECT_TRUE(buffer.GetChannelMin(GB_Z, &z));
    EXPECT_EQ(z, 2.5F);
    EXPECT_TRUE(buffer.GetChannelMax(GB_Z, &z));
    EXPECT_EQ(z, 9.9e9F);
}

TEST(FragmentBuilder, WithoutIdsADepthMakesAFragmentOfThePixelsAlpha) {
    const std::vector<float> depth{3.0F, 1e10F, 3.0F, 3.0F};
    const std::vector<float> color{0.1F, 0.1F, 0.1F, 0.1F};
    const std::vector<float> alpha{0.2F, 1.0F, 0.0F, nan};
    FragmentRow planes;
    planes.depth = depth;
    planes.color = {color, color, color, alpha};
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 4, planes);
    EXPECT_THAT(SeenAt(buffer, 0), ElementsAre(Seen{unknownObject, 0, 51}));
    EXPECT_EQ(Pixel(buffer, 0)[0].z, 3.0F);
    for (int x = 1; x < 4; ++x)
        EXPECT_THAT(SeenAt(buffer, x), IsEmpty()) << x;
}

TEST(FragmentBuilder, WithoutColourADepthCoversItsPixel) {
    const std::vector<float> depth{3.0F, nan};
    FragmentRow planes;
    planes.depth = depth;
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 2, planes);
    EXPECT_THAT(SeenAt(buffer, 0), ElementsAre(Seen{unknownObject, 0, 255}));
    EXPECT_THAT(SeenAt(buffer, 1), IsEmpty());
}

TEST(FragmentBuilder, NumbersAloneMakeFragments) {
    const std::vector<std::uint32_t> objectIDs{3, 0, 0, 65536};
    const std::vector<std::uint32_t> materialIDs{0, 255, 256, 0};
    FragmentRow planes;
    planes.objectIDs = objectIDs;
    planes.materialIDs = materialIDs;
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 4, planes);
    EXPECT_THAT(SeenAt(buffer, 0), ElementsAre(Seen{unknownObject, 0, 255}));
    EXPECT_EQ(Pixel(buffer, 0)[0].nodeID, 3);
    EXPECT_THAT(SeenAt(buffer, 1), ElementsAre(Seen{unknownObject, 255, 255}));
    EXPECT_THAT(SeenAt(buffer, 2), IsEmpty());
    EXPECT_THAT(SeenAt(buffer, 3), IsEmpty());
}

TEST(FragmentBuilder, APixelOfRankedPlanesWithoutIdsFallsBackOnItsDepth) {
    PixelRow row(1);
    row.AddPixel({});
    row.AddPixel({});
    const std::vector<float> depth{4.0F, 1e10F};
    FragmentRow planes = row.Get();
    planes.depth = depth;
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 2, planes);
    EXPECT_THAT(SeenAt(buffer, 0), ElementsAre(Seen{unknownObject, 0, 255}));
    EXPECT_THAT(SeenAt(buffer, 1), IsEmpty());
}

TEST(FragmentBuilder, NormalsAreCompressedAndOfAnyLength) {
    const std::vector<float> x{0.0F, 3.0F, 0.0F, nan};
    const std::vector<float> y{0.0F, 0.0F, 0.0F, 0.0F};
    const std::vector<float> z{1.0F, 4.0F, 0.0F, 1.0F};
    PixelRow row(1);
    for (int i = 0; i < 4; ++i)
        row.AddPixel({{1007, 1.0F}});
    FragmentRow planes = row.Get();
    planes.normal = {x, y, z};
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 4, planes);
    EXPECT_EQ(Pixel(buffer, 0)[0].normal, CompressNormal({0.0F, 0.0F, 1.0F}));
    const Point3 normal = DeCompressNormal(Pixel(buffer, 1)[0].normal);
    EXPECT_NEAR(normal.x, 0.6F, 1e-4F);
    EXPECT_NEAR(normal.z, 0.8F, 1e-4F);
    EXPECT_EQ(Pixel(buffer, 2)[0].normal, 0U);
    EXPECT_EQ(Pixel(buffer, 3)[0].normal, 0U);
}

TEST(FragmentBuilder, ColoursAreDividedByWhatTheFragmentsCover) {
    PixelRow row(2);
    row.AddPixel({{1007, 0.2F}, {1008, 0.2F}});
    row.AddPixel({{1007, 1.0F}, {1008, 1.0F}});
    row.AddPixel({{1007, 1.0F}});
    const std::vector<float> red{0.2F, 1.0F, 4.0F};
    const std::vector<float> green{0.1F, 0.5F, -1.0F};
    const std::vector<float> blue{0.0F, 0.0F, nan};
    const std::vector<float> alpha{0.4F, 1.0F, 1.0F};
    FragmentRow planes = row.Get();
    planes.color = {red, green, blue, alpha};
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, 3, planes);
    // 51 and 51 units cover 0.4 of the first pixel, and 255 and 255 the second twice.
    for (const int x : {0, 1}) {
        for (const host::Fragment& each : Pixel(buffer, x)) {
            EXPECT_EQ(each.color.r, 128) << x;
            EXPECT_EQ(each.color.g, 64) << x;
            EXPECT_EQ(each.color.b, 0) << x;
            float r = 0.0F;
            float g = 0.0F;
            float b = 0.0F;
            ExpandRealPixel(each.realPixel, r, g, b);
            EXPECT_NEAR(r, 0.5F, 0.004F);
            EXPECT_NEAR(g, 0.25F, 0.004F);
        }
    }
    const host::Fragment bright = Pixel(buffer, 2)[0];
    EXPECT_EQ(bright.color.r, 255);
    EXPECT_EQ(bright.color.g, 0);
    EXPECT_EQ(bright.color.b, 0);
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    ExpandRealPixel(bright.realPixel, r, g, b);
    EXPECT_EQ(r, 4.0F);
    EXPECT_EQ(g, 0.0F);
    EXPECT_EQ(b, 0.0F);
}

TEST(FragmentBuilder, ColoursOfEightBitsAreRoundedAndCapped) {
    PixelRow row(1);
    row.AddPixel({{1007, 1.0F}});
    const std::vector<float> red{0.25F};
    const std::vector<float> green{1.5F};
    const std::vector<float> blue{-0.5F};
    const std::vector<float> alpha{1.0F};
    FragmentRow planes = row.Get();
    planes.color = {red, green, blue, alpha};
    std::unique_ptr<host::FragmentBuffer> memory;
    const Color24 color = Pixel(Append(memory, 1, planes), 0)[0].color;
    EXPECT_EQ(color.r, 64);
    EXPECT_EQ(color.g, 255);
    EXPECT_EQ(color.b, 0);
}

TEST(FragmentBuilder, ARowWithoutPlanesHasNoFragments) {
    std::unique_ptr<host::FragmentBuffer> memory;
    EXPECT_THAT(SeenAt(Append(memory, 1, {}), 0), IsEmpty());
}

TEST(FragmentBuilder, TheFastRoadGivesWhatTheJoinGives) {
    std::mt19937 random(7);
    const auto below = [&](unsigned count) { return static_cast<std::uint32_t>(random() % count); };
    constexpr int width = 3000;
    PixelRow row(3, 3);
    std::vector<std::vector<Rank>> objects(width);
    std::vector<std::vector<Rank>> materials(width);
    for (int x = 0; x < width; ++x) {
        const auto ranks = [&](std::uint32_t ids, std::vector<Rank>& expected,
                               std::uint32_t lowest) {
            PixelRow::Ranks given;
            for (std::uint32_t i = below(3); i < 3; ++i) {
                const std::uint32_t id = 1000 + lowest + below(ids);
                const float coverage = below(2) == 0 ? 1.0F : static_cast<float>(below(5)) / 4.0F;
                given.emplace_back(id, coverage);
                expected.push_back({static_cast<std::uint16_t>(id - 1000), coverage});
            }
            return given;
        };
        const auto ofObjects = ranks(3, objects[static_cast<std::size_t>(x)], 0);
        row.AddPixel(ofObjects, ranks(3, materials[static_cast<std::size_t>(x)], 1));
    }
    std::unique_ptr<host::FragmentBuffer> memory;
    host::FragmentBuffer& buffer = Append(memory, width, row.Get());
    RankJoin join(3, 3);
    for (int x = 0; x < width; ++x) {
        std::vector<Seen> expected;
        for (const JoinedFragment& each : join.Join(objects[static_cast<std::size_t>(x)],
                                                    materials[static_cast<std::size_t>(x)])) {
            expected.push_back({each.object, each.material, each.coverage});
        }
        ASSERT_EQ(SeenAt(buffer, x), expected) << x;
    }
}

// ---- Deep pixels ----

std::vector<host::Fragment> Deep(const std::vector<DeepFragment>& samples,
                                 FragmentOptions options = Options()) {
    host::FragmentBuffer buffer(1, 1, allChannels);
    FragmentBuilder(buffer, std::move(options)).AppendDeepPixel(samples);
    return Pixel(buffer, 0);
}

TEST(DeepFragments, CoverWhatIsSeenOfThem) {
    const auto fragments = Deep({{.z = 1.0F, .alpha = 0.2F, .object = 1007, .material = 1003},
                                 {.z = 2.0F, .alpha = 0.5F, .object = 1008, .material = 1004},
                                 {.z = 3.0F, .alpha = 1.0F, .object = 1009},
                                 {.z = 4.0F, .alpha = 1.0F, .object = 1010}});
    ASSERT_EQ(fragments.size(), 3U);
    EXPECT_EQ(fragments[0].renderID, 7);
    EXPECT_EQ(fragments[0].mtlID, 3);
    EXPECT_EQ(fragments[0].coverage, 51);
    EXPECT_EQ(fragments[0].weight.g, 51);
    EXPECT_EQ(fragments[0].z, 1.0F);
    EXPECT_EQ(fragments[1].renderID, 8);
    EXPECT_EQ(fragments[1].coverage, 102);
    EXPECT_EQ(fragments[2].renderID, 9);
    EXPECT_EQ(fragments[2].coverage, 102);
    EXPECT_EQ(fragments[2].z, 3.0F);
}

TEST(DeepFragments, ManyThinSamplesOfAnObjectSumToItsPart) {
    // Each covers 0.2 to 0.4 units; rounded one by one, nothing would be left.
    std::vector<DeepFragment> samples;
    double seen = 1.0;
    double ofEven = 0.0;
    for (int i = 0; i < 500; ++i) {
        samples.push_back({.z = 1.0F + static_cast<float>(i),
                           .alpha = 0.0015F,
                           .object = i % 2 == 0 ? 1000U : 1001U});
        const double coverage = seen * static_cast<double>(0.0015F);
        if (i % 2 == 0) ofEven += coverage;
        seen -= coverage;
    }
    std::map<int, int> sums;
    for (const host::Fragment& each : Deep(samples)) {
        EXPECT_GT(each.coverage, 0);
        sums[each.renderID] += each.coverage;
    }
    EXPECT_EQ(sums[0], CoverageUnits(ofEven));
    EXPECT_EQ(sums[1], CoverageUnits(1.0 - seen - ofEven));
}

TEST(DeepFragments, RandomPixelsKeepTheSumOfEachObject) {
    constexpr int pixels = 500;
    std::mt19937 random(3);
    std::uniform_real_distribution<float> unit(0.0F, 1.0F);
    host::FragmentBuffer buffer(pixels, 1, allChannels);
    FragmentBuilder builder(buffer, Options());
    std::vector<std::map<int, int>> expected(pixels);
    for (std::map<int, int>& sums : expected) {
        std::vector<DeepFragment> samples(random() % 30);
        std::map<int, double> parts;
        double seen = 1.0;
        for (DeepFragment& each : samples) {
            each.alpha = unit(random) * unit(random);
            each.object = static_cast<std::uint32_t>(1000 + random() % 4);
            parts[static_cast<int>(each.object) - 1000] += seen * static_cast<double>(each.alpha);
            seen *= 1.0 - static_cast<double>(each.alpha);
        }
        for (const auto& [object, part] : parts) {
            if (CoverageUnits(part) > 0) sums[object] = CoverageUnits(part);
        }
        builder.AppendDeepPixel(samples);
    }
    for (int x = 0; x < pixels; ++x) {
        std::map<int, int> sums;
        for (const host::Fragment& each : Pixel(buffer, x))
            sums[each.renderID] += each.coverage;
        ASSERT_EQ(sums, expected[static_cast<std::size_t>(x)]) << x;
    }
}

TEST(DeepFragments, SamplesThatCoverNothingAreLeftOut) {
    EXPECT_THAT(Deep({}), IsEmpty());
    EXPECT_THAT(Deep({{.z = 1.0F, .alpha = 0.0F, .object = 1007},
                      {.z = 1.0F, .alpha = -1.0F, .object = 1007},
                      {.z = 1.0F, .alpha = nan, .object = 1007},
                      {.z = 1.0F, .alpha = 0.001F, .object = 1007}}),
                IsEmpty());
}

TEST(DeepFragments, AlphaAboveOneIsOne) {
    const auto fragments =
        Deep({{.alpha = endless, .object = 1007}, {.alpha = 1.0F, .object = 1008}});
    ASSERT_EQ(fragments.size(), 1U);
    EXPECT_EQ(fragments[0].coverage, 255);
    EXPECT_TRUE(std::isnan(fragments[0].z)) << "a depth of 0 is none";
}

TEST(DeepFragments, NumbersWithoutObjectsSumByNumber) {
    const auto fragments = Deep({{.alpha = 0.001F, .objectID = 3, .materialID = 9},
                                 {.alpha = 0.001F, .objectID = 4},
                                 {.alpha = 0.001F, .objectID = 3, .materialID = 9}},
                                {});
    ASSERT_EQ(fragments.size(), 1U);
    EXPECT_EQ(fragments[0].renderID, unknownObject);
    EXPECT_EQ(fragments[0].nodeID, 3);
    EXPECT_EQ(fragments[0].mtlID, 9);
    EXPECT_EQ(fragments[0].coverage, 1);
}

TEST(DeepFragments, OnePixelKnowsNothingOfTheOneBefore) {
    host::FragmentBuffer buffer(2, 1, allChannels);
    FragmentBuilder builder(buffer, Options());
    const std::vector<DeepFragment> thin{{.z = 1.0F, .alpha = 0.0015F, .object = 1000}};
    builder.AppendDeepPixel(thin);
    builder.AppendDeepPixel(thin);
    EXPECT_THAT(Pixel(buffer, 0), IsEmpty());
    EXPECT_THAT(Pixel(buffer, 1), IsEmpty());
}

TEST(DeepFragments, ColoursAreDividedByTheSamplesOwnAlpha) {
    const auto fragments = Deep({{.z = 1.0F,
                                  .alpha = 0.5F,
                                  .object = 1007,
                                  .normal = {0.0F, 0.0F, 2.0F},
                                  .color = {0.25F, 0.5F, 0.0F}}});
    ASSERT_EQ(fragments.size(), 1U);
    EXPECT_EQ(fragments[0].color.r, 128);
    EXPECT_EQ(fragments[0].color.g, 255);
    EXPECT_EQ(fragments[0].color.b, 0);
    EXPECT_EQ(fragments[0].normal, CompressNormal({0.0F, 0.0F, 1.0F}));
}

}  // namespace
}  // namespace command
