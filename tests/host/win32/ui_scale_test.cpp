#include "host/win32/ui_scale.h"

#include <gtest/gtest.h>
#include <winutil.h>

namespace {

class UIScale : public testing::Test {
  protected:
    ~UIScale() override { host::SetUIScaleFactor(std::nullopt); }
};

TEST_F(UIScale, IsTheSystemsDotsPerInch) {
    HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(MaxSDK::GetUIScaleFactor(), static_cast<float>(dots) / 96.0F);
}

TEST_F(UIScale, IsWhatTheHostIsTold) {
    const float before = MaxSDK::GetUIScaleFactor();
    host::SetUIScaleFactor(1.75F);
    EXPECT_EQ(MaxSDK::GetUIScaleFactor(), 1.75F);
    host::SetUIScaleFactor(std::nullopt);
    EXPECT_EQ(MaxSDK::GetUIScaleFactor(), before);
}

TEST_F(UIScale, AScaleThatIsNotAboveNothingGivesTheSystemsBack) {
    const float before = MaxSDK::GetUIScaleFactor();
    for (const float scale : {0.0F, -1.0F}) {
        host::SetUIScaleFactor(before + 1.0F);
        host::SetUIScaleFactor(scale);
        EXPECT_EQ(MaxSDK::GetUIScaleFactor(), before);
    }
}

TEST_F(UIScale, PixelsAreScaledToTheNearestWhole) {
    host::SetUIScaleFactor(1.25F);
    EXPECT_EQ(host::UIScaled(16), 20);
    EXPECT_EQ(host::UIScaled(1), 1);
    EXPECT_EQ(host::UIScaled(6), 8);
    EXPECT_EQ(host::UIScaled(0), 0);
    EXPECT_EQ(host::UIScaled(-6), -8);
}

}  // namespace
