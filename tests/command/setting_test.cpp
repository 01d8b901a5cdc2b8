#include "command/setting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "command/failure.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

Setting ParsedSetting(const std::string& text) {
    return ParseSetting(text, plugin::EffectParameters());
}

int IntOf(const std::string& text) {
    return std::get<int>(ParsedSetting(text).value);
}

std::string SettingComplaint(const std::string& text) {
    return FaultText<UsageError>([&] { ParsedSetting(text); });
}

TEST(Setting, FindsTheParameterByNameOrNumber) {
    EXPECT_EQ(ParsedSetting("bitDepth=8").row->id, 46);
    EXPECT_EQ(ParsedSetting("#46=8").row->name, "bitDepth");
    EXPECT_EQ(ParsedSetting("#0=a.psd").row->name, "filename");
}

TEST(Setting, NamesDontMindCase) {
    EXPECT_EQ(ParsedSetting("BITDEPTH=8").row->name, "bitDepth");
}

TEST(Setting, EveryWordForABooleanIsTaken) {
    for (const char* word : {"true", "on", "yes", "1", "TRUE", "Yes"}) {
        EXPECT_EQ(IntOf(std::string("autoSort=") + word), 1) << word;
    }
    for (const char* word : {"false", "off", "no", "0", "False"}) {
        EXPECT_EQ(IntOf(std::string("autoSort=") + word), 0) << word;
    }
}

TEST(Setting, IntegersAreTakenWholeAndInRange) {
    EXPECT_EQ(IntOf("renderOrder=0"), 0);
    EXPECT_EQ(IntOf("renderOrder=2000"), 2000);
    EXPECT_EQ(IntOf("compression=-7"), -7);
}

TEST(Setting, FloatsAreReadWithAPoint) {
    EXPECT_EQ(std::get<float>(ParsedSetting("resolution=300").value), 300.0F);
    EXPECT_EQ(std::get<float>(ParsedSetting("resolution=72.5").value), 72.5F);
    EXPECT_EQ(std::get<float>(ParsedSetting("resolution=1e2").value), 100.0F);
}

TEST(Setting, TextIsTakenAsItStands) {
    EXPECT_EQ(std::get<std::string>(ParsedSetting("nodeIDList=1, 3 [a=b]").value), "1, 3 [a=b]");
    EXPECT_EQ(std::get<std::string>(ParsedSetting("renderOutputLayerName=").value), "");
}

TEST(Setting, ATableOfTextsTakesThemBetweenCommas) {
    using List = std::vector<std::string>;
    EXPECT_EQ(std::get<List>(ParsedSetting("namedSelectionSetsList=a,b c").value),
              (List{"a", "b c"}));
    EXPECT_EQ(std::get<List>(ParsedSetting("namedSelectionSetsList=").value), List());
}

TEST(Setting, AValueSetTakesItsNumbersOnly) {
    EXPECT_EQ(IntOf("outputNodeIDsAs=5"), 5);
    EXPECT_EQ(SettingComplaint("outputNodeIDsAs=2"),
              "--set outputNodeIDsAs: \"2\" is not one of its values; it takes 0 = Channels, 5 = "
              "Layers (Render Cut-out), 1 = Layers (Alpha Matte), 4 = Layers (Luminance Matte)");
}

TEST(Setting, AValueOutOfRangeTellsTheRange) {
    EXPECT_EQ(SettingComplaint("renderOrder=2001"),
              "--set renderOrder: \"2001\" is not in range; it takes 0 to 2000");
    EXPECT_EQ(SettingComplaint("resolution=0.5"),
              "--set resolution: \"0.5\" is not in range; it takes 1 to 10000");
}

TEST(Setting, WhatIsNoNumberIsRefused) {
    for (const char* text : {"x", "", "1.5", "0x10", " 1", "1 ", "+1", "99999999999"}) {
        EXPECT_EQ(
            SettingComplaint(std::string("compression=") + text),
            std::string("--set compression: \"") + text + "\" is not a whole number of 32 bits");
    }
    for (const char* text : {"x", "", "1,5", "nan", "inf", "1e999", "72dpi"}) {
        EXPECT_EQ(
            SettingComplaint(std::string("resolution=") + text),
            std::string("--set resolution: \"") + text + "\" is not a number; it takes 1 to 10000");
    }
}

TEST(Setting, WhatIsNoBooleanIsRefused) {
    EXPECT_EQ(SettingComplaint("autoSort=2"),
              "--set autoSort: \"2\" is not one of true, false, on, off, yes, no, 1, 0");
}

TEST(Setting, ObjectsOfASceneCantBeSet) {
    EXPECT_EQ(SettingComplaint("objectList=1"),
              "--set objectList: this parameter holds objects of a scene and takes no value; a "
              "scene file (--scene) can give it");
}

TEST(Setting, AnUnknownNameTellsTheNearest) {
    EXPECT_EQ(SettingComplaint("bitdept=8"),
              "--set: there is no parameter \"bitdept\"; the nearest are bitDepth, "
              "legacyBitDepth, and \"veltrane params\" lists them all");
}

TEST(Setting, AnUnknownNumberIsRefused) {
    for (const char* name : {"#9999", "#", "#x", "#4 "}) {
        EXPECT_EQ(SettingComplaint(std::string(name) + "=1"),
                  std::string("--set: there is no parameter ") + name +
                      "; \"veltrane params\" lists them all with their ids");
    }
}

TEST(Setting, WithoutAnEqualsSignItIsRefused) {
    const std::string rest = ": expected NAME=VALUE, such as bitDepth=8";
    EXPECT_EQ(SettingComplaint("bitDepth"), "--set bitDepth" + rest);
    EXPECT_EQ(SettingComplaint("=8"), "--set =8" + rest);
    EXPECT_EQ(SettingComplaint(""), "--set " + rest);
}

TEST(Setting, EveryNumberAndTextOfTheTableCanBeSetToItsDefault) {
    std::size_t settable = 0;
    for (const parameters::Row& row : plugin::EffectParameters()) {
        const bool isNumber = row.type <= parameters::Type::Fraction;
        const bool isText =
            row.type == parameters::Type::String || row.type == parameters::Type::Filename;
        if (!isNumber && !isText) continue;
        const std::string value =
            isText ? std::string(row.text) : std::to_string(row.number).substr(0, 4);
        const bool whole = isNumber && row.type <= parameters::Type::Int;
        EXPECT_NO_THROW(
            ParsedSetting(std::string(row.name) + "=" +
                          (whole ? std::to_string(static_cast<int>(row.number)) : value)))
            << row.name;
        ++settable;
    }
    EXPECT_GT(settable, 90U);
}

TEST(AllowedValues, LeaveOutALabelThatOnlyRepeatsTheNumber) {
    EXPECT_EQ(AllowedValues(*ParsedSetting("renderSetting=1").row), "0, 1");
    EXPECT_EQ(AllowedValues(*ParsedSetting("fileFormat=1").row), "0 = PSD, 1 = PSB");
    EXPECT_EQ(AllowedValues(*ParsedSetting("autoSort=1").row), "");
}

}  // namespace
}  // namespace command
