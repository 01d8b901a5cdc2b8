// The program in this process: what is saved, what is told, and the exit status.
#include "command/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "command/image_formats.h"
#include "tests/command/captured_streams.h"
#include "tests/command/exr_samples.h"
#include "tests/command/image_samples.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

namespace fs = std::filesystem;
using exr_samples::Part;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class RunTest : public FolderTest {
  protected:
    std::string WriteExr(const std::string& name, const Part& part = {}) const {
        return Write(name, exr_samples::Write(part));
    }
    int Call(const std::vector<std::string>& arguments) {
        const CapturedStream outStream;
        const CapturedStream errStream;
        const int status = command::Run(arguments, outStream.Get(), errStream.Get());
        out = outStream.Text();
        err = errStream.Text();
        return status;
    }

    // Big-endian number of the document's header.
    unsigned HeaderNumber(const std::string& name, std::size_t at, std::size_t size) const {
        const std::string bytes = Bytes(name);
        unsigned value = 0;
        for (std::size_t i = at; i < at + size; ++i) {
            value = value * 256 + static_cast<unsigned char>(bytes.at(i));
        }
        return value;
    }

    std::string out;
    std::string err;
};

TEST_F(RunTest, SaveWritesADocumentBesideTheInput) {
    const std::string input = WriteExr("a.exr");
    EXPECT_EQ(Call({"save", input}), exitSaved) << err;
    EXPECT_EQ(err, "");
    EXPECT_THAT(out, AllOf(StartsWith("saved " + PathOf("a.psd") + " (4x3, 16 bits, PSD, "),
                           testing::EndsWith(" kB)\n")));
    EXPECT_EQ(Bytes("a.psd").substr(0, 4), "8BPS");
    EXPECT_EQ(HeaderNumber("a.psd", 4, 2), 1U) << "version";
    EXPECT_EQ(HeaderNumber("a.psd", 14, 4), 3U) << "height";
    EXPECT_EQ(HeaderNumber("a.psd", 18, 4), 4U) << "width";
    EXPECT_EQ(HeaderNumber("a.psd", 22, 2), 16U) << "depth";
}

TEST_F(RunTest, SettingsReachTheEffect) {
    const std::string input = WriteExr("a.exr");
    EXPECT_EQ(Call({"save", input, "--set", "bitDepth=32", "-o", PathOf("b.psb")}), exitSaved)
        << err;
    EXPECT_THAT(out, HasSubstr("(4x3, 32 bits, PSB, "));
    EXPECT_EQ(HeaderNumber("b.psb", 4, 2), 2U);
    EXPECT_EQ(HeaderNumber("b.psb", 22, 2), 32U);
}

TEST_F(RunTest, TheSameInputGivesTheSameBytes) {
    const std::string input = WriteExr("a.exr");
    ASSERT_EQ(Call({"save", input, "-o", PathOf("1.psd"), "--set", "bitDepth=8"}), exitSaved);
    ASSERT_EQ(Call({"save", input, "-o", PathOf("2.psd"), "--set", "bitDepth=8"}), exitSaved);
    EXPECT_EQ(Bytes("1.psd"), Bytes("2.psd"));
}

TEST_F(RunTest, GammaReachesTheEffect) {
    const std::string input =
        WriteExr("a.exr", {.values = [](const std::string&, int, int) { return 0.25; }});
    const std::vector<std::string> save{"save", input, "--set", "gammaCorrectConfig=0", "-o"};
    const auto call = [&](const std::string& name, const std::vector<std::string>& more) {
        std::vector<std::string> words = save;
        words.push_back(PathOf(name));
        words.insert(words.end(), more.begin(), more.end());
        EXPECT_EQ(Call(words), exitSaved) << err;
    };
    call("default.psd", {});
    call("22.psd", {"--gamma", "2.2"});
    call("18.psd", {"--gamma", "1.8"});
    call("off.psd", {"--gamma", "off"});
    EXPECT_EQ(Bytes("default.psd"), Bytes("22.psd"));
    EXPECT_NE(Bytes("22.psd"), Bytes("18.psd"));
    EXPECT_NE(Bytes("22.psd"), Bytes("off.psd"));
}

TEST_F(RunTest, BeautyChoosesTheLayer) {
    const std::string input =
        WriteExr("a.exr", {.channels = {{"R"}, {"G"}, {"B"}, {"x.R"}, {"x.G"}, {"x.B"}},
                           .values = [](const std::string& channel, int, int) {
                               return channel.size() == 1 ? 0.25 : 0.5;
                           }});
    ASSERT_EQ(Call({"save", input, "-o", PathOf("1.psd")}), exitSaved) << err;
    ASSERT_EQ(Call({"save", input, "-o", PathOf("2.psd"), "--beauty", "x"}), exitSaved) << err;
    EXPECT_NE(Bytes("1.psd"), Bytes("2.psd"));
    EXPECT_EQ(Call({"save", input, "--beauty", "y"}), exitNotSaved);
    EXPECT_EQ(err,
              "veltrane: error: " + input + ": there is no layer \"y\"; the layers are RGB, x\n");
}

TEST_F(RunTest, ADocumentCanComeFromEveryKindOfImage) {
    const image_samples::Image image{.samples = {10, 20, 30}};
    std::vector<std::pair<std::string, std::string>> files{{"a.png", image_samples::Png(image)},
                                                           {"a.tif", image_samples::Tiff(image)}};
#ifndef _WIN32
    files.emplace_back("a.tga", image_samples::Tga(image));
#endif
    for (const auto& [name, bytes] : files) {
        const std::string input = Write(name, bytes);
        EXPECT_EQ(Call({"save", input, "-o", PathOf(name + ".psd")}), exitSaved) << err;
        EXPECT_EQ(Bytes(name + ".psd").substr(0, 4), "8BPS");
    }
    EXPECT_EQ(Bytes("a.png.psd"), Bytes("a.tif.psd"));
}

TEST_F(RunTest, ASequenceIsNumberedByTheHost) {
    for (const int frame : {1, 2, 3})
        WriteExr("s.000" + std::to_string(frame) + ".exr");
    EXPECT_EQ(Call({"save", PathOf("s.####.exr"), "--frames", "1-3"}), exitSaved) << err;
    for (const int frame : {1, 2, 3}) {
        const std::string name = "s.000" + std::to_string(frame) + ".psd";
        EXPECT_TRUE(fs::exists(folder / name)) << name;
        EXPECT_THAT(out, HasSubstr("saved " + PathOf(name) + " (4x3, 16 bits, PSD, "));
    }
}

TEST_F(RunTest, ASequenceOfOneOrOfPickedFramesIsNumberedToo) {
    WriteExr("s7.exr");
    WriteExr("s9.exr");
    EXPECT_EQ(Call({"save", PathOf("s%d.exr"), "--frames", "7"}), exitSaved) << err;
    EXPECT_TRUE(fs::exists(folder / "s0007.psd"));
    EXPECT_EQ(Call({"save", PathOf("s$F.exr"), "--frames", "7,9", "-o", PathOf("t_####.psb")}),
              exitSaved)
        << err;
    EXPECT_TRUE(fs::exists(folder / "t_0007.psb"));
    EXPECT_TRUE(fs::exists(folder / "t_0009.psb"));
}

TEST_F(RunTest, AFrameThatFailsDoesntStopTheOthers) {
    WriteExr("s.0001.exr");
    Write("s.0002.exr", "broken");
    WriteExr("s.0004.exr");
    EXPECT_EQ(Call({"save", PathOf("s.####.exr"), "--frames", "1-4", "--progress", "lines"}),
              exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + PathOf("s.0002.exr") +
                       ": not an image that can be read; give an OpenEXR, " + ImageFormatList() +
                       " file\nveltrane: error: " + PathOf("s.0003.exr") +
                       ": no such file; check the path\n");
    EXPECT_TRUE(fs::exists(folder / "s.0001.psd"));
    EXPECT_FALSE(fs::exists(folder / "s.0002.psd"));
    EXPECT_TRUE(fs::exists(folder / "s.0004.psd"));
    EXPECT_THAT(out, HasSubstr("PROGRESS: 75%\n"));
    EXPECT_THAT(out, HasSubstr("PROGRESS: 100%\n"));
}

TEST_F(RunTest, AMissingFolderReachesTheUser) {
    const std::string input = WriteExr("a.exr");
    const std::string output = Utf8(folder / "no" / "a.psd");
    EXPECT_EQ(Call({"save", input, "-o", output}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: Could not open/create " + output +
                       ": No such file or directory; create its folder first or choose another "
                       "with -o\n");
}

TEST_F(RunTest, AFolderInTheDocumentsPlaceReachesTheUser) {
    const std::string input = WriteExr("a.exr");
    fs::create_directory(folder / "a.psd");
    EXPECT_EQ(Call({"save", input}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: Could not open/create " + PathOf("a.psd") +
                       ": Is a directory; choose another name with -o\n");
}

TEST_F(RunTest, APathTooLongForTheHostIsToldBeforehand) {
    WriteExr("s1.exr");
    const std::string output = PathOf(std::string(260, 'x') + ".psd");
    EXPECT_EQ(Call({"save", PathOf("s#.exr"), "--frames", "1", "-o", output}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + output +
                       ": the path with its frame number has more than 259 characters; choose a "
                       "shorter one with -o\n");
}

TEST_F(RunTest, TheInputIsNeverOverwritten) {
    const std::string input = WriteExr("a.psd");
    const std::string before = Bytes("a.psd");
    EXPECT_EQ(Call({"save", input}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + input +
                       ": the document would overwrite it; choose another name with -o\n");
    EXPECT_EQ(Bytes("a.psd"), before);
    fs::create_hard_link(folder / "a.psd", folder / "b.psd");
    EXPECT_EQ(Call({"save", input, "-o", PathOf("b.psd")}), exitNotSaved);
    EXPECT_EQ(Bytes("a.psd"), before);
}

TEST_F(RunTest, AnExistingDocumentIsOverwritten) {
    const std::string input = WriteExr("a.exr");
    Write("a.psd", std::string(100000, 'x'));
    EXPECT_EQ(Call({"save", input}), exitSaved) << err;
    EXPECT_EQ(Bytes("a.psd").substr(0, 4), "8BPS");
    EXPECT_LT(Bytes("a.psd").size(), 100000U);
}

TEST_F(RunTest, ASettingThatDoesNothingIsToldSoUnlessItIsSwitchedOff) {
    const std::string input = WriteExr("a.exr");
    EXPECT_EQ(Call({"save", input, "--set", "legacyGammaAll=on", "--set", "usePS7Extensions=off",
                    "--set", "createNormalLayer=on"}),
              exitSaved);
    EXPECT_EQ(err,
              "veltrane: warning: --set legacyGammaAll: it is kept for old scenes and "
              "changes no document\n");
}

TEST_F(RunTest, ValuesThatAreNotFiniteGiveOneWarning) {
    const std::string input = WriteExr(
        "a.exr", {.values = [](const std::string& channel, int x, int y) {
            if (channel == "R" && x == 0 && y == 0) return std::nan("");
            return channel == "G" && x == 1 ? std::numeric_limits<double>::infinity() : 0.5;
        }});
    EXPECT_EQ(Call({"save", input}), exitSaved);
    EXPECT_EQ(err, "veltrane: warning: " + input +
                       ": 4 values were not finite; NaN became 0 and infinity the largest "
                       "number\n");
}

TEST_F(RunTest, QuietSuppressesEverythingButErrors) {
    const std::string input =
        WriteExr("a.exr", {.values = [](const std::string&, int, int) { return std::nan(""); }});
    EXPECT_EQ(Call({"save", input, "-q", "--progress", "lines"}), exitSaved);
    EXPECT_EQ(out + err, "");
    EXPECT_EQ(Call({"save", PathOf("no.exr"), "-q"}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + PathOf("no.exr") + ": no such file; check the path\n");
}

TEST_F(RunTest, ProgressLinesEndAtAHundred) {
    const std::string input = WriteExr("a.exr");
    EXPECT_EQ(Call({"save", input, "--progress", "lines"}), exitSaved);
    EXPECT_THAT(out, AllOf(StartsWith("PROGRESS: 0%\nPROGRESS: "), HasSubstr("PROGRESS: 100%\n")));
    EXPECT_EQ(Call({"save", input}), exitSaved);
    EXPECT_THAT(out, Not(HasSubstr("PROGRESS")));
}

TEST_F(RunTest, TheDocumentsNameMayBeSetAsAParameter) {
    const std::string input = WriteExr("a.exr");
    EXPECT_EQ(Call({"save", input, "--set", "filename=" + PathOf("b.psd")}), exitSaved) << err;
    EXPECT_TRUE(fs::exists(folder / "b.psd"));
    EXPECT_FALSE(fs::exists(folder / "a.psd"));
    EXPECT_EQ(Call({"save", input, "--set", "filename=b.psd", "-o", "c.psd"}), exitUsage);
    EXPECT_EQ(err,
              "veltrane: error: -o and --set filename both name the document; leave one of "
              "them\n");
}

TEST_F(RunTest, TheDocumentsNameMayFollowTheRenderOutput) {
    const std::string input = WriteExr("a.exr");
    EXPECT_EQ(
        Call({"save", input, "--set", "matchRenderOutputFilename=true", "--set", "fileFormat=1"}),
        exitSaved)
        << err;
    EXPECT_THAT(out, StartsWith("saved " + PathOf("a.psb") + " (4x3, 16 bits, PSB, "));
}

TEST_F(RunTest, WrongUsageIsTwo) {
    const std::string input = WriteExr("a.exr");
    const auto complaint = [&](const std::vector<std::string>& words) {
        EXPECT_EQ(Call(words), exitUsage);
        EXPECT_EQ(out, "");
        return err;
    };
    EXPECT_EQ(complaint({"save", input, "-o", "a.exr"}),
              "veltrane: error: -o a.exr: a document's name ends in .psd or .psb\n");
    EXPECT_EQ(complaint({"save", input, "--frames", "1-3"}),
              "veltrane: error: " + input +
                  ": with --frames the name holds the frame number, such as shot.####.exr; put it "
                  "there or leave --frames out\n");
    EXPECT_EQ(complaint({"save", "s.####.exr"}),
              "veltrane: error: s.####.exr: there is no such file; to read #### as a frame number "
              "give the frames, such as --frames 1-10\n");
    EXPECT_EQ(
        complaint({"save", "s.####.exr", "--frames", "1", "-o", "a.####.b.psd"}),
        "veltrane: error: -o a.####.b.psd: the frame number of a document stands right before "
        "its suffix; move #### there or leave it out\n");
    EXPECT_EQ(complaint({"save", input, "--set", "bitDepth=7"}),
              "veltrane: error: --set bitDepth: \"7\" is not one of its values; it takes 8 = 8 "
              "Bits, 16 = 16 Bits, 32 = 32 Bits (HDR)\n");
    EXPECT_FALSE(fs::exists(folder / "a.psd"));
}

TEST_F(RunTest, AFileCalledLikeAPatternIsJustAFile) {
    const std::string input = WriteExr("take#2.exr");
    EXPECT_EQ(Call({"save", input}), exitSaved) << err;
    EXPECT_TRUE(fs::exists(folder / "take#2.psd"));
}

TEST_F(RunTest, FastDeflateGivesADocumentOfTheSameKind) {
    const std::string input =
        WriteExr("a.exr", {.display = {0, 0, 299, 199}, .data = {0, 0, 299, 199}});
    ASSERT_EQ(Call({"save", input, "-o", PathOf("z.psd")}), exitSaved) << err;
    const int status = Call({"save", input, "--deflate", "fast", "-o", PathOf("f.psd")});
#ifdef VELTRANE_ISAL
    ASSERT_EQ(status, exitSaved) << err;
    EXPECT_EQ(Bytes("f.psd").substr(0, 26), Bytes("z.psd").substr(0, 26));
    EXPECT_NE(Bytes("f.psd"), Bytes("z.psd"));
    ASSERT_EQ(Call({"save", input, "-o", PathOf("again.psd")}), exitSaved) << err;
    EXPECT_EQ(Bytes("again.psd"), Bytes("z.psd")) << "zlib is back for the next run";
#else
    EXPECT_EQ(status, exitUsage);
    EXPECT_EQ(err,
              "veltrane: error: --deflate fast: this build has no ISA-L; use --deflate "
              "zlib\n");
#endif
}

TEST_F(RunTest, InfoTellsOfAFile) {
    const std::string input = WriteExr("a.exr");
    EXPECT_EQ(Call({"info", input}), exitSaved);
    EXPECT_THAT(out, StartsWith(input + ": OpenEXR, 4x3\n"));
    EXPECT_EQ(Call({"info", PathOf("no.exr")}), exitNotSaved);
    EXPECT_EQ(err, "veltrane: error: " + PathOf("no.exr") + ": no such file; check the path\n");
}

TEST_F(RunTest, ListingsAndHelpAreZero) {
    EXPECT_EQ(Call({"params", "--json"}), exitSaved);
    EXPECT_THAT(out, StartsWith("[\n"));
    EXPECT_EQ(Call({"params", "--elements"}), exitSaved);
    EXPECT_THAT(out, AllOf(HasSubstr("blendingMode  #3  Int"), Not(HasSubstr("bitDepth"))));
    EXPECT_EQ(Call({"--help"}), exitSaved);
    EXPECT_EQ(Call({"--version"}), exitSaved);
    EXPECT_EQ(err, "");
}

}  // namespace
}  // namespace command
