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
    bool IsOn(const MSTR& name) { return effect::IsSelectionSetOn(*effect->pblock, name); }
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

}  // namespace
