#include <new>

#include "plugin/library_services.h"
#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Notifications : public EffectTest {
  protected:
    std::vector<std::string> Names() const {
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
    static void Tell(void* listener, int code, void* callParam = nullptr) {
        NotifyInfo info;
        info.intcode = code;
        info.callParam = callParam;
        effect::OnEffectNotification(listener, &info);
    }
    void SwitchOff(const MSTR& name) {
        for (int i = effect->pblock->Count("namedSelectionSetsList"_param) - 1; i >= 0; --i) {
            if (MSTR(effect->pblock->GetStr("namedSelectionSetsList"_param, 0, i)) == name)
                effect->pblock->Delete("namedSelectionSetsList"_param, i, 1);
        }
    }
};

constexpr int allCodes[] = {6,  8,   10,  14,  20,  21,  22,  23, 73,
                            80, 139, 173, 184, 185, 188, 202, 203};

TEST_F(Notifications, ForNobodyDoNothing) {
    List({_M("gone")});
    for (const int code : allCodes)
        Tell(nullptr, code);
    EXPECT_THAT(Names(), ElementsAre("gone"));
    effect::OnEffectNotification(effect, nullptr);
}

TEST_F(Notifications, ForAnEffectThatIsGoneDoNothing) {
    Host().effects.clear();
    // Two registrations of the gone effect are left to each of these.
    host::Broadcast(NOTIFY_NAMED_SEL_SET_PRE_MODIFY);
    host::Broadcast(NOTIFY_NAMED_SEL_SET_POST_MODIFY);
    for (const int code : allCodes)
        Tell(effect, code);
}

TEST_F(Notifications, LeftByEffectsThatAreGoneDontDisturbThoseThatCameAfterThem) {
    for (int i = 0; i < 20; ++i) {
        Host().effects.clear();
        effect = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create());
        Host().effects.emplace_back(effect);
    }
    Host().scene.AddSelectionSet(_M("A"), {});
    EXPECT_THAT(Names(), ElementsAre("A"));
    SwitchOff(_M("A"));
    Host().scene.AddSelectionSet(_M("A"), {});
    EXPECT_THAT(Names(), IsEmpty()) << "the set was edited";
    Host().scene.AddSelectionSet(_M("B"), {});
    EXPECT_THAT(Names(), ElementsAre("B"));
}

TEST_F(Notifications, OfOtherCodesAreIgnored) {
    List({_M("gone")});
    for (const int code : {0, 6, 14, 18, 73, 80, 148, 183, 186, 187, 189, 201, 204})
        Tell(effect, code);
    EXPECT_THAT(Names(), ElementsAre("gone"));
}

TEST_F(Notifications, ANewSetIsOnAndThoseThatAreGoneLeaveTheList) {
    List({_M("gone"), _M("A")});
    Host().scene.AddSelectionSet(_M("A"), {});
    EXPECT_THAT(Names(), ElementsAre("A")) << "it stood there already";
    Host().scene.AddSelectionSet(_M("B"), {});
    EXPECT_THAT(Names(), ElementsAre("A", "B"));
}

TEST_F(Notifications, ANewSetWithoutANameOnlyBringsTheListUpToDate) {
    List({_M("gone")});
    Tell(effect, NOTIFY_NAMED_SEL_SET_CREATED);
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(Notifications, ADeletedSetLeavesTheList) {
    Host().scene.AddSelectionSet(_M("A"), {});
    Host().scene.AddSelectionSet(_M("B"), {});
    Host().scene.RemoveSelectionSet(_M("A"));
    EXPECT_THAT(Names(), ElementsAre("B"));
    Host().scene.RemoveSelectionSet(_M("B"));
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(Notifications, AnEditedSetKeepsTheUsersChoice) {
    host::Node& node = Host().scene.AddNode(_M("Node"));
    Host().scene.AddSelectionSet(_M("on"), {});
    Host().scene.AddSelectionSet(_M("off"), {});
    SwitchOff(_M("off"));
    for (int i = 0; i < 2; ++i) {
        Host().scene.AddSelectionSet(_M("off"), {&node});
        Host().scene.AddSelectionSet(_M("on"), {&node});
        EXPECT_THAT(Names(), ElementsAre("on"));
    }
}

TEST_F(Notifications, WhileASetIsEditedOthersComeAndGoUnseen) {
    List({_M("A")});
    Tell(effect, NOTIFY_NAMED_SEL_SET_PRE_MODIFY);
    MCHAR name[] = {'B', 0};
    Tell(effect, NOTIFY_NAMED_SEL_SET_CREATED, name);
    Tell(effect, NOTIFY_NAMED_SEL_SET_DELETED, name);
    EXPECT_THAT(Names(), ElementsAre("A"));
    NameChange change{_M("A"), _M("C")};
    Tell(effect, NOTIFY_NAMED_SEL_SET_RENAMED, &change);
    EXPECT_THAT(Names(), ElementsAre("C")) << "a new name is no edit";
    Tell(effect, NOTIFY_NAMED_SEL_SET_POST_MODIFY);
    Tell(effect, NOTIFY_NAMED_SEL_SET_DELETED, name);
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(Notifications, TheEditIsEachEffectsOwn) {
    const host::Owned<effect::PSDOutput> other(
        static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    Tell(other.get(), NOTIFY_NAMED_SEL_SET_PRE_MODIFY);
    Host().scene.AddSelectionSet(_M("A"), {});
    EXPECT_THAT(Names(), ElementsAre("A"));
    EXPECT_EQ(other->pblock->Count("namedSelectionSetsList"_param), 0);
}

TEST_F(Notifications, ARenamedSetThatWasOnStaysOn) {
    Host().scene.AddSelectionSet(_M("on"), {});
    Host().scene.AddSelectionSet(_M("off"), {});
    SwitchOff(_M("off"));
    Host().scene.RenameSelectionSet(_M("on"), _M("new"));
    Host().scene.RenameSelectionSet(_M("off"), _M("other"));
    EXPECT_THAT(Names(), ElementsAre("new"));
}

TEST_F(Notifications, ARenamedSetOfAListedNameLeavesOneEntry) {
    List({_M("A"), _M("B")});
    NameChange change{_M("A"), _M("B")};
    host::Broadcast(NOTIFY_NAMED_SEL_SET_RENAMED, &change);
    EXPECT_THAT(Names(), ElementsAre("B"));
}

TEST_F(Notifications, ARenameThatTellsNothingDoesNothing) {
    List({_M("A")});
    Tell(effect, NOTIFY_NAMED_SEL_SET_RENAMED);
    NameChange change{nullptr, nullptr};
    Tell(effect, NOTIFY_NAMED_SEL_SET_RENAMED, &change);
    EXPECT_THAT(Names(), ElementsAre("A"));
}

TEST_F(Notifications, WithoutABlockSetsComeAndGo) {
    effect->DeleteReference(0);
    Host().scene.AddSelectionSet(_M("A"), {});
    Host().scene.RenameSelectionSet(_M("A"), _M("B"));
    Host().scene.RemoveSelectionSet(_M("B"));
    EXPECT_EQ(effect->pblock, nullptr);
}

TEST_F(Notifications, EveryEffectHearsOfASet) {
    const host::Owned<effect::PSDOutput> other(
        static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    Host().scene.AddSelectionSet(_M("A"), {});
    EXPECT_THAT(Names(), ElementsAre("A"));
    EXPECT_EQ(other->pblock->Count("namedSelectionSetsList"_param), 1);
}

}  // namespace
