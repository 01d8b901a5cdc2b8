#include <gtest/gtest.h>

#include "host/saved_objects.h"
#include "tests/host/sample_objects.h"

namespace {

TEST(Handles, CountFromOneAndStay) {
    SampleTarget first;
    SampleTarget second;
    host::Handles handles;
    EXPECT_EQ(handles.Of(&first), 1U);
    EXPECT_EQ(handles.Of(&second), 2U);
    EXPECT_EQ(handles.Of(&first), 1U);
    EXPECT_EQ(handles.Find(&second), 2U);
    EXPECT_EQ(handles.Target(2), &second);
}

TEST(Handles, NoTargetHasNone) {
    SampleTarget stranger;
    host::Handles handles;
    EXPECT_EQ(handles.Of(nullptr), 0U);
    EXPECT_EQ(handles.Find(nullptr), 0U);
    EXPECT_EQ(handles.Find(&stranger), 0U);
    EXPECT_EQ(handles.Target(0), nullptr);
    EXPECT_EQ(handles.Target(1), nullptr);
}

TEST(Handles, OfAFileComeAsTheyAre) {
    SampleTarget target;
    host::Handles handles;
    EXPECT_TRUE(handles.Enter(0xffffffff, &target));
    EXPECT_EQ(handles.Find(&target), 0xffffffffU);
    EXPECT_EQ(handles.Target(0xffffffff), &target);
}

TEST(Handles, AreNeitherZeroNorTakenTwice) {
    SampleTarget target;
    SampleTarget other;
    host::Handles handles;
    ASSERT_TRUE(handles.Enter(5, &target));
    EXPECT_FALSE(handles.Enter(0, &other));
    EXPECT_FALSE(handles.Enter(5, &other));
    EXPECT_FALSE(handles.Enter(6, &target));
    EXPECT_FALSE(handles.Enter(7, nullptr));
    EXPECT_EQ(handles.Target(5), &target);
    EXPECT_EQ(handles.Target(6), nullptr);
    EXPECT_EQ(handles.Find(&other), 0U);
}

TEST(Handles, NewOnesGoAroundThoseThatAreThere) {
    SampleTarget one;
    SampleTarget two;
    SampleTarget next;
    host::Handles handles;
    handles.Enter(1, &one);
    handles.Enter(2, &two);
    EXPECT_EQ(handles.Of(&next), 3U);
}

}  // namespace
