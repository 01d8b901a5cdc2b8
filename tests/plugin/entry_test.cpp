#include "plugin/entry.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "host/text.h"
#include "plugin/class_descriptors.h"
#include "plugin/library.h"

namespace {

TEST(Entry, NamesTheLibrary) {
    plugin::Attach();
    EXPECT_EQ(host::ToUtf8(LibDescription()), "veltrane");
}

TEST(Entry, TellsTheHostsVersion) {
    EXPECT_EQ(LibVersion(), 0x52083400U);
}

TEST(Entry, OffersThreeClasses) {
    EXPECT_EQ(LibNumberClasses(), 3);
    for (int i = 0; i < 3; ++i) {
        ASSERT_NE(LibClassDesc(i), nullptr) << i;
        EXPECT_EQ(LibClassDesc(i), plugin::ClassDescriptors()[static_cast<std::size_t>(i)]);
        EXPECT_EQ(LibClassDesc(i), LibClassDesc(i)) << "the same each time";
    }
}

TEST(Entry, OffersTheEffectThenItsLayersThenTheWriterOfNothing) {
    EXPECT_EQ(LibClassDesc(0)->ClassID(), Class_ID(0x70068609, 0x1d5d297));
    EXPECT_EQ(LibClassDesc(1)->ClassID(), Class_ID(0x347c6bc4, 0x153540b4));
    EXPECT_EQ(LibClassDesc(2)->ClassID(), Class_ID(0x4e56f5c2, 0x1421c9be));
}

TEST(Entry, OffersNothingBeyondTheLastClass) {
    EXPECT_EQ(LibClassDesc(3), nullptr) << "though there is a fourth";
    EXPECT_EQ(LibClassDesc(1000), nullptr);
    EXPECT_EQ(LibClassDesc(-1), nullptr);
}

TEST(Entry, WindowsExportsTheFourAndNothingElse) {
    std::ifstream file(VELTRANE_SOURCE_DIR "/plugin/veltrane.def");
    std::string words;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(';')) continue;
        line.erase(0, line.find_first_not_of(' '));
        words += line + "|";
    }
    EXPECT_EQ(words,
              "LIBRARY veltrane.dlv|EXPORTS|LibDescription|LibNumberClasses|LibClassDesc|"
              "LibVersion|");
}

TEST(Entry, AttachingMoreThanOnceChangesNothing) {
    plugin::Attach();
    HINSTANCE module = plugin::Module();
    EXPECT_NE(module, nullptr);
    plugin::Attach();
    EXPECT_EQ(plugin::Module(), module);
}

TEST(Entry, GivesTheTableOfTheEffectsParameters) {
    const auto rows = plugin::EffectParameters();
    ASSERT_EQ(rows.size(), std::size(parameters::effectRows));
    EXPECT_EQ(rows.data(), parameters::effectRows.data());
}

}  // namespace
