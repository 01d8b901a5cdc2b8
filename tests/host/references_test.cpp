#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/host/sample_objects.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr PartID PART = 7;

TEST(References, AChangeIsToldToTheMaker) {
    SampleTarget target;
    SampleTarget maker;
    ASSERT_EQ(maker.ReplaceReference(0, &target), REF_SUCCEED);
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(maker.messages, ElementsAre(Message{&target, REFMSG_CHANGE, PART}));
}

TEST(References, AMakerWithTwoReferencesHearsOfAChangeOnce) {
    SampleTarget target;
    SampleTarget maker(2);
    maker.ReplaceReference(0, &target);
    maker.ReplaceReference(1, &target);
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_EQ(maker.messages.size(), 1U);
}

TEST(References, DroppingOneOfTwoReferencesKeepsTheMakerADependent) {
    SampleTarget target;
    SampleTarget maker(2);
    maker.ReplaceReference(0, &target);
    maker.ReplaceReference(1, &target);
    maker.DeleteReference(0);
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_EQ(maker.messages.size(), 1U);
    maker.DeleteReference(1);
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_EQ(maker.messages.size(), 1U);
}

TEST(References, AChangeTravelsUpThroughMakersThatAreTargets) {
    SampleTarget bottom;
    SampleTarget middle;
    SampleTarget top;
    middle.ReplaceReference(0, &bottom);
    top.ReplaceReference(0, &middle);
    bottom.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(top.messages, ElementsAre(Message{&middle, REFMSG_CHANGE, PART}));
}

TEST(References, WhatAMakerMakesOfThePartIsWhatItsDependentsAreTold) {
    SampleTarget bottom;
    SampleTarget middle;
    SampleTarget sibling;
    SampleTarget top;
    middle.ReplaceReference(0, &bottom);
    sibling.ReplaceReference(0, &bottom);
    top.ReplaceReference(0, &middle);
    middle.onMessage = [](ReferenceTarget*, PartID& part, RefMessage) {
        part = 99;
        return REF_SUCCEED;
    };
    bottom.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(top.messages, ElementsAre(Message{&middle, REFMSG_CHANGE, 99}));
    EXPECT_THAT(sibling.messages, ElementsAre(Message{&bottom, REFMSG_CHANGE, PART}));
}

TEST(References, StopKeepsAMessageFromTheMakersOwnDependentsOnly) {
    SampleTarget bottom;
    SampleTarget middle;
    SampleTarget sibling;
    SampleTarget top;
    middle.ReplaceReference(0, &bottom);
    sibling.ReplaceReference(0, &bottom);
    top.ReplaceReference(0, &middle);
    middle.onMessage = [](ReferenceTarget*, PartID&, RefMessage) { return REF_STOP; };
    bottom.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_EQ(middle.messages.size(), 1U);
    EXPECT_EQ(sibling.messages.size(), 1U);
    EXPECT_THAT(top.messages, IsEmpty());
}

TEST(References, ANumberOutOfRangeFails) {
    SampleTarget target;
    SampleTarget maker(2);
    EXPECT_EQ(maker.ReplaceReference(2, &target), REF_FAIL);
    EXPECT_EQ(maker.ReplaceReference(-1, &target), REF_FAIL);
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(maker.messages, IsEmpty());
}

TEST(References, ACircleFails) {
    SampleTarget bottom;
    SampleTarget middle;
    SampleTarget top;
    middle.ReplaceReference(0, &bottom);
    top.ReplaceReference(0, &middle);
    EXPECT_EQ(bottom.ReplaceReference(0, &top), REF_FAIL);
    EXPECT_EQ(bottom.GetReference(0), nullptr);
    EXPECT_EQ(bottom.ReplaceReference(0, &bottom), REF_FAIL);
}

TEST(References, AMakerThatDoesNotStoreTheTargetIsNoDependent) {
    class Refusing : public SampleTarget {
      public:
        void SetReference(int, RefTargetHandle) override {}
    };
    SampleTarget target;
    Refusing maker;
    EXPECT_EQ(maker.ReplaceReference(0, &target), REF_FAIL);
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(maker.messages, IsEmpty());
}

TEST(References, ADestroyedTargetTellsItsMakersAndClearsTheirReferences) {
    auto target = std::make_unique<SampleTarget>();
    SampleTarget* address = target.get();
    SampleTarget maker(3);
    SampleTarget above;
    maker.ReplaceReference(0, address);
    maker.ReplaceReference(2, address);
    above.ReplaceReference(0, &maker);
    bool stillThere = false;
    maker.onMessage = [&](ReferenceTarget* gone, PartID&, RefMessage) {
        stillThere = maker.GetReference(2) == gone;
        return REF_SUCCEED;
    };
    const std::vector<Message> expected{{address, REFMSG_TARGET_DELETED, PART_ALL}};
    target.reset();
    EXPECT_TRUE(maker.messages == expected);
    EXPECT_TRUE(stillThere) << "the message comes before the reference is cleared";
    EXPECT_EQ(maker.GetReference(0), nullptr);
    EXPECT_EQ(maker.GetReference(2), nullptr);
    EXPECT_THAT(above.messages, IsEmpty()) << "only the makers of references to it are told";
}

TEST(References, DeleteAllRefsFromMeDropsThemAll) {
    SampleTarget first;
    SampleTarget second;
    SampleTarget maker(2);
    maker.ReplaceReference(0, &first);
    maker.ReplaceReference(1, &second);
    EXPECT_EQ(maker.DeleteAllRefsFromMe(), REF_SUCCEED);
    first.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    second.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(maker.messages, IsEmpty());
    EXPECT_EQ(maker.GetReference(0), nullptr);
}

TEST(References, AMakerThatGoesWhileOthersAreToldIsNotTold) {
    SampleTarget target;
    SampleTarget first;
    auto second = std::make_unique<SampleTarget>();
    SampleTarget third;
    first.ReplaceReference(0, &target);
    second->ReplaceReference(0, &target);
    third.ReplaceReference(0, &target);
    first.onMessage = [&](ReferenceTarget*, PartID&, RefMessage) {
        second.reset();
        return REF_SUCCEED;
    };
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_EQ(first.messages.size(), 1U);
    EXPECT_EQ(third.messages.size(), 1U);
}

TEST(References, AMakerThatComesWhileOthersAreToldIsNotTold) {
    SampleTarget target;
    SampleTarget first;
    SampleTarget late;
    first.ReplaceReference(0, &target);
    first.onMessage = [&](ReferenceTarget*, PartID&, RefMessage) {
        late.ReplaceReference(0, &target);
        return REF_SUCCEED;
    };
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(late.messages, IsEmpty());
}

TEST(References, AMakerMayDropItsReferenceWhileItIsTold) {
    SampleTarget target;
    SampleTarget maker;
    SampleTarget above;
    maker.ReplaceReference(0, &target);
    above.ReplaceReference(0, &maker);
    maker.onMessage = [&](ReferenceTarget*, PartID&, RefMessage) {
        maker.DeleteReference(0);
        return REF_SUCCEED;
    };
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(above.messages, IsEmpty());
}

TEST(References, ATargetMayBeDestroyedWhileItTells) {
    auto target = std::make_unique<SampleTarget>();
    SampleTarget first;
    SampleTarget second;
    first.ReplaceReference(0, target.get());
    second.ReplaceReference(0, target.get());
    first.onMessage = [&](ReferenceTarget*, PartID&, RefMessage message) {
        if (message == REFMSG_CHANGE) {
            target.reset();
        }
        return REF_SUCCEED;
    };
    target->NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    ASSERT_EQ(second.messages.size(), 1U);
    EXPECT_EQ(second.messages[0].message, REFMSG_TARGET_DELETED);
}

TEST(References, AMakerKeepsItsTurnWhenItDropsTheLaterOfTwoReferences) {
    SampleTarget target;
    SampleTarget first(2);
    SampleTarget second;
    first.ReplaceReference(0, &target);
    second.ReplaceReference(0, &target);
    first.ReplaceReference(1, &target);
    first.DeleteReference(1);
    std::vector<const SampleTarget*> order;
    for (SampleTarget* maker : {&first, &second}) {
        maker->onMessage = [&order, maker](ReferenceTarget*, PartID&, RefMessage) {
            order.push_back(maker);
            return REF_SUCCEED;
        };
    }
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(order, ElementsAre(&first, &second));
}

// Registered as long as it lives.
class GlobalListener : public GlobalReferenceMaker {
  public:
    GlobalListener() { EXPECT_TRUE(RegisterGlobalReference(this)); }
    ~GlobalListener() override { UnRegisterGlobalReference(this); }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle hTarget, PartID& partID,
                               RefMessage message, BOOL propagates) override {
        messages.push_back({hTarget, message, partID});
        propagate.push_back(propagates);
        partID = 0;
        if (onMessage) onMessage();
        return REF_STOP;
    }

    std::vector<Message> messages;
    std::vector<BOOL> propagate;
    std::function<void()> onMessage;
};

TEST(GlobalReferences, HearOfTargetsWithoutDependents) {
    SampleTarget target;
    GlobalListener listener;
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(listener.messages, ElementsAre(Message{&target, REFMSG_CHANGE, PART}));
    EXPECT_THAT(listener.propagate, ElementsAre(TRUE));
}

TEST(GlobalReferences, HearOfTheSenderFirstAndThenOfWhomTheMessageComesThrough) {
    SampleTarget bottom;
    SampleTarget middle;
    SampleTarget top;
    middle.ReplaceReference(0, &bottom);
    top.ReplaceReference(0, &middle);
    middle.onMessage = [](ReferenceTarget*, PartID& part, RefMessage) {
        part = 99;
        return REF_SUCCEED;
    };
    GlobalListener listener;
    bottom.NotifyDependents(FOREVER, PART, REFMSG_ELEMENT_PROPERTIES_CHANGED);
    EXPECT_THAT(listener.messages,
                ElementsAre(Message{&bottom, REFMSG_ELEMENT_PROPERTIES_CHANGED, PART},
                            Message{&middle, REFMSG_ELEMENT_PROPERTIES_CHANGED, 99},
                            Message{&top, REFMSG_ELEMENT_PROPERTIES_CHANGED, 99}));
    EXPECT_THAT(top.messages, ElementsAre(Message{&middle, REFMSG_ELEMENT_PROPERTIES_CHANGED, 99}))
        << "whatever a global reference answers";
}

TEST(GlobalReferences, HearNothingOfWhatWasStopped) {
    SampleTarget bottom;
    SampleTarget middle;
    SampleTarget top;
    middle.ReplaceReference(0, &bottom);
    top.ReplaceReference(0, &middle);
    middle.onMessage = [](ReferenceTarget*, PartID&, RefMessage) { return REF_STOP; };
    GlobalListener listener;
    bottom.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_THAT(listener.messages, ElementsAre(Message{&bottom, REFMSG_CHANGE, PART}));
}

TEST(GlobalReferences, HearOfTargetsThatAreDestroyed) {
    auto target = std::make_unique<SampleTarget>();
    ReferenceTarget* address = target.get();
    GlobalListener listener;
    SClass_ID seen = 1;
    listener.onMessage = [&] { seen = listener.messages.back().target->SuperClassID(); };
    target.reset();
    EXPECT_THAT(listener.messages, ElementsAre(Message{address, REFMSG_TARGET_DELETED, PART_ALL}));
    EXPECT_THAT(listener.propagate, ElementsAre(FALSE));
    EXPECT_EQ(seen, 0U) << "its base classes still answer";
}

TEST(GlobalReferences, AreRegisteredOnceAndHearNothingAfterwards) {
    SampleTarget target;
    GlobalListener listener;
    EXPECT_FALSE(RegisterGlobalReference(&listener));
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_EQ(listener.messages.size(), 1U);
    EXPECT_TRUE(UnRegisterGlobalReference(&listener));
    EXPECT_FALSE(UnRegisterGlobalReference(&listener));
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_EQ(listener.messages.size(), 1U);
    EXPECT_FALSE(RegisterGlobalReference(nullptr));
    EXPECT_FALSE(UnRegisterGlobalReference(nullptr));
}

TEST(GlobalReferences, MayGoWhileAMessageIsTold) {
    SampleTarget target;
    GlobalListener first;
    auto second = std::make_unique<GlobalListener>();
    first.onMessage = [&] { second.reset(); };
    target.NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    EXPECT_EQ(first.messages.size(), 1U);
}

TEST(GlobalReferences, MayDestroyTheTargetThatTells) {
    auto target = std::make_unique<SampleTarget>();
    SampleTarget maker;
    maker.ReplaceReference(0, target.get());
    GlobalListener listener;
    listener.onMessage = [&] {
        listener.onMessage = nullptr;
        target.reset();
    };
    target->NotifyDependents(FOREVER, PART, REFMSG_CHANGE);
    ASSERT_EQ(maker.messages.size(), 1U);
    EXPECT_EQ(maker.messages[0].message, REFMSG_TARGET_DELETED);
}

}  // namespace
