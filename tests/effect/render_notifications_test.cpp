#include "effect/renderer_kinds.h"
#include "host/render_loop.h"
#include "tests/effect/effect_fixture.h"
#include "tests/host/window_stage.h"

namespace {

constexpr Class_ID scanlineRenderer{0x00000001, 0x00000000};

class RenderNotifications : public EffectTest {
  protected:
    void UseVRay(bool frameBufferOn) {
        UseRenderer(VRAY_CLASS_ID).GetParamBlock(15)->SetValue(170, 0, frameBufferOn);
    }
};

TEST_F(RenderNotifications, RenderToFileIsTurnedOnForAVRayFrameBufferAndOffAgain) {
    UseVRay(true);
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(Render().saveFile, TRUE);
    host::Broadcast(NOTIFY_POST_RENDER);
    EXPECT_EQ(Render().saveFile, FALSE);
}

TEST_F(RenderNotifications, RenderToFileThatTheUserTurnedOnStaysOn) {
    UseVRay(true);
    Render().saveFile = TRUE;
    host::Broadcast(NOTIFY_PRE_RENDER);
    host::Broadcast(NOTIFY_POST_RENDER);
    EXPECT_EQ(Render().saveFile, TRUE);
}

TEST_F(RenderNotifications, RenderToFileIsTurnedOffOnlyOnce) {
    UseVRay(true);
    host::Broadcast(NOTIFY_PRE_RENDER);
    host::Broadcast(NOTIFY_POST_RENDER);
    Render().saveFile = TRUE;
    host::Broadcast(NOTIFY_POST_RENDER);
    EXPECT_EQ(Render().saveFile, TRUE) << "it is the user's own by now";
}

TEST_F(RenderNotifications, RenderToFileThatIsNotExactly1IsNotTurnedOff) {
    UseVRay(true);
    host::Broadcast(NOTIFY_PRE_RENDER);
    Render().saveFile = 2;
    host::Broadcast(NOTIFY_POST_RENDER);
    EXPECT_EQ(Render().saveFile, 2);
}

TEST_F(RenderNotifications, RenderToFileIsLeftAloneByAnInactiveEffect) {
    UseVRay(true);
    effect->SetAFlag(A_ATMOS_DISABLED);
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(Render().saveFile, FALSE);
}

TEST_F(RenderNotifications, RenderToFileIsLeftAloneWithoutAVRayFrameBuffer) {
    UseVRay(false);
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(Render().saveFile, FALSE);
    UseRenderer(scanlineRenderer);
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(Render().saveFile, FALSE);
    Host().renderer.reset();
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(Render().saveFile, FALSE);
}

TEST_F(RenderNotifications, RenderToFileIsLeftAloneWithoutAFileName) {
    UseVRay(true);
    Render().output.SetName(MSTR());
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(Render().saveFile, FALSE);
}

TEST_F(RenderNotifications, RenderToFileIsLeftAloneByAnEffectOutsideTheHostsList) {
    UseVRay(true);
    host::Owned<Effect> apart = std::move(Host().effects.back());
    Host().effects.clear();
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(Render().saveFile, FALSE);
    Host().effects.push_back(std::move(apart));
    host::Broadcast(NOTIFY_PRE_RENDER);
    EXPECT_EQ(Render().saveFile, TRUE);
}

TEST_F(RenderNotifications, AVRayFrameBufferIsSavedThroughTheWholeRenderOfTheHost) {
    UseVRay(true);
    host::RenderJob job;
    job.frames = {0};
    job.provider = [](int, std::string&) { return Image(2, 2); };
    host::RenderFrames(job);
    EXPECT_TRUE(Exists("frame.psd"));
    EXPECT_EQ(Render().saveFile, FALSE);
}

TEST_F(RenderNotifications, ASequenceOfTheHostIsSavedUnderItsNumbers) {
    UseRenderer(scanlineRenderer);
    host::RenderJob job;
    job.frames = {7, 8, 9};
    job.provider = [](int, std::string&) { return Image(2, 2); };
    host::RenderFrames(job);
    EXPECT_FALSE(Exists("frame0006.psd"));
    EXPECT_TRUE(Exists("frame0007.psd"));
    EXPECT_TRUE(Exists("frame0008.psd"));
    EXPECT_TRUE(Exists("frame0009.psd"));
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(RenderNotifications, AFrameWithoutItsNotificationIsNotSaved) {
    UseRenderer(scanlineRenderer);
    const auto frame = Image(2, 2);
    effect->RenderBegin(0, 0);
    context.renderer = Host().renderer.get();
    effect->Apply(0, frame.get(), &context, nullptr);
    EXPECT_FALSE(Exists("frame.psd"));
    host::Broadcast(NOTIFY_PRE_RENDERFRAME, &context);
    effect->Apply(0, frame.get(), &context, nullptr);
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(RenderNotifications, AfterTheRendersEndNothingIsSaved) {
    UseRenderer(scanlineRenderer);
    const auto frame = Image(2, 2);
    effect->RenderBegin(0, 0);
    effect->RenderEnd(0);
    RenderStartedFrame(frame.get());
    EXPECT_FALSE(Exists("frame.psd")) << "frames are no longer listened to";
}

TEST_F(RenderNotifications, RenderEndReturns0) {
    effect->RenderBegin(0, 0);
    EXPECT_EQ(effect->RenderEnd(0), 0);
}

TEST_F(RenderNotifications, RendererClassCIsNeverSaved) {
    UseRenderer(RENDERER_C_CLASS_ID);
    const auto frame = Image(2, 2);
    effect->RenderBegin(0, 0);
    for (int i = 0; i < 2; ++i)
        RenderStartedFrame(frame.get());
    effect->RenderEnd(0);
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(RenderNotifications, RendererClassCIsNotSavedByTheHostsOwnLoopEither) {
    UseRenderer(RENDERER_C_CLASS_ID);
    host::RenderJob job;
    job.frames = {0};
    job.provider = [](int, std::string&) { return Image(2, 2); };
    host::RenderFrames(job);
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(RenderNotifications, RendererClassCCountsByTheFramesContext) {
    UseRenderer(scanlineRenderer);
    const host::Owned<host::HostRenderer> other(new host::HostRenderer(RENDERER_C_CLASS_ID));
    frameRenderer = other.get();
    const auto frame = Image(2, 2);
    RenderFrame(frame.get());
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(RenderNotifications, EveryBitmapIsSupported) {
    EXPECT_TRUE(effect->SupportsBitmap(*Image(1, 1)));
    host::Broadcast(NOTIFY_POST_RENDER);
}

TEST_F(RenderNotifications, AnEffectThatIsGoneListensToNothing) {
    UseRenderer(scanlineRenderer);
    effect->RenderBegin(0, 0);
    Host().effects.clear();
    for (const int code :
         {NOTIFY_PRE_RENDER, NOTIFY_PRE_RENDERFRAME, NOTIFY_POST_RENDERFRAME, NOTIFY_POST_RENDER}) {
        host::Broadcast(code, &context);
    }
}

class Corona : public RenderNotifications {
  protected:
    WindowStage stage;

    Corona() {
        UseRenderer(CORONA_CLASS_ID);
        Host().settings.mainWindow = stage.Add({_M("Main"), _M(""), nullptr, nullptr});
        window = stage.Add({_M("#32770"), _M("Rendering"), nullptr, Host().settings.mainWindow});
        stage.Add({_M("Button"), _M("Cancel"), window, nullptr, 2});
        stage.Add({_M("msctls_progress32"), _M(""), window, nullptr, 1345});
        stage.Add({_M("msctls_progress32"), _M(""), window, nullptr, 1346});
        text = stage.Add({_M("Static"), _M("Rendering..."), window, nullptr, 1348});
        stage.Add({_M("RollupWindow"), _M(""), window, nullptr, 1280});
    }

    // All that the host tells of a render with Corona: notifications only.
    void RenderByNotifications() {
        host::Broadcast(NOTIFY_PRE_RENDER);
        context.renderer = frameRenderer ? frameRenderer : Host().renderer.get();
        context.time = time;
        host::Broadcast(NOTIFY_PRE_RENDERFRAME, &context);
        if (supported) effect->SupportsBitmap(*supported);
        if (duringFrame) duringFrame();
        host::Broadcast(NOTIFY_POST_RENDERFRAME, &context);
        host::Broadcast(NOTIFY_POST_RENDER);
    }

    HWND window;
    HWND text;
    host::Owned<host::ImageBitmap> supported = Image(2, 2);
    std::function<void()> duringFrame;
};

TEST_F(Corona, ItsRenderIsSavedFromNotificationsAlone) {
    RenderByNotifications();
    EXPECT_TRUE(Exists("frame.psd"));
    EXPECT_EQ(stage.TextOf(text), "veltrane") << "the progress window shows who works";
}

TEST_F(Corona, ItsRenderBeginsAtTheHostsTimeAndIsSavedAtTheFrames) {
    Render().timeType = REND_TIMESEGMENT;
    WriteFile(File("frame0002.psd"), "old");
    Host().settings.time = 2 * GetTicksPerFrame();
    time = 5 * GetTicksPerFrame();
    answer = IDYES;
    RenderByNotifications();
    EXPECT_THAT(TakeBoxes(),
                testing::ElementsAre(QuestionBoxWithTick("Confirm overwriting:\n\n" +
                                                         File("frame0002.psd").string() + " ?")));
    EXPECT_EQ(FileBytes(File("frame0002.psd")), "old");
    EXPECT_TRUE(Exists("frame0005.psd"));
}

TEST_F(Corona, ItsRenderIsSavedThroughTheHostsLoopOnce) {
    int frames = 0;
    host::RenderJob job;
    job.frames = {4};
    job.provider = [&frames](int, std::string&) {
        ++frames;
        return Image(2, 2);
    };
    host::RenderFrames(job);
    EXPECT_EQ(frames, 1);
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(Corona, AFrameWithoutItsBitmapIsNotSaved) {
    supported.reset();
    RenderByNotifications();
    EXPECT_FALSE(Exists("frame.psd"));
    EXPECT_EQ(stage.TextOf(text), "veltrane") << "the text comes first";
}

TEST_F(Corona, TheBitmapOfARenderIsForgottenAtItsEnd) {
    RenderByNotifications();
    std::filesystem::remove(File("frame.psd"));
    supported.reset();
    RenderByNotifications();
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(Corona, AFrameIsNotSavedWhenTheHostRunsNoEffects) {
    Render().effects = false;
    RenderByNotifications();
    EXPECT_FALSE(Exists("frame.psd"));
    EXPECT_EQ(stage.TextOf(text), "Rendering...");
}

TEST_F(Corona, AFrameIsNotSavedWhenTheEffectWasSwitchedOffMeanwhile) {
    duringFrame = [this] { effect->SetAFlag(A_ATMOS_DISABLED); };
    RenderByNotifications();
    EXPECT_FALSE(Exists("frame.psd"));
    EXPECT_EQ(stage.TextOf(text), "Rendering...");
}

TEST_F(Corona, AnAbortedFrameIsNotSaved) {
    duringFrame = [] { Render().aborted = true; };
    RenderByNotifications();
    EXPECT_FALSE(Exists("frame.psd"));
    EXPECT_EQ(stage.TextOf(text), "Rendering...");
}

TEST_F(Corona, AFrameOfAnotherRenderersContextIsNotSavedFromTheNotification) {
    const host::Owned<host::HostRenderer> other(new host::HostRenderer(scanlineRenderer));
    frameRenderer = other.get();
    RenderByNotifications();
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(Corona, OtherRenderersAreNotSavedFromTheNotification) {
    UseRenderer(scanlineRenderer);
    effect->RenderBegin(0, 0);
    RenderByNotifications();
    effect->RenderEnd(0);
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(Corona, AFrameIsSavedWithoutAProgressWindowWhenNobodyNeedsOne) {
    stage.Remove(window);
    Host().settings.quiet = true;
    RenderByNotifications();
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(Corona, AFrameOfAProgressWindowThatClosedMeanwhileIsSaved) {
    duringFrame = [this] { stage.Remove(window); };
    RenderByNotifications();
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(Corona, AnInactiveEffectListensToFramesAllTheSame) {
    effect->SetAFlag(A_ATMOS_DISABLED);
    duringFrame = [this] { effect->ClearAFlag(A_ATMOS_DISABLED); };
    RenderByNotifications();
    EXPECT_EQ(stage.TextOf(text), "veltrane");
    EXPECT_FALSE(Exists("frame.psd")) << "it was inactive when the render began";
}

TEST_F(Corona, AfterItsRenderFramesAreNoLongerListenedTo) {
    RenderByNotifications();
    std::filesystem::remove(File("frame.psd"));
    context.renderer = Host().renderer.get();
    host::Broadcast(NOTIFY_PRE_RENDERFRAME, &context);
    effect->SupportsBitmap(*supported);
    effect->Apply(0, supported.get(), &context, nullptr);
    host::Broadcast(NOTIFY_POST_RENDERFRAME, &context);
    host::Broadcast(NOTIFY_POST_RENDER);
    EXPECT_FALSE(Exists("frame.psd"));
}

}  // namespace
