#include "effect/scene_sync.h"

#include <hold.h>

#include <new>

#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SceneSync : public EffectTest {
  protected:
    // Of the selection sets that are on.
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (int i = 0; i < effect->pblock->Count("namedSelectionSetsList"_param); ++i) {
            names.push_back(
                host::ToUtf8(MSTR(effect->pblock->GetStr("namedSelectionSetsList"_param, 0, i))));
        }
        return names;
    }
    void SwitchOn(const MSTR& name) {
        const MCHAR* text = name.data();
        effect->pblock->Append("namedSelectionSetsList"_param, 1, &text);
    }
    void SyncSets() { effect::SyncSelectionSets(*effect->pblock); }

    // Of the listed objects; "-" for one that was deleted.
    std::vector<std::string> Objects() {
        std::vector<std::string> names;
        for (int i = 0; i < effect->pblock->Count("objectList"_param); ++i) {
            INode* node = effect->pblock->GetINode("objectList"_param, 0, i);
            names.push_back(node ? host::ToUtf8(MSTR(node->GetName())) : "-");
        }
        return names;
    }
    void List(const MSTR& name) {
        ReferenceTarget* target = &Host().scene.AddNode(name);
        effect->pblock->Append("objectList"_param, 1, &target);
    }
    void Remove(const MSTR& name) { Host().scene.Remove(*Host().scene.FindNode(name)); }
    void Cleanup() { effect::CleanupDeletedObjects(*effect->pblock); }
};

TEST_F(SceneSync, NamesOfSetsThatAreGoneGoInOneStep) {
    Host().scene.AddSelectionSet(_M("D"), {});
    Host().scene.AddSelectionSet(_M("b"), {});
    Host().scene.AddSelectionSet(_M("A"), {});
    effect->pblock->SetCount("namedSelectionSetsList"_param, 0);
    for (const MCHAR* name : {_M("A"), _M("B"), _M("C"), _M("D")})
        SwitchOn(name);
    Host().undo.Clear();
    SyncSets();
    EXPECT_THAT(Names(), ElementsAre("A", "D")) << "sets that are off stay off";
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Sync Sel. Sets")));
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_THAT(Names(), ElementsAre("A", "B", "C", "D"));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SceneSync, NothingIsToUndoWhenAllSetsAreThere) {
    SwitchOn(_M("A"));
    Host().scene.AddSelectionSet(_M("A"), {});
    Host().undo.Clear();
    SyncSets();
    EXPECT_THAT(Names(), ElementsAre("A"));
    EXPECT_FALSE(Host().undo.CanUndo());
    EXPECT_FALSE(theHold.Holding());
}

TEST_F(SceneSync, ASceneWithoutSetsEmptiesTheList) {
    SwitchOn(_M("A"));
    SwitchOn(_M("A"));
    SyncSets();
    EXPECT_THAT(Names(), IsEmpty());
}

// With a copy of the whole list for each name it would take gigabytes.
TEST_F(SceneSync, AsManyNamesAsAFileMayHaveGoAndComeBackInOneStep) {
    constexpr int count = 100000;
    std::vector<const MCHAR*> names(count, _M("gone"));
    effect->pblock->SetCount("namedSelectionSetsList"_param, 0);
    effect->pblock->Append("namedSelectionSetsList"_param, count, names.data());
    Host().undo.Clear();
    SyncSets();
    EXPECT_EQ(effect->pblock->Count("namedSelectionSetsList"_param), 0);
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_EQ(effect->pblock->Count("namedSelectionSetsList"_param), count);
}

// As where memory runs out.
class FailingListener final : public ReferenceMaker {
  public:
    explicit FailingListener(ReferenceTarget* target) { ReplaceReference(0, target); }
    ~FailingListener() override { ReplaceReference(0, nullptr); }
    int NumRefs() override { return 1; }
    RefTargetHandle GetReference(int) override { return heard; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage message,
                               BOOL) override {
        if (message == REFMSG_CHANGE && !theHold.RestoreOrRedoing()) throw std::bad_alloc();
        return REF_SUCCEED;
    }

  private:
    void SetReference(int, RefTargetHandle target) override { heard = target; }
    RefTargetHandle heard = nullptr;
};

TEST_F(SceneSync, LeavesNoStepOpenWhereMemoryRunsOut) {
    SwitchOn(_M("gone"));
    List(_M("A"));
    Remove(_M("A"));
    Host().undo.Clear();
    {
        const FailingListener listener(effect->pblock);
        EXPECT_THROW(SyncSets(), std::bad_alloc);
        EXPECT_THROW(Cleanup(), std::bad_alloc);
    }
    EXPECT_FALSE(theHold.Holding());
    EXPECT_FALSE(Host().undo.CanUndo());
    EXPECT_THAT(Names(), ElementsAre("gone"));
    EXPECT_THAT(Objects(), ElementsAre("-"));
}

TEST_F(SceneSync, EntriesOfDeletedObjectsGoOneStepEach) {
    for (const MCHAR* name : {_M("A"), _M("B"), _M("C"), _M("D")})
        List(name);
    Remove(_M("B"));
    Remove(_M("D"));
    ASSERT_THAT(Objects(), ElementsAre("A", "-", "C", "-"));
    Host().undo.Clear();
    Cleanup();
    EXPECT_THAT(Objects(), ElementsAre("A", "C"));
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Cleanup deleted objects")));
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_THAT(Objects(), ElementsAre("A", "-", "C")) << "the last entry went first";
    EXPECT_EQ(Host().undo.UndoName(), MSTR(_M("Cleanup deleted objects")));
    EXPECT_TRUE(Host().undo.Undo());
    EXPECT_THAT(Objects(), ElementsAre("A", "-", "C", "-"));
    EXPECT_FALSE(Host().undo.CanUndo());
}

TEST_F(SceneSync, NothingIsToUndoWhenAllObjectsAreThere) {
    List(_M("A"));
    Host().undo.Clear();
    Cleanup();
    EXPECT_THAT(Objects(), ElementsAre("A"));
    EXPECT_FALSE(Host().undo.CanUndo());
    EXPECT_FALSE(theHold.Holding());
}

}  // namespace
