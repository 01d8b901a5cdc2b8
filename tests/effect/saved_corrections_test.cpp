#include "effect/saved_corrections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

// Keeps the values, and each call in order.
class RecordingCorrections final : public IVRayColorCorrections {
  public:
    float GetValue(int index) override {
        read.push_back(index);
        return values.at(static_cast<std::size_t>(index));
    }
    void SetValue(int index, float value) override {
        written.emplace_back(index, value);
        values.at(static_cast<std::size_t>(index)) = value;
    }

    std::array<float, 19> values{};
    std::vector<int> read;
    std::vector<std::pair<int, float>> written;
};

class SavedCorrections : public testing::Test {
  protected:
    SavedCorrections() {
        for (std::size_t i = 0; i < user.size(); ++i)
            user[i] = 0.25F * static_cast<float>(i) - 2.0F;
        frameBuffer.values = user;
    }

    RecordingCorrections frameBuffer;
    std::array<float, 19> user{};
};

TEST_F(SavedCorrections, AreWrittenBackInOrderWhateverWasSetMeanwhile) {
    {
        const effect::SavedCorrections saved(&frameBuffer);
        EXPECT_EQ(frameBuffer.read,
                  (std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
        EXPECT_THAT(frameBuffer.written, testing::IsEmpty());
        frameBuffer.values.fill(7.0F);
    }
    std::vector<std::pair<int, float>> expected;
    for (int i = 0; i < 19; ++i)
        expected.emplace_back(i, 0.25F * static_cast<float>(i) - 2.0F);
    EXPECT_EQ(frameBuffer.written, expected);
    EXPECT_EQ(frameBuffer.values, user);
}

TEST_F(SavedCorrections, CanAllBeSwitchedOffForAWhile) {
    {
        effect::SavedCorrections saved(&frameBuffer);
        saved.SwitchAllOff();
        EXPECT_EQ(frameBuffer.values, (std::array<float, 19>{}));
        saved.SwitchAllOff();
        EXPECT_EQ(frameBuffer.values, (std::array<float, 19>{}));
    }
    EXPECT_EQ(frameBuffer.values, user) << "what was set before the first time";
}

TEST_F(SavedCorrections, AreOnWhereOneOfTheSwitchesIsAtLeast1) {
    for (std::size_t index = 0; index < 19; ++index) {
        const bool isSwitch = index == 3 || index == 4 || index == 5 || index >= 16;
        for (const float value : {1.0F, 2.0F}) {
            frameBuffer.values.fill(0.0F);
            frameBuffer.values[index] = value;
            EXPECT_EQ(effect::SavedCorrections(&frameBuffer).AnyOn(), isSwitch) << index;
        }
    }
}

TEST_F(SavedCorrections, AreOffWhereEverySwitchIsBelow1) {
    frameBuffer.values.fill(1.0F);
    for (const std::size_t index : {3U, 4U, 5U, 16U, 17U, 18U})
        frameBuffer.values[index] = 0.999F;
    EXPECT_FALSE(effect::SavedCorrections(&frameBuffer).AnyOn());
    frameBuffer.values.fill(-1.0F);
    EXPECT_FALSE(effect::SavedCorrections(&frameBuffer).AnyOn());
}

TEST_F(SavedCorrections, StayOnInMemoryWhenTheyAreSwitchedOff) {
    frameBuffer.values[17] = 1.0F;
    effect::SavedCorrections saved(&frameBuffer);
    saved.SwitchAllOff();
    EXPECT_TRUE(saved.AnyOn());
}

TEST_F(SavedCorrections, OfNoFrameBufferAreOff) {
    effect::SavedCorrections saved(nullptr);
    EXPECT_FALSE(saved.AnyOn());
    saved.SwitchAllOff();
}

}  // namespace
