#include "plugin/scene_file_state.h"

#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;

class SceneFileState : public EffectTest {
  protected:
    SceneFileState() { plugin::ListenToSceneFiles(&listener); }
    ~SceneFileState() override {
        plugin::StopListeningToSceneFiles(&listener);
        plugin::SetCurrentInstance(nullptr);
    }
    // The codes that `listener` is registered for.
    std::vector<int> Codes() {
        std::vector<int> codes;
        for (const auto& registration : Host().notifications.Registrations()) {
            if (registration.param == &listener) codes.push_back(registration.code);
        }
        return codes;
    }

    int listener = 0;
};

TEST_F(SceneFileState, IsOpeningFromThePreOpenToThePostOpenNotification) {
    EXPECT_FALSE(plugin::IsOpeningSceneFile());
    host::Broadcast(NOTIFY_FILE_PRE_OPEN_PROCESS);
    EXPECT_TRUE(plugin::IsOpeningSceneFile());
    EXPECT_FALSE(plugin::IsSavingSceneFile());
    host::Broadcast(NOTIFY_FILE_POST_SAVE_PROCESS);
    EXPECT_TRUE(plugin::IsOpeningSceneFile());
    host::Broadcast(NOTIFY_FILE_POST_OPEN_PROCESS);
    EXPECT_FALSE(plugin::IsOpeningSceneFile());
}

TEST_F(SceneFileState, IsSavingFromThePreSaveToThePostSaveNotification) {
    EXPECT_FALSE(plugin::IsSavingSceneFile());
    host::Broadcast(NOTIFY_FILE_PRE_SAVE_PROCESS);
    EXPECT_TRUE(plugin::IsSavingSceneFile());
    EXPECT_FALSE(plugin::IsOpeningSceneFile());
    host::Broadcast(NOTIFY_FILE_POST_OPEN_PROCESS);
    EXPECT_TRUE(plugin::IsSavingSceneFile());
    host::Broadcast(NOTIFY_FILE_POST_SAVE_PROCESS);
    EXPECT_FALSE(plugin::IsSavingSceneFile());
}

TEST_F(SceneFileState, OtherNotificationsChangeNothing) {
    host::Broadcast(NOTIFY_FILE_PRE_OPEN_PROCESS);
    NotifyInfo info;
    for (const int code : {6, 8, 10, 14, 148, 149, 246}) {
        info.intcode = code;
        plugin::OnSceneFileNotification(nullptr, &info);
    }
    plugin::OnSceneFileNotification(nullptr, nullptr);
    EXPECT_TRUE(plugin::IsOpeningSceneFile());
    EXPECT_FALSE(plugin::IsSavingSceneFile());
    host::Broadcast(NOTIFY_FILE_POST_OPEN_PROCESS);
}

TEST_F(SceneFileState, IsFollowedByFourRegistrationsWhileSomeoneListens) {
    EXPECT_THAT(Codes(), ElementsAre(173, 139, 174, 175));
    plugin::StopListeningToSceneFiles(&listener);
    EXPECT_THAT(Codes(), testing::IsEmpty());
    host::Broadcast(NOTIFY_FILE_PRE_OPEN_PROCESS);
    EXPECT_FALSE(plugin::IsOpeningSceneFile());
}

TEST_F(SceneFileState, StaysAsItIsWhenNobodyListensAnyMore) {
    host::Broadcast(NOTIFY_FILE_PRE_OPEN_PROCESS);
    plugin::StopListeningToSceneFiles(&listener);
    host::Broadcast(NOTIFY_FILE_POST_OPEN_PROCESS);
    EXPECT_TRUE(plugin::IsOpeningSceneFile());
    plugin::ListenToSceneFiles(&listener);
    host::Broadcast(NOTIFY_FILE_POST_OPEN_PROCESS);
    EXPECT_FALSE(plugin::IsOpeningSceneFile());
}

TEST_F(SceneFileState, TheCurrentInstanceIsThatWhosePanelOpenedLast) {
    EXPECT_EQ(plugin::CurrentInstance(), nullptr);
    plugin::SetCurrentInstance(effect);
    EXPECT_EQ(plugin::CurrentInstance(), effect);
    const host::Owned<effect::PSDOutput> other(
        static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create()));
    plugin::SetCurrentInstance(other.get());
    EXPECT_EQ(plugin::CurrentInstance(), other.get());
}

TEST_F(SceneFileState, AnInstanceThatIsGoneIsNoCurrentOne) {
    plugin::SetCurrentInstance(effect);
    Host().effects.clear();
    EXPECT_EQ(plugin::CurrentInstance(), nullptr);
}

}  // namespace
