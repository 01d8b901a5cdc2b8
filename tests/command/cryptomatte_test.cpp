#include "command/cryptomatte.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "command/cryptomatte_id.h"
#include "command/sidecar_file.h"
#include "tests/command/descriptions.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

namespace fs = std::filesystem;
using descriptions::Channels;
using descriptions::Joined;
using testing::ElementsAre;
using testing::IsEmpty;

using Attributes = std::vector<std::pair<std::string, AttributeValue>>;

constexpr const char* bunny = R"({"bunny":"13851a76"})";

Cryptomattes Find(const Description& file) {
    return FindCryptomattes(file, LayerPlaces(file));
}

// What writers say of one Cryptomatte.
Attributes Metadata(const std::string& name, const std::string& manifest = bunny,
                    const std::string& start = "cryptomatte/13851a7/") {
    return {{start + "name", name},
            {start + "hash", std::string("MurmurHash3_32")},
            {start + "conversion", std::string("uint32_to_float32")},
            {start + "manifest", manifest}};
}

std::vector<Channel> Levels(const std::string& name, int count,
                            const std::vector<std::string>& suffixes = {"A", "B", "G", "R"}) {
    std::vector<Channel> channels;
    for (int level = 0; level < count; ++level) {
        for (const std::string& suffix : suffixes)
            channels.push_back({.name = name + "0" + std::to_string(level) + "." + suffix,
                                .type = SampleType::Float});
    }
    return channels;
}

// "ID COVERAGE" of every rank.
std::vector<std::string> RanksOf(const Description& file, const Cryptomatte& matte) {
    std::vector<std::string> ranks;
    for (const CryptomatteRank& each : matte.ranks) {
        ranks.push_back(descriptions::NameOf(file, each.id) + " " +
                        descriptions::NameOf(file, each.coverage));
    }
    return ranks;
}

TEST(Cryptomatte, IsItsLayersRanksAndNames) {
    const Description file = descriptions::File(
        {.channels = Joined(Channels({"R", "G", "B"}), Levels("crypto_object", 2)),
         .attributes = Metadata("crypto_object")});
    const Cryptomattes found = Find(file);
    ASSERT_EQ(found.all.size(), 1U);
    const Cryptomatte& matte = found.all[0];
    EXPECT_EQ(matte.kind, CryptomatteKind::Object);
    EXPECT_EQ(matte.name, "crypto_object");
    EXPECT_EQ(matte.place, (LayerPlace{"", "crypto_object", ""}));
    EXPECT_THAT(
        RanksOf(file, matte),
        ElementsAre("crypto_object00.R crypto_object00.G", "crypto_object00.B crypto_object00.A",
                    "crypto_object01.R crypto_object01.G", "crypto_object01.B crypto_object01.A"));
    EXPECT_THAT(matte.layers, ElementsAre(1U, 2U));
    EXPECT_EQ(matte.preview, std::nullopt);
    EXPECT_EQ(matte.manifest.NameOf(0x13851a76), "bunny");
    EXPECT_EQ(matte.manifest.NameOf(0x12345678), "12345678");
    EXPECT_THAT(found.warnings, IsEmpty());
}

TEST(Cryptomatte, TheAttributesMayHaveTheFormatInFront) {
    const Description file =
        descriptions::File({.channels = Levels("crypto_object", 1),
                            .attributes = Metadata("crypto_object", bunny, "exr/cryptomatte/ab/")});
    EXPECT_EQ(Find(file).all[0].manifest.NameOf(0x13851a76), "bunny");
    EXPECT_THAT(Find(file).warnings, IsEmpty());
}

TEST(Cryptomatte, SuffixesMayBeOfAnySetAndMixed) {
    const std::vector<std::string> sets[] = {
        {"a", "b", "g", "r"}, {"alpha", "blue", "green", "red"}, {"W", "X", "Y", "Z"}};
    const std::vector<std::string> expected[] = {{"c00.r c00.g", "c00.b c00.a"},
                                                 {"c00.red c00.green", "c00.blue c00.alpha"},
                                                 {"c00.X c00.Y", "c00.Z c00.W"}};
    for (std::size_t i = 0; i < 3; ++i) {
        const Description file =
            descriptions::File({.channels = Levels("c", 1, sets[i]), .attributes = Metadata("c")});
        EXPECT_EQ(RanksOf(file, Find(file).all.at(0)), expected[i]);
    }
    const Description mixed =
        descriptions::File({.channels = Joined(Levels("c", 1, {"a", "blue", "G", "red"}),
                                               Channels({"c01.R", "c01.G"})),
                            .attributes = Metadata("c")});
    EXPECT_THAT(RanksOf(mixed, Find(mixed).all.at(0)),
                ElementsAre("c00.red c00.G", "c00.blue c00.a", "c01.R c01.G"));
}

TEST(Cryptomatte, LayersAreFoundByTheNameInTheMetadataAndNotByItsKey) {
    const Description file = descriptions::File(
        {.channels = Joined(Levels("mattes", 1), Levels("other", 1)),
         .attributes = Metadata("mattes", bunny, "cryptomatte/anything at all/")});
    const Cryptomattes found = Find(file);
    ASSERT_EQ(found.all.size(), 1U);
    EXPECT_EQ(found.all[0].name, "mattes");
    EXPECT_EQ(found.all[0].kind, CryptomatteKind::Other);
}

TEST(Cryptomatte, KindsAreToldByTheNamesOfRenderers) {
    struct Row {
        const char* name;
        CryptomatteKind kind;
    };
    for (const Row& row :
         {Row{"crypto_object", CryptomatteKind::Object},
          Row{"V.CryptoObject", CryptomatteKind::Object},
          Row{"VRayCryptomatte", CryptomatteKind::Object},
          Row{"VRayCryptomatte_2", CryptomatteKind::Object},
          Row{"CMasking_Cryptomatte", CryptomatteKind::Object},
          Row{"cryptomatte_node", CryptomatteKind::Object},
          Row{"crypto_material", CryptomatteKind::Material},
          Row{"V.CryptoMaterial", CryptomatteKind::Material},
          Row{"VRayCryptomatte_Mtl", CryptomatteKind::Material},
          Row{"CryptoAsset", CryptomatteKind::Asset}, Row{"crypto_asset", CryptomatteKind::Asset},
          Row{"crypto_hair", CryptomatteKind::Other}}) {
        const Description file = descriptions::File({.channels = Levels(row.name, 1)});
        ASSERT_EQ(Find(file).all.size(), 1U) << row.name;
        EXPECT_EQ(Find(file).all[0].kind, row.kind) << row.name;
    }
}

TEST(Cryptomatte, EveryViewLayerHasItsOwn) {
    Attributes attributes =
        Metadata("Back.CryptoObject", R"({"hill":"00000007"})", "cryptomatte/a/");
    for (auto& each : Metadata("Front.CryptoObject", bunny, "cryptomatte/b/"))
        attributes.push_back(each);
    const Description file = descriptions::File(
        {.channels = Joined(Levels("Back.CryptoObject", 1), Levels("Front.CryptoObject", 1)),
         .attributes = attributes});
    const Cryptomattes found = Find(file);
    ASSERT_EQ(found.all.size(), 2U);
    EXPECT_EQ(found.all[0].place, (LayerPlace{"Back", "CryptoObject", ""}));
    EXPECT_EQ(found.all[0].manifest.entries[0].name, "hill");
    EXPECT_EQ(found.all[1].place, (LayerPlace{"Front", "CryptoObject", ""}));
    EXPECT_EQ(found.all[1].manifest.entries[0].name, "bunny");
    EXPECT_THAT(found.warnings, IsEmpty());
}

TEST(Cryptomatte, EveryViewHasItsOwnUnderOneName) {
    const Description file = descriptions::File(
        {.channels = Channels({"V.CryptoObject00.left.r", "V.CryptoObject00.left.g",
                               "V.CryptoObject00.right.r", "V.CryptoObject00.right.g"}),
         .attributes = Metadata("V.CryptoObject")});
    const Cryptomattes found = Find(file);
    ASSERT_EQ(found.all.size(), 2U);
    EXPECT_EQ(found.all[0].place, (LayerPlace{"V", "CryptoObject", "left"}));
    EXPECT_EQ(found.all[1].place, (LayerPlace{"V", "CryptoObject", "right"}));
    EXPECT_EQ(found.all[1].manifest.NameOf(0x13851a76), "bunny");
    EXPECT_THAT(RanksOf(file, found.all[1]),
                ElementsAre("V.CryptoObject00.right.r V.CryptoObject00.right.g"));
    EXPECT_THAT(found.warnings, IsEmpty());
}

TEST(Cryptomatte, MetadataMayStandInAnotherPart) {
    const Description file = descriptions::File(
        {{.channels = Channels({"R", "G", "B"}), .name = "beauty", .attributes = Metadata("c")},
         {.channels = Levels("c", 1), .name = "mattes"}});
    const Cryptomattes found = Find(file);
    ASSERT_EQ(found.all.size(), 1U);
    EXPECT_EQ(found.all[0].manifest.NameOf(0x13851a76), "bunny");
    EXPECT_THAT(found.warnings, IsEmpty());
}

TEST(Cryptomatte, MetadataMayBeRepeatedInEveryPart) {
    Attributes empty = Metadata("c");
    empty.pop_back();
    const Description file = descriptions::File(
        {{.channels = Channels({"R"}), .name = "beauty", .attributes = Metadata("c")},
         {.channels = Levels("c", 1), .name = "mattes", .attributes = empty}});
    EXPECT_EQ(Find(file).all[0].manifest.NameOf(0x13851a76), "bunny");
    EXPECT_THAT(Find(file).warnings, IsEmpty());
}

TEST(Cryptomatte, APartMayBeALayer) {
    const Description file =
        descriptions::File({{.channels = Channels({"R", "G", "B"}), .name = "beauty"},
                            {.channels = Channels({"R", "G", "B", "A"}), .name = "CryptoObject00"},
                            {.channels = Channels({"X", "Y", "Z", "W"}),
                             .name = "CryptoObject01",
                             .attributes = Metadata("CryptoObject")}});
    EXPECT_THAT(RanksOf(file, Find(file).all.at(0)), ElementsAre("R G", "B A", "X Y", "Z W"));
    EXPECT_THAT(Find(file).warnings, IsEmpty());
}

TEST(Cryptomatte, OfTwoPartsWithOneNameEachHasItsOwnMetadata) {
    const Description file = descriptions::File(
        {{.channels = Levels("c", 1), .name = "one", .attributes = Metadata("c", bunny)},
         {.channels = Levels("c", 1),
          .name = "two",
          .attributes = Metadata("c", R"({"hill":"13851a76"})")}});
    const Cryptomattes found = Find(file);
    ASSERT_EQ(found.all.size(), 2U);
    EXPECT_EQ(found.all[0].name, "one.c");
    EXPECT_EQ(found.all[0].manifest.entries[0].name, "bunny");
    EXPECT_EQ(found.all[1].manifest.entries[0].name, "hill");
}

TEST(Cryptomatte, TheLayerWithoutANumberIsAPicture) {
    const Description file = descriptions::File(
        {.channels = Joined(Channels({"c.R", "c.G", "c.B"}, SampleType::Half), Levels("c", 1)),
         .attributes = Metadata("c")});
    const Cryptomattes found = Find(file);
    EXPECT_EQ(found.all.at(0).preview, 0U);
    EXPECT_THAT(found.all[0].layers, ElementsAre(1U));
    EXPECT_THAT(found.warnings, IsEmpty());
}

TEST(Cryptomatte, WithoutMetadataTheNameOfTheLayersIsEnough) {
    const Description file = descriptions::File({.channels = Levels("V.CryptoMaterial", 1)});
    const Cryptomattes found = Find(file);
    ASSERT_EQ(found.all.size(), 1U);
    EXPECT_EQ(found.all[0].ranks.size(), 2U);
    EXPECT_EQ(found.all[0].manifest.NameOf(0x00c720e2), "00c720e2");
    EXPECT_THAT(found.warnings,
                ElementsAre("Cryptomatte \"V.CryptoMaterial\": there is no metadata for it; its "
                            "mattes are named by their ids"));
}

TEST(Cryptomatte, OtherNumberedLayersAreNone) {
    const Description file =
        descriptions::File({.channels = Joined(Levels("light", 2), Channels({"00.R", "cr.R"}))});
    EXPECT_THAT(Find(file).all, IsEmpty());
    EXPECT_THAT(Find(file).warnings, IsEmpty());
}

TEST(Cryptomatte, TellsOfMetadataWithoutChannels) {
    Attributes attributes = Metadata("crypto_object");
    attributes.emplace_back("cryptomatte/7/manifest", std::string(bunny));
    const Description file = descriptions::File(
        {{.channels = Channels({"R", "crypto_object.R"}), .name = "a", .attributes = attributes},
         {.channels = Channels({"G"}), .name = "b", .attributes = attributes}});
    const Cryptomattes found = Find(file);
    EXPECT_THAT(found.all, IsEmpty());
    EXPECT_THAT(found.warnings,
                ElementsAre("Cryptomatte \"crypto_object\": there is metadata for it but no "
                            "channels; no mattes come of it",
                            "the Cryptomatte metadata of key \"7\" has no name; it is left out"));
}

TEST(Cryptomatte, RefusesIdsOfHalfFloats) {
    const Description file = descriptions::File(
        {.channels = Channels({"c00.R", "c00.G", "c00.B", "c00.A"}, SampleType::Half),
         .attributes = Metadata("c")});
    const Cryptomattes found = Find(file);
    ASSERT_EQ(found.all.size(), 1U);
    EXPECT_THAT(found.all[0].ranks, IsEmpty());
    EXPECT_THAT(found.all[0].layers, ElementsAre(0U));
    EXPECT_THAT(found.warnings,
                ElementsAre("Cryptomatte \"c\": its ids are half floats, which destroys them; "
                            "render it as 32-bit floats; no mattes come of it"));
}

TEST(Cryptomatte, TakesCoveragesOfHalfFloatsAndIdsOfIntegers) {
    const Description file = descriptions::File(
        {.channels = Joined(Channels({"c00.G", "c00.A"}, SampleType::Half),
                            Channels({"c00.R", "c00.B"}, SampleType::Unsigned32)),
         .attributes = Metadata("c")});
    EXPECT_EQ(Find(file).all.at(0).ranks.size(), 2U);
    EXPECT_THAT(Find(file).warnings, IsEmpty());
}

TEST(Cryptomatte, RefusesWhatCanNotBeRead) {
    EXPECT_THAT(Find(descriptions::File(
                         {.channels = Levels("c", 1), .attributes = Metadata("c"), .deep = true}))
                    .warnings,
                ElementsAre("Cryptomatte \"c\": its samples are deep, which can't be read; render "
                            "it flat; no mattes come of it"));
    std::vector<Channel> thinned = Levels("c", 1);
    thinned[1].xSampling = 2;
    EXPECT_THAT(
        Find(descriptions::File({.channels = thinned, .attributes = Metadata("c")})).warnings,
        ElementsAre("Cryptomatte \"c\": it has fewer samples than pixels; no mattes come of it"));
    EXPECT_THAT(
        Find(descriptions::File({.channels = Channels({"c00.R", "c00.B"}, SampleType::Unsigned8),
                                 .attributes = Metadata("c")}))
            .warnings,
        ElementsAre("Cryptomatte \"c\": layer \"c00\" has an id without its coverage; this "
                    "rank is left out",
                    "Cryptomatte \"c\": layer \"c00\" has an id without its coverage; this "
                    "rank is left out",
                    "Cryptomatte \"c\": its layers have no ids; no mattes come of it"));
}

TEST(Cryptomatte, LeavesOutARankThatIsNotWhole) {
    const Description file = descriptions::File(
        {.channels = Channels({"c00.R", "c00.G", "c00.A"}), .attributes = Metadata("c")});
    const Cryptomattes found = Find(file);
    EXPECT_THAT(RanksOf(file, found.all.at(0)), ElementsAre("c00.R c00.G"));
    EXPECT_THAT(found.warnings, ElementsAre("Cryptomatte \"c\": layer \"c00\" has a coverage "
                                            "without its id; this rank is left out"));
}

TEST(Cryptomatte, TellsOfLayersThatAreMissing) {
    const Description file = descriptions::File(
        {.channels = Channels({"c01.R", "c01.G", "c03.R", "c03.G"}), .attributes = Metadata("c")});
    const Cryptomattes found = Find(file);
    EXPECT_EQ(found.all.at(0).ranks.size(), 2U);
    EXPECT_THAT(found.warnings,
                ElementsAre("Cryptomatte \"c\": 2 layers before number 3 are missing; the mattes "
                            "lack what is in them"));
}

TEST(Cryptomatte, WarnsOfCompressionThatChangesIds) {
    const auto warnings = [](const std::string& compression,
                             const std::vector<std::string>& suffixes) {
        return Find(descriptions::File({.channels = Levels("c", 1, suffixes),
                                        .attributes = Metadata("c"),
                                        .compression = compression}))
            .warnings;
    };
    const auto lossy = ElementsAre(
        "Cryptomatte \"c\": compression dwab is lossy for channels of these names; expect wrong "
        "mattes, and render with another, such as zip");
    EXPECT_THAT(warnings("dwab", {"R", "G", "B", "A"}), lossy);
    EXPECT_THAT(warnings("dwab", {"X", "Y", "Z", "W"}), lossy);
    EXPECT_THAT(warnings("dwab", {"r", "g", "b", "a"}), IsEmpty());
    EXPECT_THAT(warnings("dwab", {"red", "green"}), IsEmpty());
    EXPECT_THAT(warnings("zip", {"R", "G", "B", "A"}), IsEmpty());
    EXPECT_THAT(warnings("pxr24", {"r", "g", "b", "a"}),
                ElementsAre("Cryptomatte \"c\": compression pxr24 rounds its ids, so that names "
                            "aren't found; render with another, such as zip"));
}

TEST(Cryptomatte, WarnsOfAnotherHash) {
    Attributes attributes = Metadata("c");
    attributes[1].second = std::string("md5");
    attributes[2].second = std::string("none");
    EXPECT_THAT(
        Find(descriptions::File({.channels = Levels("c", 1), .attributes = attributes})).warnings,
        ElementsAre("Cryptomatte \"c\": its hash is \"md5\" and not MurmurHash3_32; names may not "
                    "be found",
                    "Cryptomatte \"c\": its conversion is \"none\" and not uint32_to_float32; "
                    "names may not be found"));
}

TEST(Cryptomatte, WarnsOfAManifestThatIsMissingOrBroken) {
    Attributes attributes = Metadata("c");
    attributes.pop_back();
    EXPECT_THAT(
        Find(descriptions::File({.channels = Levels("c", 1), .attributes = attributes})).warnings,
        ElementsAre("Cryptomatte \"c\": it has no manifest; its mattes are named by their ids"));
    const Cryptomattes broken = Find(descriptions::File(
        {.channels = Levels("c", 1), .attributes = Metadata("c", R"({"19" rim":"13851a76"})")}));
    EXPECT_EQ(broken.all[0].manifest.NameOf(0x13851a76), "19\" rim");
    EXPECT_THAT(broken.warnings,
                ElementsAre("Cryptomatte \"c\": the manifest is not valid JSON; 1 name of it was "
                            "understood"));
}

class CryptomatteSidecar : public FolderTest {
  protected:
    [[nodiscard]] Cryptomattes Find(const std::string& name) const {
        Attributes attributes = Metadata("c", "");
        attributes.emplace_back("cryptomatte/13851a7/manif_file", name);
        Description file =
            descriptions::File({.channels = Levels("c", 1), .attributes = attributes});
        file.path = PathOf("a.exr");
        return command::Find(file);
    }
};

TEST_F(CryptomatteSidecar, GivesTheNames) {
    std::ofstream(folder / "names.json") << bunny;
    const Cryptomattes found = Find("names.json");
    EXPECT_EQ(found.all.at(0).manifest.NameOf(0x13851a76), "bunny");
    EXPECT_THAT(found.warnings, IsEmpty());
}

TEST_F(CryptomatteSidecar, IsToldOfWhereItCanNotBeRead) {
    const auto warning = [](const std::string& name, const std::string& fault) {
        return ElementsAre("Cryptomatte \"c\": its manifest file \"" + name + "\" " + fault +
                           "; its mattes are named by their ids");
    };
    EXPECT_THAT(Find("names.json").warnings, warning("names.json", "is missing"));
    EXPECT_EQ(Find("names.json").all.at(0).ranks.size(), 2U);
    EXPECT_THAT(Find("../names.json").warnings,
                warning("../names.json", "lies outside of the image's folder"));
    std::ofstream(folder / "names.json") << "";
    EXPECT_THAT(Find("names.json").warnings, warning("names.json", "is empty"));
    fs::resize_file(folder / "names.json", largestSidecar + 1);
    EXPECT_THAT(Find("names.json").warnings, warning("names.json", "has more than 64 MB"));
}

TEST(Cryptomatte, OfTheExampleHasItsObjectsAndMaterials) {
    const auto file = OpenRenderFile(VELTRANE_SOURCE_DIR "/examples/still.exr");
    const Description& description = file->GetDescription();
    const Cryptomattes found = Find(description);
    ASSERT_EQ(found.all.size(), 2U);
    EXPECT_THAT(found.warnings, IsEmpty());
    EXPECT_EQ(found.all[0].kind, CryptomatteKind::Material);
    EXPECT_EQ(found.all[1].kind, CryptomatteKind::Object);
    const Cryptomatte& objects = found.all[1];
    EXPECT_EQ(objects.name, "ViewLayer.CryptoObject");
    EXPECT_EQ(objects.place.viewLayer, "ViewLayer");
    EXPECT_THAT(RanksOf(description, objects),
                ElementsAre("ViewLayer.CryptoObject00.r ViewLayer.CryptoObject00.g",
                            "ViewLayer.CryptoObject00.b ViewLayer.CryptoObject00.a",
                            "ViewLayer.CryptoObject01.r ViewLayer.CryptoObject01.g",
                            "ViewLayer.CryptoObject01.b ViewLayer.CryptoObject01.a",
                            "ViewLayer.CryptoObject02.r ViewLayer.CryptoObject02.g",
                            "ViewLayer.CryptoObject02.b ViewLayer.CryptoObject02.a"));
    std::vector<std::string> names;
    for (const ManifestEntry& each : objects.manifest.entries)
        names.push_back(each.name);
    EXPECT_THAT(names,
                ElementsAre("Ground", "Floor catcher", "Glass sphere", "Lamp bulb", "W\xc3\xbcrfel",
                            "Pot/Lid", "Ring", "Suzanne", "Veil", "Kugel 07"));
    // The manifest has 004720e2.
    EXPECT_EQ(objects.manifest.NameOf(0x00c720e2), "Pot/Lid");
    for (const Cryptomatte& matte : found.all) {
        for (const ManifestEntry& each : matte.manifest.entries)
            EXPECT_EQ(each.id, CryptomatteID(each.name)) << each.name;
    }
}

}  // namespace
}  // namespace command
