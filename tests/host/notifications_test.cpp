#include "host/notifications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "host/application.h"

namespace {

using testing::ElementsAre;

struct Listener {
    std::vector<int> codes;
    void* callParam = nullptr;
    std::function<void()> then;
};

void Hear(void* param, NotifyInfo* info) {
    auto* listener = static_cast<Listener*>(param);
    listener->codes.push_back(info->intcode);
    listener->callParam = info->callParam;
    if (listener->then) {
        listener->then();
    }
}

class NotificationsTest : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }

    Listener first;
    Listener second;
};

TEST_F(NotificationsTest, AListenerHearsItsCodeWithWhatItBrings) {
    int payload = 0;
    ASSERT_TRUE(RegisterNotification(Hear, &first, NOTIFY_PRE_RENDER));
    host::Broadcast(NOTIFY_POST_RENDER);
    host::Broadcast(NOTIFY_PRE_RENDER, &payload);
    EXPECT_THAT(first.codes, ElementsAre(NOTIFY_PRE_RENDER));
    EXPECT_EQ(first.callParam, &payload);
}

TEST_F(NotificationsTest, OneRegisteredTwiceIsCalledTwiceUntilOneIsRemoved) {
    RegisterNotification(Hear, &first, NOTIFY_PRE_RENDER);
    RegisterNotification(Hear, &first, NOTIFY_PRE_RENDER);
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(first.codes.size(), 2U);
    EXPECT_TRUE(UnRegisterNotification(Hear, &first, NOTIFY_PRE_RENDER));
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(first.codes.size(), 3U);
}

TEST_F(NotificationsTest, UnregisteringWhatIsNotThereFails) {
    RegisterNotification(Hear, &first, NOTIFY_PRE_RENDER);
    EXPECT_FALSE(UnRegisterNotification(Hear, &second, NOTIFY_PRE_RENDER));
    EXPECT_FALSE(UnRegisterNotification(Hear, &first, NOTIFY_POST_RENDER));
    EXPECT_TRUE(UnRegisterNotification(Hear, &first, NOTIFY_PRE_RENDER));
    EXPECT_FALSE(UnRegisterNotification(Hear, &first, NOTIFY_PRE_RENDER));
}

TEST_F(NotificationsTest, NoProcedureIsRefused) {
    EXPECT_EQ(RegisterNotification(nullptr, &first, NOTIFY_PRE_RENDER), 0);
}

TEST_F(NotificationsTest, OneThatIsUnregisteredInsideIsNotCalledAnyMore) {
    RegisterNotification(Hear, &first, NOTIFY_PRE_RENDER);
    RegisterNotification(Hear, &second, NOTIFY_PRE_RENDER);
    first.then = [&] {
        UnRegisterNotification(Hear, &first, NOTIFY_PRE_RENDER);
        UnRegisterNotification(Hear, &second, NOTIFY_PRE_RENDER);
    };
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(first.codes.size(), 1U);
    EXPECT_TRUE(second.codes.empty());
}

TEST_F(NotificationsTest, InSilenceNobodyHears) {
    RegisterNotification(Hear, &first, NOTIFY_PRE_RENDER);
    {
        const host::Notifications::Silence silence(host::App().notifications);
        host::Broadcast(NOTIFY_PRE_RENDER);
    }
    EXPECT_TRUE(first.codes.empty());
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(first.codes.size(), 1U);
}

TEST_F(NotificationsTest, OneThatIsRegisteredInsideIsCalledFromTheNextTimeOn) {
    RegisterNotification(Hear, &first, NOTIFY_PRE_RENDER);
    first.then = [&] {
        if (first.codes.size() == 1) {
            RegisterNotification(Hear, &second, NOTIFY_PRE_RENDER);
        }
    };
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_TRUE(second.codes.empty());
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(second.codes.size(), 1U);
}

}  // namespace
