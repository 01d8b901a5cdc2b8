// The facade: paths, the current set, and the way of the whole tree into a file.

#include "psdbuilder/psdbuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <boost/pointer_cast.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "psdfile/four_char_code.h"
#include "psdfile/image_resource_block.h"
#include "psdfile/stream_state.h"
#include "tests/documents/counting_stream.h"
#include "tests/documents/section_walker.h"
#include "tests/documents/test_sources.h"
#include "tests/documents/written_bytes.h"
#include "tests/psdbuilder/tree_text.h"

namespace psdbuilder {
namespace {

using psdfile::WalkedDocument;
using testing::ElementsAre;

constexpr std::uint32_t normal = psdfile::blendKeyNormal;
constexpr std::uint32_t pass = psdfile::blendKeyPassThrough;

class Builder : public testing::Test {
  protected:
    void Layer(const char* path, const char16_t* unicodePath = nullptr) {
        const auto pixels = psdfile::Flat(4, 1);
        builder.AddRGBLayer(path, unicodePath, normal, 0, pixels, pixels, pixels, {}, {}, true,
                            false);
    }
    void Begin(const char* path, const char16_t* unicodePath = nullptr) {
        builder.BeginLayerSet(path, unicodePath, pass, 0, false, {}, true);
    }
    std::string Tree() { return TreeText(*builder.doc); }
    boost::shared_ptr<PSDBuilderLayerSet> Set(const char* path) {
        return boost::dynamic_pointer_cast<PSDBuilderLayerSet>(
            builder.FindLayerSet(path, nullptr, false));
    }
    std::string Written(bool psb = false) {
        std::stringstream stream;
        psdfile::PSBMode(stream) = psb ? 1 : 0;
        stream << builder;
        return stream.str();
    }

    PSDBuilder builder{4, 2, 8, 72, 1, 1, 1, false};
};

TEST_F(Builder, StartsWithAnEmptyDocumentThatIsCurrent) {
    const PSDBuilder started(7, 8, 16, 300, 1.5, 2, 2, true);
    EXPECT_EQ(started.doc->width, 7);
    EXPECT_EQ(started.doc->height, 8);
    EXPECT_EQ(started.doc->depth, 16);
    EXPECT_EQ(started.doc->resolution, 300);
    EXPECT_EQ(started.doc->pixelAspectRatio, 1.5);
    EXPECT_EQ(started.doc->compression, 2);
    EXPECT_EQ(started.doc->version, 2);
    EXPECT_TRUE(started.doc->noRleForMerged16);
    EXPECT_FALSE(started.doc->hasRealMergedData);
    EXPECT_EQ(started.doc->progress, nullptr);
    EXPECT_TRUE(started.doc->children.empty());
    EXPECT_EQ(started.current.lock(), started.doc);
    EXPECT_TRUE(started.stack.empty());
}

TEST_F(Builder, MakesTheSetsOnTheWayToALayer) {
    Layer("A/B/C", u"A/B/Ç");
    EXPECT_EQ(Tree(), "A(B(C))");
    for (const char* path : {"A", "A/B"}) {
        const auto set = Set(path);
        ASSERT_TRUE(set);
        EXPECT_FALSE(set->open);
        EXPECT_EQ(set->blendKey, pass);
        EXPECT_EQ(set->flags, 0);
        EXPECT_FALSE(set->mask);
        EXPECT_TRUE(set->maskEnabled);
    }
    EXPECT_EQ(Set("A/B")->unicodeName, u"B");
    EXPECT_EQ(Set("A/B")->children.at(0)->unicodeName, u"Ç");
    EXPECT_EQ(Set("A/B")->children.at(0)->parent.lock(), Set("A/B"));
    EXPECT_EQ(Set("A")->parent.lock(), builder.doc);
}

TEST_F(Builder, PutsALaterLayerOfTheSamePathBelow) {
    Layer("A/B/C");
    Layer("A/B/D");
    EXPECT_EQ(Tree(), "A(B(C D))");
}

TEST_F(Builder, KeepsADoubledSlashInANameAndSplitsATripledOne) {
    Layer("a//b");
    EXPECT_EQ(Tree(), "a//b");
    Layer("a///b");
    EXPECT_EQ(Tree(), "a//b a(//b)");
}

TEST_F(Builder, FollowsARelativePathFromTheCurrentSetAndAnAbsoluteOneFromTheDocument) {
    Begin("S");
    Layer("/A");
    Layer("A");
    Layer("/T/B");
    Layer("T/C");
    builder.EndLayerSet();
    Layer("D");
    EXPECT_EQ(Tree(), "S(A T(C)) A T(B) D");
}

TEST_F(Builder, BeginsAndEndsSetsLikeAStack) {
    Begin("A");
    Begin("B/C");
    Layer("L");
    builder.EndLayerSet();
    Layer("M");
    builder.EndLayerSet();
    Layer("N");
    EXPECT_EQ(Tree(), "A(B(C(L)) M) N");
    EXPECT_TRUE(builder.stack.empty());
    EXPECT_EQ(builder.current.lock(), builder.doc);
}

TEST_F(Builder, MakesANewSetWithTheValuesGiven) {
    const auto mask = psdfile::Flat(4, 9);
    builder.BeginLayerSet("A/B", u"A/ß", normal, 2, true, mask, false);
    const auto set = Set("/A/B");
    ASSERT_TRUE(set);
    EXPECT_EQ(set->unicodeName, u"ß");
    EXPECT_EQ(set->blendKey, normal);
    EXPECT_EQ(set->flags, 2);
    EXPECT_TRUE(set->open);
    EXPECT_EQ(set->mask, mask);
    EXPECT_FALSE(set->maskEnabled);
    EXPECT_FALSE(set->clipping);
    EXPECT_EQ(builder.current.lock(), set);
}

TEST_F(Builder, EntersAnExistingSetAndLeavesItAsItIs) {
    Begin("A");
    builder.EndLayerSet();
    builder.BeginLayerSet("A", nullptr, normal, 2, true, psdfile::Flat(4, 9), false);
    const auto set = Set("/A");
    EXPECT_EQ(builder.current.lock(), set);
    EXPECT_EQ(set->blendKey, pass);
    EXPECT_EQ(set->flags, 0);
    EXPECT_FALSE(set->open);
    EXPECT_FALSE(set->mask);
    EXPECT_TRUE(set->maskEnabled);
    EXPECT_EQ(builder.doc->children.size(), 1U);
}

TEST_F(Builder, MakesASecondSetWhenALayerOfTheNameStandsBeforeTheFirst) {
    Layer("X");
    Begin("X");
    builder.EndLayerSet();
    Begin("X");
    Layer("L");
    EXPECT_EQ(Tree(), "X X() X(L)");
}

TEST_F(Builder, FindsASetBeforeALayerOfTheSameName) {
    Begin("X");
    builder.EndLayerSet();
    Layer("X");
    Layer("X/L");
    EXPECT_EQ(Tree(), "X(L) X");
}

TEST_F(Builder, FindsASetByItsUnicodeNameFirst) {
    Begin("?", u"ä");
    builder.EndLayerSet();
    Begin("?2", u"ö");
    builder.EndLayerSet();
    Layer("?/L", u"ö/L");
    EXPECT_EQ(Tree(), "?() ?2(L)");
}

TEST_F(Builder, FindsASetByItsNameWhenTheUnicodeNameLeadsToNone) {
    Begin("A", u"ä");
    builder.EndLayerSet();
    Layer("A/L", u"ö/L");
    EXPECT_EQ(Tree(), "A(L)");
    EXPECT_EQ(Set("A")->unicodeName, u"ä");
    // A layer of the Unicode name is no set: the name decides.
    Layer("M", u"µ");
    Layer("A/N", u"µ/N");
    EXPECT_EQ(Tree(), "A(L N) M");
}

TEST_F(Builder, LeavesUnicodeNamesEmptyThatAShorterPathDoesNotGive) {
    builder.FindLayerSet("A/B", u"Ä", true);
    EXPECT_EQ(Set("A")->unicodeName, u"Ä");
    EXPECT_EQ(Set("A/B")->unicodeName, u"");
}

TEST_F(Builder, FindsNothingOnAPathThatLeadsNowhere) {
    Layer("A/L");
    EXPECT_FALSE(builder.FindLayerSet(nullptr, nullptr, true));
    EXPECT_FALSE(builder.FindLayerSet("B", nullptr, false));
    EXPECT_FALSE(builder.FindLayerSet("A/L", nullptr, false));
    EXPECT_EQ(builder.FindLayerSet("", nullptr, false), builder.doc);
    EXPECT_EQ(builder.FindLayerSet("/", nullptr, false), builder.doc);
    EXPECT_EQ(Tree(), "A(L)");
}

TEST_F(Builder, ComparesNamesByTheirBytes) {
    Begin("a");
    builder.EndLayerSet();
    Layer("A/L");
    EXPECT_EQ(Tree(), "a() A(L)");
}

TEST_F(Builder, StoresALayerWithoutColourChannelsButDoesNotWriteIt) {
    builder.AddRGBLayer("a", nullptr, normal, 0, {}, {}, {}, {}, {}, true, false);
    EXPECT_EQ(builder.doc->children.size(), 1U);
    EXPECT_TRUE(psdfile::WalkDocument(Written(), false).layers.empty());
}

TEST_F(Builder, KeepsWhatALayerIsGiven) {
    const auto mask = psdfile::Flat(4, 9);
    const auto block = boost::make_shared<psdfile::PSDLREDRB_Base>(psdfile::FourCharCode("curv"));
    builder.AddAdjustmentLayer("S/a", u"S/ä", normal, 2, block, mask, false, true);
    const auto layer =
        boost::dynamic_pointer_cast<PSDBuilderAdjustmentLayer>(Set("S")->children.at(0));
    ASSERT_TRUE(layer);
    EXPECT_EQ(layer->name, "a");
    EXPECT_EQ(layer->unicodeName, u"ä");
    EXPECT_EQ(layer->blendKey, normal);
    EXPECT_EQ(layer->flags, 2);
    EXPECT_EQ(layer->adjustment, block);
    EXPECT_EQ(layer->mask, mask);
    EXPECT_FALSE(layer->maskEnabled);
    EXPECT_TRUE(layer->clipping);
}

TEST_F(Builder, TakesTheNamesOfSpareChannelsWhole) {
    Begin("S");
    builder.AddChannel("a/b", u"ä/b", psdfile::Flat(4, 1));
    builder.AddChannel("c", nullptr, psdfile::Flat(4, 2));
    ASSERT_EQ(builder.doc->channels.size(), 2U);
    EXPECT_EQ(builder.doc->channels[0].name, "a/b");
    EXPECT_EQ(builder.doc->channels[0].unicodeName, u"ä/b");
    EXPECT_EQ(builder.doc->channels[1].unicodeName, u"");
}

TEST_F(Builder, ReplacesTheMergedImageOfAnEarlierCall) {
    const auto first = psdfile::Flat(4, 1);
    const auto second = psdfile::Flat(4, 2);
    builder.SetMergedImage(true, first, first, first, first);
    builder.SetMergedImage(false, second, second, second, {});
    EXPECT_FALSE(builder.doc->hasRealMergedData);
    EXPECT_EQ(builder.doc->mergedRed, second);
    EXPECT_FALSE(builder.doc->mergedAlpha);
}

TEST_F(Builder, WritesAnEmptyDocumentWithItsMergedImageOnly) {
    builder.SetMergedImage(true, psdfile::Flat(4, 1), psdfile::Flat(4, 2), psdfile::Flat(4, 3), {});
    const WalkedDocument document = psdfile::WalkDocument(Written(), false);
    EXPECT_TRUE(document.layers.empty());
    EXPECT_THAT(document.imageChannels,
                ElementsAre(std::string(8, 1), std::string(8, 2), std::string(8, 3)));
}

TEST_F(Builder, WritesTheTreeWithTheTopLayerLast) {
    Begin("A", u"A");
    Layer("B", u"B");
    builder.EndLayerSet();
    Layer("C", u"C");
    builder.SetMergedImage(true, psdfile::Flat(4, 1), psdfile::Flat(4, 2), psdfile::Flat(4, 3),
                           psdfile::Flat(4, 4));
    builder.AddChannel("one", u"one", psdfile::Flat(4, 5));
    builder.AddChannel("two", u"two", psdfile::Flat(4, 6));
    builder.AddImageResource(
        boost::make_shared<psdfile::PSDImageResourceBlock>(std::uint16_t{30000}, "helper"));
    const WalkedDocument document = psdfile::WalkDocument(Written(), false);
    std::vector<std::string> names;
    for (const psdfile::WalkedLayer& layer : document.layers) {
        names.push_back(layer.name);
    }
    EXPECT_THAT(names, ElementsAre("C", "</Layer set>", "B", "A"));
    EXPECT_EQ(psdfile::Hex(document.layers.back().blocks.at("lsct")),
              "00 00 00 02 38 42 49 4D 70 61 73 73");
    std::vector<int> ids;
    for (const psdfile::WalkedResource& resource : document.resources) {
        ids.push_back(resource.id);
    }
    EXPECT_THAT(ids, ElementsAre(1034, 1005, 1064, 1057, 30000, 1006, 1045));
    EXPECT_EQ(document.channelCount, 6);
    EXPECT_EQ(document.imageChannels.at(5), std::string(8, 6));
}

TEST_F(Builder, LeavesWideChannelNamesOutWhenOneIsEmpty) {
    builder.SetMergedImage(true, psdfile::Flat(4, 1), psdfile::Flat(4, 2), psdfile::Flat(4, 3), {});
    builder.AddChannel("one", u"one", psdfile::Flat(4, 5));
    builder.AddChannel("two", nullptr, psdfile::Flat(4, 6));
    for (const auto& resource : psdfile::WalkDocument(Written(), false).resources) {
        EXPECT_NE(resource.id, 1045);
    }
}

TEST_F(Builder, WritesTheSameDocumentAgainInTheOtherFormat) {
    Layer("A/B", u"A/B");
    builder.SetMergedImage(true, psdfile::Flat(4, 1), psdfile::Flat(4, 2), psdfile::Flat(4, 3), {});
    const std::string first = Written();
    EXPECT_EQ(Written(), first);
    builder.doc->version = 2;
    const WalkedDocument large = psdfile::WalkDocument(Written(true), true);
    const WalkedDocument small = psdfile::WalkDocument(first, false);
    EXPECT_TRUE(large.psb);
    EXPECT_FALSE(small.psb);
    ASSERT_EQ(large.layers.size(), small.layers.size());
    for (std::size_t i = 0; i < small.layers.size(); ++i) {
        EXPECT_EQ(large.layers[i].name, small.layers[i].name);
        EXPECT_EQ(large.layers[i].blocks, small.layers[i].blocks);
        for (std::size_t c = 0; c < small.layers[i].channels.size(); ++c) {
            EXPECT_EQ(large.layers[i].channels[c].pixels, small.layers[i].channels[c].pixels);
        }
    }
    EXPECT_EQ(large.imageChannels, small.imageChannels);
    EXPECT_EQ(Tree(), "A(B)");
}

TEST_F(Builder, OutgrowsAPSDAndIsWrittenAgainAsAPSB) {
    PSDBuilder large(30000, 30000, 8, 72, 1, 0, 1, false);
    const auto pixels = psdfile::Flat(30000, 1);
    large.AddRGBLayer("a", nullptr, normal, 0, pixels, pixels, pixels, {}, {}, true, false);
    psdfile::CountingBuffer small;
    std::ostream psd(&small);
    psd << large;
    EXPECT_TRUE(psd.fail());
    EXPECT_EQ(psdfile::FileTooLarge(psd), 1);

    large.doc->version = 2;
    psdfile::CountingBuffer second;
    std::ostream psb(&second);
    psdfile::PSBMode(psb) = 1;
    psb << large;
    EXPECT_TRUE(psb.good());
    EXPECT_GT(second.Size(), 2700000000);
}

TEST_F(Builder, TellsTheDocumentsProgress) {
    class Recorder : public psdfile::PSDWriteTotalProgressCallback {
      public:
        void TotalProgress(int done, int total) override { last = {done, total}; }
        std::pair<int, int> last;
    };
    Recorder recorder;
    Layer("A");
    builder.SetMergedImage(true, psdfile::Flat(4, 1), psdfile::Flat(4, 2), psdfile::Flat(4, 3), {});
    builder.doc->progress = &recorder;
    Written();
    EXPECT_EQ(recorder.last, std::pair(6, 6));
}

TEST_F(Builder, ReleasesItsSourcesWithTheTree) {
    const auto pixels = psdfile::Flat(4, 1);
    {
        PSDBuilder shortLived(4, 2, 8, 72, 1, 0, 1, false);
        shortLived.AddRGBLayer("A/B", nullptr, normal, 0, pixels, pixels, pixels, {}, {}, true,
                               false);
        shortLived.BeginLayerSet("A", nullptr, pass, 0, false, pixels, true);
        std::stringstream stream;
        shortLived.Write(stream);
        EXPECT_EQ(pixels.use_count(), 4);
    }
    EXPECT_EQ(pixels.use_count(), 1);
}

}  // namespace
}  // namespace psdbuilder
