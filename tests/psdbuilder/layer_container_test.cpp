// Which layer sets are pruned.

#include "psdbuilder/layer_container.h"

#include <gtest/gtest.h>

#include "psdbuilder/psdbuilder.h"
#include "tests/documents/test_sources.h"
#include "tests/psdbuilder/tree_text.h"

namespace psdbuilder {
namespace {

class RemoveEmpty : public testing::Test {
  protected:
    void Set(const char* path) {
        builder.BeginLayerSet(path, nullptr, 0, 0, false, {}, true);
        builder.EndLayerSet();
    }
    void Layer(const char* path) {
        builder.AddRGBLayer(path, nullptr, 0, 0, {}, {}, {}, {}, {}, true, false);
    }
    std::string Pruned() {
        RemoveEmptyLayerSets(*builder.doc);
        return TreeText(*builder.doc);
    }

    PSDBuilder builder{4, 4, 8, 72, 1, 0, 1, false};
};

TEST_F(RemoveEmpty, TakesNestedEmptySetsOutAtOnce) {
    Set("A/B/C");
    EXPECT_EQ(Pruned(), "");
}

TEST_F(RemoveEmpty, KeepsASetThatHasALayerBesideAnEmptySet) {
    Set("A/B/C");
    Layer("A/L");
    EXPECT_EQ(Pruned(), "A(L)");
}

TEST_F(RemoveEmpty, KeepsASetThatHasALayerAtAnyDepth) {
    Layer("A/B/C/L");
    Set("A/X");
    EXPECT_EQ(Pruned(), "A(B(C(L)))");
}

TEST_F(RemoveEmpty, TakesNeighboursOutOneAfterTheOther) {
    Set("A");
    Set("B");
    Layer("L");
    Set("C");
    Layer("D/M");
    Set("E");
    Set("F");
    EXPECT_EQ(Pruned(), "L D(M)");
}

TEST_F(RemoveEmpty, LooksAtNeitherMaskNorFlagsNorName) {
    builder.BeginLayerSet("named by the user", u"named", 0, 2, true, psdfile::Solid(4, 255), false);
    builder.EndLayerSet();
    EXPECT_EQ(Pruned(), "");
}

TEST_F(RemoveEmpty, LeavesSpareChannelsAlone) {
    builder.AddChannel("spare", nullptr, psdfile::Flat(4, 1));
    Set("A");
    EXPECT_EQ(Pruned(), "");
    EXPECT_EQ(builder.doc->channels.size(), 1U);
}

TEST_F(RemoveEmpty, OfASetLeavesTheRestOfTheDocument) {
    Set("A/B");
    Set("C");
    RemoveEmptyLayerSets(*builder.FindLayerSet("A", nullptr, false));
    EXPECT_EQ(TreeText(*builder.doc), "A() C()");
}

}  // namespace
}  // namespace psdbuilder
