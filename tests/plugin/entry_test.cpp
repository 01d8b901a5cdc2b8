#include "plugin/entry.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "effect/psd_output.h"
#include "plugin/class_descriptors.h"

namespace {

TEST(Entry, NamesTheLibrary) {
    EXPECT_EQ(std::basic_string<MCHAR>(LibDescription()), _M("veltrane"));
}

TEST(Entry, TellsTheHostsVersion) {
    EXPECT_EQ(LibVersion(), 0x52083400U);
}

TEST(Entry, OffersAsManyClassesAsThereAreDescriptors) {
    EXPECT_EQ(LibNumberClasses(), static_cast<int>(plugin::ClassDescriptors().size()));
    for (int i = 0; i < LibNumberClasses(); ++i) {
        ASSERT_NE(LibClassDesc(i), nullptr) << i;
        EXPECT_EQ(LibClassDesc(i), plugin::ClassDescriptors()[static_cast<std::size_t>(i)]);
        EXPECT_EQ(LibClassDesc(i), LibClassDesc(i)) << "the same each time";
    }
}

TEST(Entry, OffersTheEffectFirstAndItsLayersNext) {
    EXPECT_EQ(LibClassDesc(0)->ClassID(), Class_ID(0x70068609, 0x1d5d297));
    EXPECT_EQ(LibClassDesc(1)->ClassID(), Class_ID(0x347c6bc4, 0x153540b4));
}

TEST(Entry, OffersNothingBeyondTheLastClass) {
    EXPECT_EQ(LibClassDesc(LibNumberClasses()), nullptr);
    EXPECT_EQ(LibClassDesc(3), nullptr);
    EXPECT_EQ(LibClassDesc(1000), nullptr);
    EXPECT_EQ(LibClassDesc(-1), nullptr);
}

TEST(Entry, GivesTheTableOfTheEffectsParameters) {
    const auto rows = plugin::EffectParameters();
    ASSERT_EQ(rows.size(), std::size(parameters::effectRows));
    EXPECT_EQ(rows.data(), parameters::effectRows.data());
}

}  // namespace
