#include "effect/scene_walk.h"

#include "host/scene.h"
#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SceneWalk : public EffectTest {
  protected:
    static host::Node& Add(const MSTR& name, host::Node* parent = nullptr) {
        return Host().scene.AddNode(name, parent);
    }
    static std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (effect::SceneWalk walk; INode* node = walk.Next();)
            names.push_back(host::ToUtf8(MSTR(node->GetName())));
        return names;
    }
};

TEST_F(SceneWalk, OfAnEmptySceneEndsAtOnce) {
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(SceneWalk, GoesDownBeforeItGoesOn) {
    host::Node& a = Add(_M("a"));
    host::Node& b = Add(_M("b"));
    host::Node& a1 = Add(_M("a1"), &a);
    Add(_M("b1"), &b);
    Add(_M("a2"), &a);
    Add(_M("a1x"), &a1);
    Add(_M("c"));
    Add(_M("a1y"), &a1);
    EXPECT_THAT(Names(), ElementsAre("a", "a1", "a1x", "a1y", "a2", "b", "b1", "c"));
}

TEST_F(SceneWalk, EndsForGood) {
    Add(_M("a"));
    effect::SceneWalk walk;
    EXPECT_NE(walk.Next(), nullptr);
    EXPECT_EQ(walk.Next(), nullptr);
    EXPECT_EQ(walk.Next(), nullptr);
}

TEST_F(SceneWalk, GoesAsDeepAsTheSceneDoes) {
    constexpr int depth = 100'000;
    host::Node* parent = nullptr;
    for (int i = 0; i < depth; ++i)
        parent = &Add(_M("link"), parent);
    int count = 0;
    INode* last = nullptr;
    for (effect::SceneWalk walk; INode* node = walk.Next(); ++count)
        last = node;
    EXPECT_EQ(count, depth);
    EXPECT_EQ(last, parent);
}

}  // namespace
