#include "tests/effect/effect_fixture.h"
#include "tests/host/native_path.h"

namespace {

class OutputFileName : public EffectTest {
  protected:
    static constexpr const char* none = "(none)";

    std::string Resolved(bool numbered, int frame = 0) {
        MSTR name;
        if (!effect->ResolveOutputFileName(name, numbered, frame * GetTicksPerFrame())) return none;
        return host::ToUtf8(name);
    }
    void RenderOutput(const std::filesystem::path& name) { Render().output.SetName(Text(name)); }
};

TEST_F(OutputFileName, ComesFromTheRenderOutputWithTheDocumentsExtension) {
    RenderOutput("/renders/shot.exr");
    EXPECT_EQ(Resolved(true), NativePath("/renders/shot.psd"));
    RenderOutput("/renders/shot.v2.PSB");
    EXPECT_EQ(Resolved(true), NativePath("/renders/shot.v2.psd"));
}

TEST_F(OutputFileName, HasTheLargeFormatsExtensionWhenThatIsChosen) {
    RenderOutput("/renders/shot.exr");
    for (const int fileFormat : {1, 2, -1}) {
        Set("fileFormat"_param, fileFormat);
        EXPECT_EQ(Resolved(true), NativePath("/renders/shot.psb"));
    }
}

TEST_F(OutputFileName, InTheRootHasOneSeparator) {
    RenderOutput("/shot.exr");
    EXPECT_EQ(Resolved(true), NativePath("/shot.psd"));
}

TEST_F(OutputFileName, IsNoneForARenderOutputWithoutNameBaseOrExtension) {
    for (const char* name : {"", "/renders/", "/renders/shot", "/renders/.exr"}) {
        Render().output.SetName(host::FromUtf8(name));
        EXPECT_EQ(Resolved(true), none) << name;
        EXPECT_EQ(Resolved(false), none) << name;
    }
}

TEST_F(OutputFileName, OfARelativeRenderOutputIsAbsolute) {
    RenderOutput("shot.exr");
    EXPECT_EQ(Resolved(true), (std::filesystem::current_path() / "shot.psd").string());
}

TEST_F(OutputFileName, IsResolvedByNameAlone) {
    RenderOutput("/renders/./a/../shot.exr");
    EXPECT_EQ(Resolved(true), NativePath("/renders/shot.psd"));
}

TEST_F(OutputFileName, OfTheEffectsOwnKeepsItsExtension) {
    Set("fileFormat"_param, 1);
    for (const char* name :
         {"/renders/own.psd", "/renders/own.PSB", "/renders/own.tif", "/renders/own"}) {
        SetFilename(name);
        EXPECT_EQ(Resolved(true), NativePath(name));
    }
}

TEST_F(OutputFileName, OfTheEffectsOwnIsNoneUntilItIsSet) {
    Set("matchRenderOutputFilename"_param, FALSE);
    EXPECT_EQ(Resolved(true), none);
}

TEST_F(OutputFileName, ThatNamesNoFileIsNone) {
    SetFilename(std::filesystem::path("/renders") / std::string(256, 'x'));
    EXPECT_EQ(Resolved(true), none);
}

TEST_F(OutputFileName, OfAStillHasNoNumber) {
    RenderOutput("/renders/shot.exr");
    Render().fileNumberBase = 100;
    EXPECT_EQ(Resolved(true, 12), NativePath("/renders/shot.psd"));
}

TEST_F(OutputFileName, OfASegmentOrRangeHasTheFramesNumberFromTheHostsBase) {
    RenderOutput("/renders/shot.exr");
    Render().fileNumberBase = 100;
    for (const int timeType : {REND_TIMESEGMENT, REND_TIMERANGE}) {
        Render().timeType = timeType;
        EXPECT_EQ(Resolved(true, 12), NativePath("/renders/shot0112.psd"));
        EXPECT_EQ(Resolved(true, -100), NativePath("/renders/shot0000.psd"));
    }
}

TEST_F(OutputFileName, OfPickedFramesHasTheFramesOwnNumber) {
    RenderOutput("/renders/shot.exr");
    Render().fileNumberBase = 100;
    Render().timeType = REND_TIMEPICKUP;
    EXPECT_EQ(Resolved(true, 12), NativePath("/renders/shot0012.psd"));
    EXPECT_EQ(Resolved(true, 12345), NativePath("/renders/shot12345.psd"));
}

TEST_F(OutputFileName, CountsFramesAtTheScenesRate) {
    RenderOutput("/renders/shot.exr");
    Render().timeType = REND_TIMERANGE;
    Host().settings.frameRate = 24;
    MSTR name;
    EXPECT_TRUE(effect->ResolveOutputFileName(name, true, 4800 * 2));
    EXPECT_EQ(host::ToUtf8(name), NativePath("/renders/shot0048.psd"));
    EXPECT_TRUE(effect->ResolveOutputFileName(name, true, 4800 * 2 + 199));
    EXPECT_EQ(host::ToUtf8(name), NativePath("/renders/shot0048.psd"))
        << "a part of a frame doesn't count";
}

TEST_F(OutputFileName, UnnumberedIsThatOfTheWholeSequence) {
    RenderOutput("/renders/shot.exr");
    Render().timeType = REND_TIMERANGE;
    EXPECT_EQ(Resolved(false, 12), NativePath("/renders/shot.psd"));
}

TEST_F(OutputFileName, OfTheNumberThatMeansNoneHasNoNumber) {
    RenderOutput("/renders/shot.exr");
    Render().timeType = REND_TIMESEGMENT;
    Render().fileNumberBase = -2000000;
    EXPECT_EQ(Resolved(true, 0), NativePath("/renders/shot.psd"));
    const std::string tooLongForANumber =
        std::string("/").append(200, 'd').append("/").append(100, 'n').append(".psd");
    SetFilename(tooLongForANumber);
    EXPECT_EQ(Resolved(true, 0), NativePath(tooLongForANumber));
}

TEST_F(OutputFileName, HasRoomFor259CharactersWithItsNumber) {
    Render().timeType = REND_TIMERANGE;
    const std::string folderName = NativePath(std::string("/").append(200, 'd').append("/"));
    const auto baseOf = [&](std::size_t length) {
        return std::string(length - folderName.size() - 8, 'n');
    };
    SetFilename(folderName + baseOf(259) + ".psd");
    EXPECT_EQ(Resolved(true, 1), folderName + baseOf(259) + "0001.psd");
    SetFilename(folderName + baseOf(260) + ".psd");
    EXPECT_EQ(Resolved(true, 1), none);
    EXPECT_EQ(Resolved(false, 1), folderName + baseOf(260) + ".psd");
}

TEST_F(OutputFileName, KeepsCharactersOutsideTheCodePage) {
    SetFilename(host::ToNativePath(host::FromUtf8("/renders/\xE6\xBC\xA2\xF0\x9F\x8E\xA8.psd")));
    EXPECT_EQ(Resolved(true), NativePath("/renders/\xE6\xBC\xA2\xF0\x9F\x8E\xA8.psd"));
}

TEST_F(OutputFileName, IsNoneWithoutTheBlock) {
    effect->DeleteReference(0);
    EXPECT_EQ(Resolved(true), none);
}

}  // namespace
