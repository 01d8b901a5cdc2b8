#include "command/element_setting.h"

#include <gtest/gtest.h>

#include "command/failure.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

std::string ElementSettingComplaint(const std::string& text) {
    return FaultText<UsageError>([&] { ParseElementSetting(text); });
}

bool Fits(const std::string& pattern, const std::string& name) {
    return IsFor({pattern, {}}, name);
}

TEST(ElementSetting, IsANameASettingAndAValue) {
    const ElementSetting setting = ParseElementSetting("Shadow:visible=false");
    EXPECT_EQ(setting.element, "Shadow");
    EXPECT_EQ(setting.setting.row->name, "visible");
    EXPECT_EQ(std::get<int>(setting.setting.value), 0);
}

TEST(ElementSetting, TakesLabelsAndNumbersOfSettings) {
    EXPECT_EQ(std::get<int>(ParseElementSetting("a:blendingMode=Multiply").setting.value), 3);
    EXPECT_EQ(std::get<int>(ParseElementSetting("a:blendingMode=7").setting.value), 7);
    EXPECT_EQ(ParseElementSetting("a:#3=7").setting.row->name, "blendingMode");
    EXPECT_EQ(ParseElementSetting("a:OUTPUTAS=channel").setting.row->name, "outputAs");
}

TEST(ElementSetting, TheNameMayHoldColonsAndEqualsSigns) {
    EXPECT_EQ(ParseElementSetting("a:b:visible=1").element, "a:b");
    EXPECT_EQ(ParseElementSetting("a=b:visible=1").element, "a=b");
    EXPECT_EQ(ParseElementSetting("::visible=1").element, ":");
    EXPECT_EQ(ParseElementSetting("Back/right/x y:mask=on").element, "Back/right/x y");
}

TEST(ElementSetting, WithoutItsPartsItIsRefused) {
    const std::string rest = ": expected NAME:SETTING=VALUE, such as Shadow:visible=false";
    for (const char* text : {"", "a", "visible=1", ":visible=1", "a:visible", "a:=1", "a:b c=1"})
        EXPECT_EQ(ElementSettingComplaint(text), std::string("--element ") + text + rest);
}

TEST(ElementSetting, AWrongSettingOrValueTellsWhichThereAre) {
    EXPECT_EQ(ElementSettingComplaint("a:visibel=1"),
              "--element: there is no parameter \"visibel\"; the nearest are visible, and "
              "\"veltrane params --elements\" lists them all");
    EXPECT_EQ(ElementSettingComplaint("a:visible=maybe"),
              "--element visible: \"maybe\" is not one of true, false, on, off, yes, no, 1, 0");
    EXPECT_EQ(ElementSettingComplaint("a:outputAs=2"),
              "--element outputAs: \"2\" is not one of its values; it takes 0 = Layer, 1 = "
              "Channel");
    EXPECT_EQ(ElementSettingComplaint("a:renderElement=1"),
              "--element renderElement: this parameter holds objects of a scene and takes no "
              "value");
}

TEST(ElementSetting, IsForTheElementOfItsNameWhateverTheCase) {
    EXPECT_TRUE(Fits("Shadow", "Shadow"));
    EXPECT_TRUE(Fits("SHADOW", "shadow"));
    EXPECT_FALSE(Fits("Shadow", "Shadows"));
    EXPECT_FALSE(Fits("Shadows", "Shadow"));
    EXPECT_FALSE(Fits("", "Shadow"));
}

TEST(ElementSetting, AStarIsAnyRunOfCharacters) {
    EXPECT_TRUE(Fits("*", ""));
    EXPECT_TRUE(Fits("*", "anything"));
    EXPECT_TRUE(Fits("Diff*", "Diff"));
    EXPECT_TRUE(Fits("Diff*", "DiffDir"));
    EXPECT_TRUE(Fits("*dir", "DiffDir"));
    EXPECT_TRUE(Fits("d*f*r", "DiffDir"));
    EXPECT_TRUE(Fits("**Dir**", "DiffDir"));
    EXPECT_FALSE(Fits("*Ind", "DiffDir"));
    EXPECT_FALSE(Fits("Diff*x", "DiffDir"));
    EXPECT_TRUE(Fits("*ab", "aab")) << "the first a isn't the one";
    EXPECT_TRUE(Fits("*a*b", "abab"));
    EXPECT_FALSE(Fits("*a*b", "aba"));
}

}  // namespace
}  // namespace command
