#include <IPathConfigMgr.h>

#include <new>

#include "effect/renderer_kinds.h"
#include "plugin/library_services.h"
#include "tests/effect/effect_fixture.h"
#include "tests/host/window_stage.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* sizesDifferQuestion =
    "Please use the same resolution for the V-Ray and 3ds Max frame buffer.\n\nDo you want to "
    "continue rendering without saving a PSD file?";
constexpr const char* sizesDifferLog =
    "V-Ray frame buffer resolution differs from 3ds max frame buffer! PSD file will not be saved!";
constexpr const char* noMemoryQuestion =
    "Please enable the V-Ray memory framebuffer.\n\nDo you want to continue rendering without "
    "saving a PSD file?";
constexpr const char* noMemoryLog =
    "V-Ray memory framebuffer not enabled! PSD file will not be saved!";
constexpr const char* noHostBufferQuestion =
    "Vray will not create the 3ds Max frame buffer that veltrane requires.\nTo change this please "
    "assign a Render Output filename in the Render Setup dialog or disable the VRAY frame "
    "buffer.\n\nDo you want to continue rendering without saving a PSD file?";
constexpr const char* noHostBufferLog =
    "Vray will not create the 3ds Max frame buffer! PSD file will not be saved!";
constexpr const char* sequenceWarning =
    "You are rendering a sequence with no file assigned.\nFrames may be lost.";
constexpr const char* noFilenameLog = "No PSD filename assigned! PSD file will not be saved!";
constexpr const char* samplerWarning =
    "The V-Ray Progressive image sampler doesn't support the 3ds max G-Buffer. Masking "
    "layers/channels will be empty.Please use the Bucket image sampler instead or rely on render "
    "elements for mask creation.\n";
constexpr const char* samplerLog =
    "V-Ray Progressive image sampler does not support G-Buffer. Some PSD layers/channels will be "
    "empty. Use Bucket sampler instead.";
constexpr const char* coronaWarning =
    "PSD: Corona doesn't support the 3ds max G-Buffer. All masking layers/channels will be empty. "
    "Use render elements instead.";
constexpr const char* noOutputNameQuestion =
    "Please assign a filename in the Render Setup dialog.\n\nDo you want to continue rendering "
    "without saving a PSD file?";
constexpr const char* invalidNameLog = "No valid PSD filename! PSD file will not be saved!";

constexpr Class_ID standardRenderer{0x00000001, 0x00000000};

class RenderBegin : public EffectTest {
  protected:
    WindowStage stage;

    RenderBegin() { UseRenderer(standardRenderer); }

    // Whether the render that begins now saves its frames.
    bool Saves(ULONG flags = 0) {
        effect->RenderBegin(time, flags);
        const auto frame = Image(2, 2);
        RenderStartedFrame(frame.get());
        effect->RenderEnd(time);
        const bool saved = Exists("frame.psd");
        std::filesystem::remove(File("frame.psd"));
        return saved;
    }

    // A V-Ray with its frame buffer on and everything in order.
    IParamBlock2& UseVRay() {
        IParamBlock2* block = UseRenderer(VRAY_CLASS_ID).GetParamBlock(15);
        block->SetValue(170, 0, TRUE);
        block->SetValue(171, 0, Render().width);
        block->SetValue(172, 0, Render().height);
        block->SetValue(228, 0, FALSE);
        Render().saveFile = TRUE;
        return *block;
    }

    // The configuration file that the user wrote: an integer 1 is 01000000, its checksum 01.
    void WriteConfig(const std::string& key) {
        WriteFile(File("config") / "veltrane.cfg", "[Warnings]\r\n" + key + "=0100000001\r\n");
    }

    // The window that shows the progress of a render.
    HWND ShowProgressWindow() {
        HWND window = stage.Add({_M("#32770"), _M("Rendering"), nullptr, MainWindow(), 0});
        for (const auto& [id, className] : {std::pair{2, _M("Button")},
                                            {1345, _M("msctls_progress32")},
                                            {1346, _M("msctls_progress32")},
                                            {1348, _M("Static")},
                                            {1280, _M("RollupWindow")}}) {
            stage.Add({className, _M(""), window, nullptr, id});
        }
        return window;
    }
    HWND MainWindow() {
        if (!Host().settings.mainWindow) {
            Host().settings.mainWindow = stage.Add({_M("Main"), _M(""), nullptr, nullptr});
        }
        return Host().settings.mainWindow;
    }
};

TEST_F(RenderBegin, ARenderInOrderIsSavedWithoutAWord) {
    EXPECT_EQ(effect->RenderBegin(0, 0), 0);
    effect->RenderEnd(0);
    EXPECT_TRUE(Saves());
    EXPECT_FALSE(Render().aborted);
}

TEST_F(RenderBegin, TheMaterialEditorsRenderIsLeftAlone) {
    Render().output.SetName(MSTR());
    EXPECT_FALSE(Saves(1));
    EXPECT_FALSE(Saves(1 | 4)) << "whatever the other flags say";
}

TEST_F(RenderBegin, OtherFlagsMakeNoDifference) {
    EXPECT_TRUE(Saves(2 | 4));
}

TEST_F(RenderBegin, TheMaterialEditorsRenderDoesntDisarmTheOneInHand) {
    effect->RenderBegin(0, 0);
    effect->RenderBegin(0, 1);
    const auto frame = Image(2, 2);
    RenderStartedFrame(frame.get());
    effect->RenderEnd(0);
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(RenderBegin, APreviewIsNotSaved) {
    Render().preview = true;
    EXPECT_FALSE(Saves());
}

TEST_F(RenderBegin, AnIterativeRenderIsNotSaved) {
    Render().iterative = true;
    EXPECT_FALSE(Saves());
}

TEST_F(RenderBegin, AnIterativeSwitchThatIsTrueButNotTheNumber1DoesntCount) {
    Host().scripts.Set("maxops.rendUseIterative", host::ScriptInt(2));
    EXPECT_TRUE(Saves());
    Host().scripts.Set("maxops.rendUseIterative", host::ScriptBool(true));
    EXPECT_TRUE(Saves());
    Host().scripts.Remove("maxops.rendUseIterative");
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, AnInactiveEffectSavesNone) {
    effect->SetAFlag(A_ATMOS_DISABLED);
    EXPECT_FALSE(effect->Active(0));
    EXPECT_FALSE(Saves());
    effect->ClearAFlag(A_ATMOS_DISABLED);
    EXPECT_TRUE(effect->Active(0));
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, AFailedCheckOfOneRenderIsForgottenInTheNext) {
    Render().preview = true;
    EXPECT_FALSE(Saves());
    Render().preview = false;
    EXPECT_TRUE(Saves());
    Render().preview = true;
    EXPECT_FALSE(Saves());
}

TEST_F(RenderBegin, CoronaWithoutAProgressWindowIsNotSaved) {
    UseRenderer(CORONA_CLASS_ID);
    EXPECT_FALSE(Saves());
}

TEST_F(RenderBegin, CoronaWithAProgressWindowOrAQuietHostIsSaved) {
    UseRenderer(CORONA_CLASS_ID);
    ShowProgressWindow();
    EXPECT_TRUE(Saves());
    stage.Remove(MainWindow());
    Host().settings.mainWindow = nullptr;
    EXPECT_FALSE(Saves());
    Host().settings.quiet = true;
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, OtherRenderersNeedNoProgressWindow) {
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, AVRayFrameBufferInOrderIsSaved) {
    UseVRay();
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, AVRayFrameBufferThatTakesTheHostsSizeNeedsNoEqualOne) {
    IParamBlock2& vray = UseVRay();
    vray.SetValue(171, 0, 1);
    vray.SetValue(172, 0, 1);
    vray.SetValue(228, 0, TRUE);
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, VRayWithoutItsFrameBufferIsSavedWhateverElseItsSettingsSay) {
    IParamBlock2& vray = UseVRay();
    vray.SetValue(170, 0, FALSE);
    vray.SetValue(189, 0, FALSE);
    Render().saveFile = FALSE;
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, VRayThatDoesntAnswerForItsFrameBufferIsSaved) {
    UseVRay().SetValue(189, 0, FALSE);
    static_cast<host::HostRenderer&>(*Host().renderer).properties.Remove("output_on");
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, AVRayFrameBufferOfAnotherWidthIsAskedAbout) {
    UseVRay().SetValue(171, 0, Render().width + 1);
    answer = IDYES;
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(sizesDifferQuestion)));
    EXPECT_THAT(TakeLog(), ElementsAre(Error(sizesDifferLog)));
    EXPECT_FALSE(Render().aborted) << "Yes renders on";
}

TEST_F(RenderBegin, AVRayFrameBufferOfAnotherHeightIsAskedAbout) {
    UseVRay().SetValue(172, 0, Render().height - 1);
    answer = IDNO;
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(sizesDifferQuestion)));
    EXPECT_THAT(TakeLog(), ElementsAre(Error(sizesDifferLog)));
    EXPECT_TRUE(Render().aborted) << "No stops the render";
}

TEST_F(RenderBegin, AVRayFrameBufferOutsideMemoryIsAskedAbout) {
    for (const int button : {IDYES, IDNO}) {
        UseVRay().SetValue(189, 0, FALSE);
        answer = button;
        Render().aborted = false;
        EXPECT_FALSE(Saves());
        EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(noMemoryQuestion)));
        EXPECT_THAT(TakeLog(), ElementsAre(Error(noMemoryLog)));
        EXPECT_EQ(Render().aborted, button == IDNO);
    }
}

TEST_F(RenderBegin, AVRayFrameBufferWithoutRenderToFileIsAskedAbout) {
    for (const int button : {IDYES, IDNO}) {
        UseVRay();
        Render().saveFile = FALSE;
        answer = button;
        Render().aborted = false;
        EXPECT_FALSE(Saves());
        EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(noHostBufferQuestion)));
        EXPECT_THAT(TakeLog(), ElementsAre(Error(noHostBufferLog)));
        EXPECT_EQ(Render().aborted, button == IDNO);
    }
}

TEST_F(RenderBegin, ARenderToFileSwitchThatIsNotExactly1IsOff) {
    UseVRay();
    Render().saveFile = 2;
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(noHostBufferQuestion)));
    EXPECT_THAT(TakeLog(), ElementsAre(Error(noHostBufferLog)));
}

TEST_F(RenderBegin, TheUsersSwitchSilencesTheFrameBufferBoxAndNotTheLog) {
    UseVRay().SetValue(189, 0, FALSE);
    WriteConfig("DisableVrayFrameBufferWarnings");
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), IsEmpty());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(noMemoryLog)));
    EXPECT_FALSE(Render().aborted);
}

TEST_F(RenderBegin, TheSwitchIsReadAnewBeforeEachRender) {
    UseVRay().SetValue(189, 0, FALSE);
    WriteConfig("DisableVrayFrameBufferWarnings");
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), IsEmpty());
    std::filesystem::remove(File("config") / "veltrane.cfg");
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(noMemoryQuestion)));
    TakeLog();
}

TEST_F(RenderBegin, TheSamplersSwitchDoesntSilenceTheFrameBuffersBox) {
    UseVRay().SetValue(189, 0, FALSE);
    WriteConfig("DisableVrayProgressiveSamplerWarning");
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(noMemoryQuestion)));
    TakeLog();
}

TEST_F(RenderBegin, AQuietHostShowsNoFrameBufferBoxAndRendersOn) {
    UseVRay();
    Render().saveFile = FALSE;
    Host().settings.quiet = true;
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(noHostBufferLog)));
    EXPECT_FALSE(Render().aborted);
}

TEST_F(RenderBegin, ANameOfItsOwnThatIsMissingIsLoggedInAStill) {
    Set("matchRenderOutputFilename"_param, FALSE);
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(noFilenameLog)));
    EXPECT_FALSE(Render().aborted);
}

TEST_F(RenderBegin, ANameOfItsOwnThatIsMissingIsWarnedOfInASequence) {
    Set("matchRenderOutputFilename"_param, FALSE);
    for (const int timeType : {REND_TIMESEGMENT, REND_TIMERANGE, REND_TIMEPICKUP}) {
        Render().timeType = timeType;
        EXPECT_FALSE(Saves());
        EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(sequenceWarning)));
        EXPECT_THAT(TakeLog(), ElementsAre(Error(noFilenameLog)));
        EXPECT_FALSE(Render().aborted);
    }
    Host().settings.quiet = true;
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(noFilenameLog)));
}

TEST_F(RenderBegin, TheProgressiveSamplerIsWarnedOfAndSaved) {
    UseVRay();
    static_cast<host::HostRenderer&>(*Host().renderer)
        .properties.Set("imageSampler_type", host::ScriptInt(3));
    EXPECT_TRUE(Saves()) << "nothing asks for the G-Buffer";
    EXPECT_THAT(TakeBoxes(), IsEmpty());

    Set("createNodeIDLayer"_param, TRUE);
    EXPECT_TRUE(Saves());
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(samplerWarning)));
    EXPECT_THAT(TakeLog(), ElementsAre(Error(samplerLog)));

    WriteConfig("DisableVrayProgressiveSamplerWarning");
    EXPECT_TRUE(Saves());
    EXPECT_THAT(TakeBoxes(), IsEmpty());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(samplerLog)));

    std::filesystem::remove(File("config") / "veltrane.cfg");
    Host().settings.quiet = true;
    EXPECT_TRUE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(samplerLog)));
}

TEST_F(RenderBegin, OtherSamplersAndOtherRenderersAreNotWarnedOf) {
    Set("createNodeIDLayer"_param, TRUE);
    UseVRay();
    EXPECT_TRUE(Saves());
    UseRenderer(standardRenderer).properties.Set("imageSampler_type", host::ScriptInt(3));
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, CoronasMissingGBufferIsWarnedOfAndSaved) {
    UseRenderer(CORONA_CLASS_ID);
    ShowProgressWindow();
    Set("outputObjects"_param, TRUE);
    EXPECT_TRUE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(WarningWithDialog(coronaWarning)));
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(coronaWarning)));

    Host().settings.quiet = true;
    EXPECT_TRUE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(WarningWithDialog(coronaWarning)));
    EXPECT_THAT(TakeBoxes(), IsEmpty());

    Set("outputObjects"_param, FALSE);
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, ARenderOutputWithoutANameIsAskedAbout) {
    Render().output.SetName(MSTR());
    for (const int button : {IDYES, IDNO}) {
        answer = button;
        Render().aborted = false;
        EXPECT_FALSE(Saves());
        EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(noOutputNameQuestion)));
        EXPECT_THAT(TakeLog(), ElementsAre(Error(invalidNameLog)));
        EXPECT_EQ(Render().aborted, button == IDNO);
    }
    Host().settings.quiet = true;
    Render().aborted = false;
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(invalidNameLog)));
    EXPECT_FALSE(Render().aborted);
}

TEST_F(RenderBegin, ARenderOutputThatIsTheFolderOfTheScenesIsNoName) {
    Render().output.SetName(Text(folder.path));
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(noOutputNameQuestion)));
    EXPECT_THAT(TakeLog(), ElementsAre(Error(invalidNameLog)));
}

TEST_F(RenderBegin, ANameOfItsOwnNeedsNoRenderOutput) {
    SetFilename(File("frame.psd"));
    Render().output.SetName(MSTR());
    EXPECT_TRUE(Saves());
}

TEST_F(RenderBegin, ANameThatIsNoneIsToldAndStopsTheRender) {
    Render().output.SetName(Text(File("frame")));
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox("\"\" is not a valid filename.")));
    EXPECT_THAT(TakeLog(), ElementsAre(Error(invalidNameLog)));
    EXPECT_TRUE(Render().aborted);
}

TEST_F(RenderBegin, AnInvalidNameIsToldAsFarAsItGot) {
    const std::string name = (folder.path / std::string(300, 'x')).string() + ".psd";
    SetFilename(name);
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox("\"" + name + "\" is not a valid filename.")));
    EXPECT_THAT(TakeLog(), ElementsAre(Error(invalidNameLog)));
    EXPECT_TRUE(Render().aborted);
}

TEST_F(RenderBegin, AQuietHostsRenderGoesOnWithAnInvalidName) {
    Render().output.SetName(Text(File("frame")));
    Host().settings.quiet = true;
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(invalidNameLog)));
    EXPECT_FALSE(Render().aborted);
}

class Overwriting : public RenderBegin {
  protected:
    Overwriting() { WriteFile(File("frame.psd"), "old"); }

    // Leaves the file as it comes out.
    void RenderOnce() {
        const auto frame = Image(2, 2);
        RenderFrame(frame.get());
    }
    Box Question() {
        return QuestionBoxWithTick("Confirm overwriting:\n\n" + File("frame.psd").string() + " ?");
    }
};

TEST_F(Overwriting, IsAskedForAndYesSaves) {
    answer = IDYES;
    RenderOnce();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Question()));
    EXPECT_EQ(FileBytes(File("frame.psd")).substr(0, 4), "8BPS");
    RenderOnce();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Question())) << "each time";
}

TEST_F(Overwriting, NoLeavesTheFileAndStopsTheRenderWithoutALogLine) {
    answer = IDNO;
    RenderOnce();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Question()));
    EXPECT_THAT(TakeLog(), IsEmpty());
    EXPECT_EQ(FileBytes(File("frame.psd")), "old");
    EXPECT_TRUE(Render().aborted);
}

TEST_F(Overwriting, YesWithTheTickAsksNoMore) {
    answer = IDYES;
    tick = true;
    RenderOnce();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Question()));
    RenderOnce();
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(Overwriting, TheTickOfANoIsIgnored) {
    answer = IDNO;
    tick = true;
    RenderOnce();
    RenderOnce();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Question(), Question()));
}

TEST_F(Overwriting, AQuietHostOverwritesWithoutAsking) {
    Host().settings.quiet = true;
    RenderOnce();
    EXPECT_EQ(FileBytes(File("frame.psd")).substr(0, 4), "8BPS");
}

TEST_F(Overwriting, AFolderOfThatNameIsNoFile) {
    std::filesystem::remove(File("frame.psd"));
    std::filesystem::create_directory(File("frame.psd"));
    RenderOnce();
    const std::string text = "Could not open/create " + File("frame.psd").string() + ".";
    EXPECT_THAT(TakeLog(), ElementsAre(ErrorWithDialog(text)));
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(text)));
}

TEST_F(Overwriting, ASequenceIsAskedAboutOnceByTheNameOfItsFirstFrame) {
    std::filesystem::rename(File("frame.psd"), File("frame0003.psd"));
    WriteFile(File("frame0004.psd"), "old");
    Render().timeType = REND_TIMERANGE;
    answer = IDYES;
    time = 3 * GetTicksPerFrame();
    effect->RenderBegin(time, 0);
    const auto frame = Image(2, 2);
    RenderStartedFrame(frame.get());
    time = 4 * GetTicksPerFrame();
    RenderStartedFrame(frame.get());
    effect->RenderEnd(time);
    EXPECT_THAT(TakeBoxes(),
                ElementsAre(QuestionBoxWithTick("Confirm overwriting:\n\n" +
                                                File("frame0003.psd").string() + " ?")));
    EXPECT_EQ(FileBytes(File("frame0003.psd")).substr(0, 4), "8BPS");
    EXPECT_EQ(FileBytes(File("frame0004.psd")).substr(0, 4), "8BPS");
}

TEST_F(RenderBegin, WithoutTheBlockNothingIsSaved) {
    effect->DeleteReference(0);
    EXPECT_FALSE(Saves());
}

TEST_F(RenderBegin, WithoutMemoryNothingIsSavedAndTheLogTellsWhy) {
    effect::LibraryServices services = plugin::Services();
    services.readWarningSwitches = []() -> effect::WarningSwitches { throw std::bad_alloc(); };
    Host().effects.clear();
    effect = new effect::PSDOutput(static_cast<ClassDesc2&>(*LibClassDesc(0)), services);
    Host().effects.emplace_back(effect);
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error("Not enough memory! PSD file will not be saved!")));
    Host().effects.clear();
}

// The order of the checks: with everything wrong at once, only the first is told; mended one by
// one, the next comes to light.
TEST_F(RenderBegin, TheFirstCheckThatFailsEndsThem) {
    IParamBlock2& vray = UseVRay();
    static_cast<host::HostRenderer&>(*Host().renderer)
        .properties.Set("imageSampler_type", host::ScriptInt(3));
    vray.SetValue(189, 0, FALSE);
    Set("createNodeIDLayer"_param, TRUE);
    Set("matchRenderOutputFilename"_param, FALSE);
    Render().timeType = REND_TIMERANGE;
    Render().output.SetName(MSTR());
    Render().preview = true;
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), IsEmpty());

    Render().preview = false;
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(noMemoryLog)));
    EXPECT_THAT(TakeBoxes(), ElementsAre(YesNoBox(noMemoryQuestion)));

    vray.SetValue(189, 0, TRUE);
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(noFilenameLog)));
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(sequenceWarning)));

    Set("matchRenderOutputFilename"_param, TRUE);
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(samplerLog), Error(invalidNameLog)));
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(samplerWarning), YesNoBox(noOutputNameQuestion)));

    Render().output.SetName(Text(File("noExtension")));
    EXPECT_FALSE(Saves());
    EXPECT_THAT(TakeLog(), ElementsAre(Error(samplerLog), Error(invalidNameLog)));
    EXPECT_THAT(TakeBoxes(),
                ElementsAre(OkBox(samplerWarning), OkBox("\"\" is not a valid filename.")));
}

}  // namespace
