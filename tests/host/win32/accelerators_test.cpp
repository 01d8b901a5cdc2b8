#include "host/win32/accelerators.h"

#include <gtest/gtest.h>
#include <winutil.h>

namespace {

class Accelerators : public testing::Test {
  protected:
    Accelerators() { host::ResetAccelerators(); }
    ~Accelerators() override { host::ResetAccelerators(); }
};

TEST_F(Accelerators, AreOnUntilTheyAreDisabled) {
    EXPECT_TRUE(host::AcceleratorsEnabled());
    DisableAccelerators();
    EXPECT_FALSE(host::AcceleratorsEnabled());
    EnableAccelerators();
    EXPECT_TRUE(host::AcceleratorsEnabled());
}

TEST_F(Accelerators, EachDisablingWantsAnEnabling) {
    DisableAccelerators();
    DisableAccelerators();
    EXPECT_EQ(host::AcceleratorDisablings(), 2);
    EnableAccelerators();
    EXPECT_FALSE(host::AcceleratorsEnabled());
    EnableAccelerators();
    EXPECT_TRUE(host::AcceleratorsEnabled());
}

TEST_F(Accelerators, AnEnablingTooManyDoesNothing) {
    EnableAccelerators();
    EXPECT_EQ(host::AcceleratorDisablings(), 0);
    DisableAccelerators();
    EXPECT_FALSE(host::AcceleratorsEnabled());
}

TEST_F(Accelerators, AResetForgetsWhatIsMissing) {
    DisableAccelerators();
    DisableAccelerators();
    host::ResetAccelerators();
    EXPECT_TRUE(host::AcceleratorsEnabled());
    EXPECT_EQ(host::AcceleratorDisablings(), 0);
}

}  // namespace
