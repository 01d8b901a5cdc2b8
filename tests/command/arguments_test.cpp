#include "command/arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command/failure.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Words = std::vector<std::string>;

SaveArguments Save(Words words) {
    words.insert(words.begin(), "save");
    return std::get<SaveArguments>(ParseArguments(words));
}

std::string ArgumentsComplaint(const Words& words) {
    return FaultText<UsageError>([&] { ParseArguments(words); });
}

std::string TextOf(const Words& words) {
    return std::get<TextArguments>(ParseArguments(words)).text;
}

TEST(Arguments, SaveNeedsOnlyItsInput) {
    const SaveArguments save = Save({"a.exr"});
    EXPECT_EQ(save.input, "a.exr");
    EXPECT_EQ(save.output, "");
    EXPECT_TRUE(save.settings.empty());
    EXPECT_TRUE(save.elementSettings.empty());
    EXPECT_FALSE(save.all);
    EXPECT_EQ(save.scene, "");
    EXPECT_EQ(save.renderer, "auto");
    EXPECT_EQ(save.lut, "");
    EXPECT_EQ(save.shadow, "");
    EXPECT_EQ(save.frames, "");
    EXPECT_EQ(save.beauty, "");
    EXPECT_EQ(save.gamma, 2.2F);
    EXPECT_FALSE(save.fastDeflate);
    EXPECT_EQ(save.progress, "auto");
    EXPECT_FALSE(save.quiet);
}

TEST(Arguments, SaveTakesAllItsOptions) {
    const SaveArguments save =
        Save({"--set",       "a=1",       "-o",        "b.psd",      "in.exr",     "--set",
              "b=x y",       "--frames",  "-5--1",     "--beauty",   "V.Combined", "--gamma",
              "1.8",         "--deflate", "fast",      "--progress", "lines",      "-q",
              "--all",       "--scene",   "s.json",    "--renderer", "vray",       "--element",
              "x:visible=0", "--element", "y*:mask=1", "--lut",      "l.cube",     "--shadow",
              "s.exr"});
    EXPECT_EQ(save.input, "in.exr");
    EXPECT_EQ(save.output, "b.psd");
    EXPECT_THAT(save.settings, ElementsAre("a=1", "b=x y"));
    EXPECT_EQ(save.frames, "-5--1");
    EXPECT_EQ(save.beauty, "V.Combined");
    EXPECT_EQ(save.gamma, 1.8F);
    EXPECT_TRUE(save.fastDeflate);
    EXPECT_EQ(save.progress, "lines");
    EXPECT_TRUE(save.quiet);
    EXPECT_TRUE(save.all);
    EXPECT_EQ(save.scene, "s.json");
    EXPECT_EQ(save.renderer, "vray");
    EXPECT_EQ(save.lut, "l.cube");
    EXPECT_EQ(save.shadow, "s.exr");
    EXPECT_THAT(save.elementSettings, ElementsAre("x:visible=0", "y*:mask=1"));
}

TEST(Arguments, AnEmptyValueIsNotTheSameAsNoOption) {
    EXPECT_EQ(ArgumentsComplaint({"save", "a.exr", "-o", ""}),
              "--output: the value is empty; give one or leave --output out");
    EXPECT_EQ(ArgumentsComplaint({"save", "a.exr", "--frames", ""}),
              "--frames: the value is empty; give one or leave --frames out");
    EXPECT_EQ(ArgumentsComplaint({"save", "a.exr", "--beauty", ""}),
              "--beauty: the value is empty; give one or leave --beauty out");
    EXPECT_EQ(ArgumentsComplaint({"save", "a.exr", "--scene", ""}),
              "--scene: the value is empty; give one or leave --scene out");
    EXPECT_EQ(ArgumentsComplaint({"save", "a.exr", "--element", ""}),
              "--element: the value is empty; give one or leave --element out");
    EXPECT_EQ(ArgumentsComplaint({"save", ""}),
              "INPUT: the value is empty; give one or leave INPUT out");
}

TEST(Arguments, AnOptionTakesOneValueOnly) {
    const SaveArguments save = Save({"--set", "a=1", "--element", "x:mask=1", "in.exr"});
    EXPECT_EQ(save.input, "in.exr");
    EXPECT_THAT(save.settings, ElementsAre("a=1"));
    EXPECT_THAT(save.elementSettings, ElementsAre("x:mask=1"));
}

TEST(Arguments, ASettingsTextIsTakenAsItStands) {
    EXPECT_THAT(Save({"in.exr", "--set", "nodeIDList=1, 3 [Name], 5-8"}).settings,
                ElementsAre("nodeIDList=1, 3 [Name], 5-8"));
    EXPECT_THAT(Save({"in.exr", "--set=#46=8"}).settings, ElementsAre("#46=8"));
}

TEST(Arguments, GammaIsANumberInRangeOrOff) {
    EXPECT_EQ(Save({"a", "--gamma", "off"}).gamma, std::nullopt);
    EXPECT_EQ(Save({"a", "--gamma", "0.01"}).gamma, 0.01F);
    EXPECT_EQ(Save({"a", "--gamma", "10"}).gamma, 10.0F);
    for (const char* gamma : {"0", "0.009", "10.1", "x", "2,2", "nan", "inf", "2.2x", "1e99"}) {
        EXPECT_EQ(ArgumentsComplaint({"save", "a", "--gamma", gamma}),
                  std::string("--gamma ") + gamma + ": expected off or a number from 0.01 to 10");
    }
}

TEST(Arguments, ALookNeedsAFrameBuffer) {
    EXPECT_EQ(ArgumentsComplaint({"save", "a", "--lut", "l.cube", "--renderer", "none"}),
              "--lut l.cube: with --renderer none there is no frame buffer that has a look; leave "
              "one of them out");
    EXPECT_EQ(Save({"a", "--lut", "l.cube", "--renderer", "auto"}).lut, "l.cube");
}

TEST(Arguments, InfoAndParamsTakeTheirForms) {
    EXPECT_FALSE(std::get<InfoArguments>(ParseArguments({"info", "a"})).json);
    const auto info = std::get<InfoArguments>(ParseArguments({"info", "--json", "a"}));
    EXPECT_TRUE(info.json);
    EXPECT_EQ(info.input, "a");
    const auto form = [](const Words& words) {
        return std::get<ParamsArguments>(ParseArguments(words)).form;
    };
    EXPECT_EQ(form({"params"}), ListingForm::Text);
    EXPECT_EQ(form({"params", "--json"}), ListingForm::Json);
    EXPECT_EQ(form({"params", "--markdown"}), ListingForm::Markdown);
    EXPECT_FALSE(std::get<ParamsArguments>(ParseArguments({"params"})).ofElements);
    const auto ofElements =
        std::get<ParamsArguments>(ParseArguments({"params", "--elements", "--json"}));
    EXPECT_TRUE(ofElements.ofElements);
    EXPECT_EQ(ofElements.form, ListingForm::Json);
}

TEST(Arguments, HelpAndVersionAreText) {
    EXPECT_EQ(TextOf({"--version"}), "veltrane 0.1.0\n");
    EXPECT_THAT(TextOf({"--help"}), HasSubstr("veltrane save still.exr"));
    EXPECT_THAT(TextOf({"-h"}), HasSubstr("params"));
    EXPECT_THAT(TextOf({"save", "--help"}), HasSubstr("--set NAME=VALUE"));
    EXPECT_THAT(TextOf({"info", "--help"}), HasSubstr("--json"));
}

TEST(Arguments, WrongUsageIsToldInOneLine) {
    const std::string rest = "; \"veltrane --help\" tells the usage";
    EXPECT_EQ(ArgumentsComplaint({}), "there is nothing to do" + rest);
    EXPECT_EQ(ArgumentsComplaint({"sav"}),
              "there is no command \"sav\"; the commands are save, info and params");
    EXPECT_EQ(ArgumentsComplaint({"save"}), "INPUT is required" + rest);
    EXPECT_EQ(ArgumentsComplaint({"save", "a", "b"}),
              "The following argument was not expected: b" + rest);
    EXPECT_EQ(ArgumentsComplaint({"save", "a", "--al"}),
              "The following argument was not expected: --al" + rest);
    EXPECT_EQ(ArgumentsComplaint({"save", "a", "--renderer", "x"}),
              "--renderer: x not in {auto,vray,none}" + rest);
    EXPECT_EQ(ArgumentsComplaint({"save", "a", "--element"}),
              "--element: 1 required NAME:SETTING=VALUE missing" + rest);
    EXPECT_EQ(ArgumentsComplaint({"info", "a", "--elements"}),
              "The following argument was not expected: --elements" + rest);
    EXPECT_EQ(ArgumentsComplaint({"save", "a", "-o"}), "--output: 1 required FILE missing" + rest);
    EXPECT_EQ(ArgumentsComplaint({"save", "a", "--deflate", "slow"}),
              "--deflate: slow not in {zlib,fast}" + rest);
    EXPECT_EQ(ArgumentsComplaint({"save", "a", "--progress", "x"}),
              "--progress: x not in {auto,bar,lines,none}" + rest);
    EXPECT_EQ(ArgumentsComplaint({"params", "--json", "--markdown"}),
              "--json excludes --markdown" + rest);
    EXPECT_EQ(ArgumentsComplaint({"--all"}),
              "there is no command \"--all\"; the commands are save, info and params");
}

}  // namespace
}  // namespace command
