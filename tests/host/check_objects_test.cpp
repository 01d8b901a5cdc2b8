// Faults of a file's objects: each breaks one thing of a list that is well.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/host/saved_sample.h"

namespace {

using host::SavedReference;
using host::SceneTarget;
using testing::ElementsAre;
using testing::IsEmpty;

class CheckObjectsTest : public testing::Test {
  protected:
    CheckObjectsTest() {
        classes.Add(&desc);
        for (host::Handle handle : {1U, 2U, 3U})
            objects.push_back(SavedSampleObject(handle));
        // 1 refers to 2 and 3, and 2 to 3.
        objects[0].references[1] = SavedReference{2};
        SampleBlockOf(objects[0]).parameters = {
            {SAMPLE_INT, TYPE_INT, {1}},
            {SAMPLE_NODES, TYPE_INODE_TAB, {SavedReference{50}, SavedReference{0}}},
            {SAMPLE_TARGETS,
             TYPE_REFTARG_TAB,
             {SavedReference{3}, SavedReference{51}, SavedReference{52}}},
        };
        objects[1].references[1] = SavedReference{3};
    }
    // "index: text" of each.
    std::vector<std::string> Faults() {
        std::vector<std::string> faults;
        for (const host::ObjectFault& fault : host::CheckObjects(objects, known, classes))
            faults.push_back(std::to_string(fault.index) + ": " + fault.text);
        return faults;
    }
    // Of the first object with this parameter besides.
    std::vector<std::string> FaultsWith(ParamID id, int type,
                                        std::vector<host::SavedValue> values) {
        SampleBlockOf(objects[0]).parameters = {
            {id, static_cast<ParamType2>(type), std::move(values)}};
        return Faults();
    }

    SavedSampleDesc desc;
    host::ClassDirectory classes;
    std::vector<host::KnownTarget> known{
        {50, SceneTarget::Node}, {51, SceneTarget::Layer}, {52, SceneTarget::RenderElement}};
    std::vector<host::SavedObject> objects;
};

TEST_F(CheckObjectsTest, AGoodListHasNone) {
    EXPECT_THAT(Faults(), IsEmpty());
    objects.clear();
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(CheckObjectsTest, AClassThatNobodyOffers) {
    objects[1].classID = Class_ID(0x70068609, 0x01d5d297);
    objects[1].superClass = 4240;
    EXPECT_THAT(Faults(), ElementsAre("1: no library offers the class (0x70068609, 0x01d5d297) of "
                                      "the super class 4240"));
}

TEST_F(CheckObjectsTest, AClassOfObjectsThatHaveNoPlace) {
    class Format : public SavedSampleDesc {
      public:
        SClass_ID SuperClassID() override { return BMM_IO_CLASS_ID; }
    };
    Format format;
    classes.Add(&format);
    objects[1].superClass = BMM_IO_CLASS_ID;
    EXPECT_THAT(Faults(),
                ElementsAre("1: objects of the super class 2864 have no place in a scene file"));
    EXPECT_EQ(format.living, 0);
}

TEST_F(CheckObjectsTest, HandlesThatAreNoneOrTaken) {
    objects.push_back(SavedSampleObject(0));
    objects.push_back(SavedSampleObject(3));
    objects.push_back(SavedSampleObject(51));
    EXPECT_THAT(Faults(), ElementsAre("3: has the handle 0, which stands for no object",
                                      "4: has the handle 3, which is taken already",
                                      "5: has the handle 51, which is taken already"));
}

TEST_F(CheckObjectsTest, ReferencesToWhatIsNotThere) {
    objects[1].references[1] = SavedReference{77};
    EXPECT_THAT(
        Faults(),
        ElementsAre("1: the reference 1 is to the object 77, which is nowhere in the file"));
}

TEST_F(CheckObjectsTest, ReferencesFromABlockToWhatIsNotThere) {
    EXPECT_THAT(FaultsWith(SAMPLE_TARGETS, TYPE_REFTARG_TAB,
                           {SavedReference{3}, SavedReference{77}, SavedReference{78}}),
                ElementsAre("0: the parameter 11 (targets) of the block 3 is to the object 77, "
                            "which is nowhere in the file"));
    EXPECT_THAT(FaultsWith(99, TYPE_REFTARG, {SavedReference{77}}),
                ElementsAre("0: the parameter 99 of the block 3 is to the object 77, which is "
                            "nowhere in the file"))
        << "of a parameter that isn't there any more, too";
}

TEST_F(CheckObjectsTest, NoNodesWhereNodesMustBe) {
    EXPECT_THAT(FaultsWith(SAMPLE_NODES, TYPE_INODE_TAB, {SavedReference{50}, SavedReference{52}}),
                ElementsAre("0: the parameter 12 (nodes) of the block 3 is to the object 52, a "
                            "render element, where a node must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_NODE, TYPE_INODE, {SavedReference{51}}),
                ElementsAre("0: the parameter 8 (node) of the block 3 is to the object 51, a "
                            "scene layer, where a node must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_NODE, TYPE_INODE, {SavedReference{3}}),
                ElementsAre("0: the parameter 8 (node) of the block 3 is to the object 3 where a "
                            "node must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_NODE, TYPE_REFTARG, {SavedReference{50}}), IsEmpty());
}

TEST_F(CheckObjectsTest, NoNodeWhereTheOwnersReferenceMustBeOne) {
    class NodeOwnerDesc : public SavedSampleDesc {
      public:
        NodeOwnerDesc() : SavedSampleDesc(nullptr, Class_ID(7, 9)) {
            block.AddParam(40, _M("ownersNode"), TYPE_INODE, P_OWNERS_REF, 0, p_refno, 1, p_end);
        }
    };
    NodeOwnerDesc nodeOwner;
    classes.Add(&nodeOwner);
    objects[1].classID = Class_ID(7, 9);
    objects[1].references[1] = SavedReference{50};
    EXPECT_THAT(Faults(), IsEmpty());
    objects[1].references[1] = SavedReference{52};
    EXPECT_THAT(Faults(), ElementsAre("1: the reference 1 is to the object 52, a render element, "
                                      "where a node must be"));
}

TEST_F(CheckObjectsTest, AnObjectWhereABlockMustBe) {
    objects[0].references[0] = SavedReference{3};
    EXPECT_THAT(Faults(), ElementsAre("0: the reference 0 is to the object 3 where a parameter "
                                      "block must be"));
}

TEST_F(CheckObjectsTest, Circles) {
    objects[2].references[1] = SavedReference{1};
    EXPECT_THAT(Faults(), ElementsAre("2: refers to the object 1, which refers back to it"));
    objects[2].references[1] = SavedReference{3};
    EXPECT_THAT(Faults(), ElementsAre("2: refers to itself"));
    objects[2].references[1] = SavedReference{};
    SampleBlockOf(objects[2]).parameters = {{SAMPLE_TARGET, TYPE_REFTARG, {SavedReference{2}}}};
    EXPECT_THAT(Faults(), ElementsAre("1: refers to the object 3, which refers back to it"));
}

TEST_F(CheckObjectsTest, ChainsOfMoreThanSixtyFour) {
    objects.clear();
    known.clear();
    for (host::Handle handle = 1; handle <= 64; ++handle) {
        objects.push_back(SavedSampleObject(handle));
        objects.back().references[1] = SavedReference{handle < 64 ? handle + 1 : 0};
    }
    EXPECT_THAT(Faults(), IsEmpty());
    objects.push_back(SavedSampleObject(65));
    objects.back().references[1] = SavedReference{1};
    EXPECT_THAT(Faults(), ElementsAre("64: begins a chain of more than 64 objects that refer to "
                                      "each other"));
}

TEST_F(CheckObjectsTest, AChainOfAHundredThousandIsOneFault) {
    objects.clear();
    known.clear();
    for (host::Handle handle = 1; handle <= 100000; ++handle) {
        objects.push_back(SavedSampleObject(handle));
        objects.back().references[1] = SavedReference{handle < 100000 ? handle + 1 : 0};
    }
    EXPECT_THAT(Faults(), ElementsAre("99935: begins a chain of more than 64 objects that refer "
                                      "to each other"));
}

TEST_F(CheckObjectsTest, ValuesOfAnotherKind) {
    EXPECT_THAT(FaultsWith(SAMPLE_INT, TYPE_INT, {MSTR(_M("1"))}),
                ElementsAre("0: the parameter 0 (int) of the block 3 holds a text where a number "
                            "must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_STRING, TYPE_STRING, {1}),
                ElementsAre("0: the parameter 6 (string) of the block 3 holds a number where a "
                            "text must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_BOOL, TYPE_BOOL, {SavedReference{0}}),
                ElementsAre("0: the parameter 2 (bool) of the block 3 holds a reference where a "
                            "number must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_TARGET, TYPE_REFTARG, {1.5F}),
                ElementsAre("0: the parameter 9 (target) of the block 3 holds a number where a "
                            "reference must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_STRINGS, TYPE_STRING_TAB, {MSTR(_M("a")), 2, 3}),
                ElementsAre("0: the parameter 13 (strings) of the block 3 holds a number where a "
                            "text must be"));
}

TEST_F(CheckObjectsTest, NumbersStandForEachOther) {
    EXPECT_THAT(FaultsWith(SAMPLE_INT, TYPE_FLOAT, {1.5F}), IsEmpty());
    EXPECT_THAT(FaultsWith(SAMPLE_FLOAT, TYPE_INT, {1}), IsEmpty());
    EXPECT_THAT(FaultsWith(SAMPLE_BOOL, TYPE_FLOAT, {1.0F}), IsEmpty());
    EXPECT_THAT(FaultsWith(SAMPLE_FLOAT, TYPE_FLOAT, {std::nanf("")}),
                ElementsAre("0: the parameter 3 (float) of the block 3 holds what is no number"));
}

TEST_F(CheckObjectsTest, ATextWithTheCharacterZero) {
    const MSTR text(std::basic_string<MCHAR>(_M("a\0b"), 3));
    EXPECT_THAT(FaultsWith(SAMPLE_STRING, TYPE_STRING, {text}),
                ElementsAre("0: the parameter 6 (string) of the block 3 holds a text with the "
                            "character 0 in it"));
}

TEST_F(CheckObjectsTest, TablesAndSingleValues) {
    EXPECT_THAT(FaultsWith(SAMPLE_STRINGS, TYPE_STRING, {MSTR(_M("a"))}),
                ElementsAre("0: the parameter 13 (strings) of the block 3 holds one value where a "
                            "table must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_STRING, TYPE_STRING_TAB, {MSTR(_M("a"))}),
                ElementsAre("0: the parameter 6 (string) of the block 3 holds a table where one "
                            "value must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_INT, TYPE_INT, {1, 2}),
                ElementsAre("0: the parameter 0 (int) of the block 3 holds 2 values where one "
                            "must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_INT, TYPE_INT, {}),
                ElementsAre("0: the parameter 0 (int) of the block 3 holds 0 values where one "
                            "must be"));
    EXPECT_THAT(FaultsWith(SAMPLE_STRINGS, TYPE_STRING_TAB, {}), IsEmpty());
}

TEST_F(CheckObjectsTest, AParameterThatIsThereTwice) {
    SampleBlockOf(objects[0]).parameters = {{SAMPLE_INT, TYPE_INT, {1}},
                                            {99, TYPE_INT, {1}},
                                            {SAMPLE_INT, TYPE_INT, {2}},
                                            {99, TYPE_INT, {1}}};
    EXPECT_THAT(Faults(), ElementsAre("0: the parameter 0 (int) of the block 3 is there twice",
                                      "0: the parameter 99 of the block 3 is there twice"));
}

TEST_F(CheckObjectsTest, WhatTheClassNoLongerHasMayHoldAnything) {
    EXPECT_THAT(FaultsWith(99, TYPE_INT, {MSTR(_M("a")), 2}), IsEmpty());
    EXPECT_THAT(FaultsWith(SAMPLE_OWNERS_TARGET, TYPE_REFTARG, {1}), IsEmpty());
    SampleBlockOf(objects[0]).id = 9;
    EXPECT_THAT(FaultsWith(SAMPLE_INT, TYPE_INT, {MSTR(_M("a"))}), IsEmpty());
}

TEST_F(CheckObjectsTest, ChunksThatLieTooDeep) {
    std::vector<host::SavedChunk> chunks;
    for (int depth = 0; depth < 64; ++depth)
        chunks = {{1, {}, chunks}, {2, {}, {}}};
    objects[1].chunks = chunks;
    EXPECT_THAT(Faults(), IsEmpty());
    objects[1].chunks = {{1, {}, chunks}};
    EXPECT_THAT(Faults(), ElementsAre("1: has chunks that lie in each other deeper than 64"));
}

}  // namespace
