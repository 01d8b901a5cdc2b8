#include "effect/selection_set_list.h"

#include "tests/effect/effect_fixture.h"

namespace {

class SelectionSetList : public EffectTest {
  protected:
    // An effect made in the scene as it is now.
    void MakeAnew() {
        Host().effects.clear();
        effect = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
        Host().effects.emplace_back(effect);
    }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (int i = 0; i < effect->pblock->Count("namedSelectionSetsList"_param); ++i) {
            names.push_back(
                host::ToUtf8(MSTR(effect->pblock->GetStr("namedSelectionSetsList"_param, 0, i))));
        }
        return names;
    }
    void List(std::initializer_list<const MCHAR*> names) {
        for (const MCHAR* name : names)
            effect->pblock->Append("namedSelectionSetsList"_param, 1, &name);
    }
    void Rename(const MCHAR* oldName, const MCHAR* newName) {
        effect::SelectionSetRenamed(*effect->pblock, oldName, newName);
    }
    bool IsOn(const MSTR& name) {
        return effect::IsSelectionSetOn(effect::ListedSelectionSets(*effect->pblock), name);
    }
};

TEST_F(SelectionSetList, OfANewEffectHasAllOfTheScenesSets) {
    EXPECT_THAT(Names(), testing::IsEmpty());
    host::Node& node = Host().scene.AddNode(_M("Node"));
    Host().scene.AddSelectionSet(_M("B"), {&node});
    Host().scene.AddSelectionSet(_M("A"), {});
    MakeAnew();
    EXPECT_THAT(Names(), testing::ElementsAre("B", "A"));
}

TEST_F(SelectionSetList, ASetIsOnByItsWholeNameAndCase) {
    Host().scene.AddSelectionSet(_M("Wall"), {});
    MakeAnew();
    EXPECT_TRUE(IsOn(_M("Wall")));
    EXPECT_FALSE(IsOn(_M("wall")));
    EXPECT_FALSE(IsOn(_M("Wal")));
    EXPECT_FALSE(IsOn(_M("Walls")));
    EXPECT_FALSE(IsOn(_M("")));
}

TEST_F(SelectionSetList, ANewSetIsOnAndStandsThereOnce) {
    List({_M("A")});
    effect::SelectionSetCreated(*effect->pblock, _M("B"));
    effect::SelectionSetCreated(*effect->pblock, _M("A"));
    effect::SelectionSetCreated(*effect->pblock, _M("a"));
    effect::SelectionSetCreated(*effect->pblock, _M(""));
    EXPECT_THAT(Names(), testing::ElementsAre("A", "B", "a"));
}

TEST_F(SelectionSetList, ASetThatWasOnStaysOnUnderItsNewName) {
    List({_M("A"), _M("B"), _M("C")});
    Rename(_M("B"), _M("D"));
    EXPECT_THAT(Names(), testing::ElementsAre("A", "D", "C"));
}

TEST_F(SelectionSetList, ANewNameThatIsListedAlreadyStaysOnce) {
    List({_M("A"), _M("B"), _M("C")});
    Rename(_M("A"), _M("C"));
    EXPECT_THAT(Names(), testing::ElementsAre("B", "C"));
}

TEST_F(SelectionSetList, ASetThatWasOffStaysOff) {
    List({_M("A"), _M("C")});
    Rename(_M("B"), _M("D"));
    Rename(_M("a"), _M("D"));
    Rename(_M("B"), _M("C"));
    EXPECT_THAT(Names(), testing::ElementsAre("A", "C"));
}

TEST_F(SelectionSetList, ASetThatGetsItsOwnNameStays) {
    List({_M("A"), _M("B")});
    Rename(_M("A"), _M("A"));
    EXPECT_THAT(Names(), testing::ElementsAre("A", "B"));
}

}  // namespace
