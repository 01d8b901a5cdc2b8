#include "effect/layer_stack.h"

#include <elementclasses.h>

#include <utility>

#include "tests/effect/matte_frame.h"

namespace {

using effect::StackRow;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

std::vector<int> built;

template <int row>
void Note(psdbuilder::PSDBuilder&, const effect::Frame&) {
    built.push_back(row);
}

// Position and switch of each kind of output, in the order of the ties. The shadows have no switch
// of their own here and borrow one.
constexpr StackRow stackRows[] = {
    {101, 102, Note<1>}, {106, 105, Note<2>},  {120, 119, Note<3>}, {93, 25, Note<4>},
    {94, 26, Note<5>},   {95, 48, Note<6>},    {96, 71, Note<7>},   {97, 18, Note<8>},
    {98, 20, Note<9>},   {99, 28, Note<10>},   {100, 67, Note<11>}, {118, 116, Note<12>},
    {112, 37, Note<13>}, {115, 113, Note<14>},
};

class LayerStack : public DocumentFrameTest {
  protected:
    LayerStack() {
        for (const StackRow& row : stackRows)
            Set(*row.enabling, TRUE);
    }
    std::vector<int> Run(std::span<const StackRow> stack = stackRows) {
        built.clear();
        effect::RunLayerStack(builder, FrameOf(image.get()), stack);
        return built;
    }
};

TEST_F(LayerStack, RunsFromLowPositionsToHigh) {
    EXPECT_THAT(Run(), ElementsAre(1, 2, 3, 4, 12, 5, 6, 7, 8, 9, 10, 11, 13, 14));
    Set("backgroundLayerOrder"_param, 1);
    Set("renderOrder"_param, 1999);
    EXPECT_THAT(Run(), ElementsAre(1, 2, 3, 14, 12, 5, 6, 7, 8, 9, 10, 11, 13, 4));
}

TEST_F(LayerStack, AtEqualPositionsRunsInItsOwnOrder) {
    for (const int position : {0, 1, 700, 2000}) {
        for (const StackRow& row : stackRows)
            Set(row.position, position);
        EXPECT_THAT(Run(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14)) << position;
    }
}

TEST_F(LayerStack, APositionOf0ComesBeforeAllPositiveOnes) {
    for (const StackRow& row : stackRows)
        Set(row.position, 1);
    Set("objectsOrder"_param, 0);
    EXPECT_EQ(Run().front(), 10);
}

TEST_F(LayerStack, WhatIsSwitchedOffIsLeftOut) {
    for (const StackRow& row : stackRows) {
        Set(*row.enabling, FALSE);
        EXPECT_EQ(Run().size(), 13U);
        Set(*row.enabling, TRUE);
    }
    for (const StackRow& row : stackRows)
        Set(*row.enabling, FALSE);
    EXPECT_THAT(Run(), IsEmpty());
}

TEST_F(LayerStack, StoredPositionsAreClamped) {
    EXPECT_EQ(effect::ClampPosition(-1), 0);
    EXPECT_EQ(effect::ClampPosition(-2000000000), 0);
    EXPECT_EQ(effect::ClampPosition(0), 0);
    EXPECT_EQ(effect::ClampPosition(1), 1);
    EXPECT_EQ(effect::ClampPosition(2000), 2000);
    EXPECT_EQ(effect::ClampPosition(2001), 2000);
    EXPECT_EQ(effect::ClampPosition(5000), 2000);
}

// Positions in a block without ranges, as an old scene may hold them.
class StoredPositions : public DocumentFrameTest {
  protected:
    // Owns blocks of the descriptor below.
    class Descriptor : public ClassDesc2 {
      public:
        int IsPublic() override { return 0; }
        void* Create(BOOL) override { return nullptr; }
        const MCHAR* ClassName() override { return _M(""); }
        SClass_ID SuperClassID() override { return REF_TARGET_CLASS_ID; }
        Class_ID ClassID() override { return {}; }
        const MCHAR* Category() override { return _M(""); }
    };
    class Owner : public ReferenceTarget {
      public:
        explicit Owner(ClassDesc2& descriptor) { descriptor.MakeAutoParamBlocks(this); }
        int NumRefs() override { return 1; }
        RefTargetHandle GetReference(int) override { return block; }
        RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                                   BOOL) override {
            return REF_SUCCEED;
        }
        IParamBlock2* block = nullptr;

      protected:
        ~Owner() override { DeleteAllRefsFromMe(); }
        void SetReference(int, RefTargetHandle target) override {
            block = dynamic_cast<IParamBlock2*>(target);
        }
    };

    StoredPositions() {
        for (const int id : {1, 2, 3}) {
            desc.AddParam(id, _M("position"), TYPE_INT, 0, 0, p_end);
            desc.AddParam(id + 10, _M("on"), TYPE_BOOL, 0, 0, p_default, TRUE, p_end);
        }
        owner.reset(new Owner(descriptor));
    }
    std::vector<int> Run(int first, int second, int third) {
        constexpr StackRow raw[] = {{1, 11, Note<1>}, {2, 12, Note<2>}, {3, 13, Note<3>}};
        owner->block->SetValue(1, 0, first);
        owner->block->SetValue(2, 0, second);
        owner->block->SetValue(3, 0, third);
        built.clear();
        const effect::Frame frame{{},          *effect, *owner->block, context, colors,
                                  premultiply, width,   height,        black,   white};
        effect::RunLayerStack(builder, frame, raw);
        return built;
    }

    Descriptor descriptor;
    ParamBlockDesc2 desc{0, _M("params"), 0, &descriptor, P_AUTO_CONSTRUCT | P_VERSION, 1,
                         0, int{p_end}};
    host::Owned<Owner> owner;
};

TEST_F(StoredPositions, Above2000CountAs2000AndAreStillReached) {
    EXPECT_THAT(Run(5000, 2000, 100), ElementsAre(3, 1, 2));
    EXPECT_THAT(Run(2000, 5000, 1999), ElementsAre(3, 1, 2));
}

TEST_F(StoredPositions, BelowZeroCountAsZero) {
    EXPECT_THAT(Run(0, -7, 1), ElementsAre(1, 2, 3));
    EXPECT_THAT(Run(1, -7, 0), ElementsAre(2, 3, 1));
}

TEST_F(LayerStack, ARowWithoutASwitchIsAlwaysBuilt) {
    constexpr StackRow stack[] = {{93, {}, Note<1>}, {94, 26, Note<2>}};
    Set("createRenderElementLayers"_param, FALSE);
    EXPECT_THAT(Run(stack), ElementsAre(1));
}

void Prepare(const effect::Frame&) {
    built.push_back(0);
}

TEST_F(LayerStack, ARowIsPreparedWhenItsTurnComesWhetherItIsOnOrNot) {
    constexpr StackRow stack[] = {{94, 26, Note<5>, Prepare}, {93, 25, Note<4>}, {95, 48, Note<6>}};
    EXPECT_THAT(Run(stack), ElementsAre(4, 0, 5, 6));
    Set("createRenderElementLayers"_param, FALSE);
    EXPECT_THAT(Run(stack), ElementsAre(4, 0, 6));
    Set("renderElementsOrder"_param, 2000);
    EXPECT_THAT(Run(stack), ElementsAre(4, 6, 0));
}

TEST_F(LayerStack, ItsRowsBuildTheRenderAtItsPosition) {
    for (const StackRow& row : effect::StackRows()) {
        if (row.enabling) Set(*row.enabling, FALSE);
    }
    Set("createGBufferLayerSet"_param, FALSE);
    Set("createRenderOutputLayer"_param, TRUE);
    effect::RunLayerStack(builder, FrameOf(image.get()));
    ASSERT_EQ(Document().children.size(), 1U);
    EXPECT_EQ(Document().children[0]->name, "Render");
}

TEST_F(LayerStack, HasARowForEachKindOfOutputInTheOrderOfTheTies) {
    std::vector<std::pair<int, int>> made;
    for (const StackRow& row : effect::StackRows())
        made.emplace_back(row.position, row.enabling.value_or(-1));
    EXPECT_THAT(made, ElementsAre(Pair(101, 102), Pair(106, 105), Pair(120, 119), Pair(93, 25),
                                  Pair(94, 26), Pair(95, 48), Pair(96, 71), Pair(97, 18),
                                  Pair(98, 20), Pair(99, 28), Pair(100, -1), Pair(118, 116),
                                  Pair(112, -1), Pair(115, 113)));
}

// A scene with something for each group, and a frame in which it is to be seen.
class WholeStack : public MatteFrameTest {
  protected:
    WholeStack() {
        for (int i = 0; i < LibNumberClasses(); ++i)
            Host().classes.Add(LibClassDesc(i));
        context.elementMgr = &Host().elements[RS_Production];
        host::Node& node = AddNode(_M("Table"), 10);
        node.SetLayer(&Host().scene.AddLayer(_M("Furniture")));
        Host().scene.AddSelectionSet(_M("Selection"), {&node});
        const MCHAR* name = _M("Selection");
        effect->pblock->Append("namedSelectionSetsList"_param, 1, &name);
        ReferenceTarget* target = &node;
        effect->pblock->Append("objectList"_param, 1, &target);
        for (const ParamID id :
             {"customLayerSet1"_param, "customLayerSet2"_param, "customLayerSet3"_param,
              "backgroundLayer"_param, "createRenderOutputLayer"_param, "outputSceneLayers"_param,
              "outputNamedSelectionSets"_param, "outputNodeIDs"_param, "outputMtlIDs"_param,
              "outputObjects"_param, "createGBufferLayerSet"_param, "createNodeIDLayer"_param}) {
            Set(id, TRUE);
        }
        SetText("gbufferObjectIdLayerName"_param, _M("IDs"));
        SetText("nodeIDList"_param, _M("1 [ID]"));
        SetText("mtlIDList"_param, _M("4 [Material]"));
    }
    std::string Build() {
        Document().children.clear();
        effect::RunLayerStack(builder, FrameOf(image.get()));
        return Tree();
    }
};

TEST_F(WholeStack, HasEachGroupAtItsPosition) {
    EXPECT_EQ(Build(),
              "Layer Set 1() Layer Set 2() Layer Set 3() Render Scene Layers(Furniture) "
              "Selection Sets(Selection) Object IDs(ID) Material IDs(Material) Objects(Table) "
              "G-Buffer(IDs) Background");
    int position = 1900;
    for (const StackRow& row : effect::StackRows())
        Set(row.position, position -= 100);
    EXPECT_EQ(Build(),
              "Background G-Buffer(IDs) Objects(Table) Material IDs(Material) Object IDs(ID) "
              "Selection Sets(Selection) Scene Layers(Furniture) Render Layer Set 3() "
              "Layer Set 2() Layer Set 1()");
    for (const StackRow& row : effect::StackRows())
        Set(row.position, 0);
    EXPECT_EQ(Build(),
              "Layer Set 1() Layer Set 2() Layer Set 3() Render Scene Layers(Furniture) "
              "Selection Sets(Selection) Object IDs(ID) Material IDs(Material) Objects(Table) "
              "G-Buffer(IDs) Background");
}

TEST_F(WholeStack, WithAllSwitchedOffIsEmptyAndItsListsAreInStepAllTheSame) {
    for (const StackRow& row : effect::StackRows()) {
        if (row.enabling) Set(*row.enabling, FALSE);
    }
    Set("createGBufferLayerSet"_param, FALSE);
    Set("createNodeIDLayer"_param, FALSE);
    Host().elements[RS_Production].Add(DIFFUSE_ELEMENT, _M("Diffuse"));
    Host().scene.RemoveSelectionSet(_M("Selection"));
    Host().scene.Remove(*Host().scene.FindNode(_M("Table")));
    EXPECT_EQ(Build(), "");
    EXPECT_EQ(effect->pblock->Count("namedSelectionSetsList"_param), 0);
    EXPECT_EQ(effect->pblock->Count("objectList"_param), 0);
    EXPECT_EQ(effect->LayerCount(0), 1);
}

TEST_F(WholeStack, AnObjectThatWasDeletedHasNoMatte) {
    Set("filterEmptyMattes"_param, FALSE);
    Host().scene.Remove(*Host().scene.FindNode(_M("Table")));
    EXPECT_THAT(Build(), testing::HasSubstr("Objects() "));
}

}  // namespace
