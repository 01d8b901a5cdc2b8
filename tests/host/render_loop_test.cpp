#include "host/render_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <maxapi.h>

#include <limits>
#include <stdexcept>

#include "host/application.h"
#include "host/host_renderer.h"
#include "tests/host/recording_format.h"
#include "tests/host/sample_effect.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

host::Owned<host::ImageBitmap> Image(int width, int height) {
    return host::ImageBitmap::FromFloat(
        {width, height, true, 2.0F},
        std::vector<float>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4));
}

class Callback : public CheckAbortCallback {
  public:
    BOOL Check() override { return stop; }
    BOOL Progress(int, int) override { return stop; }
    void SetTitle(const MCHAR*) override {}
    bool stop = false;
};

class RenderLoop : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        for (const int code : {NOTIFY_PRE_RENDER, NOTIFY_POST_RENDER, NOTIFY_PRE_RENDERFRAME,
                               NOTIFY_POST_RENDERFRAME}) {
            RegisterNotification(Hear, this, code);
        }
        effect = new SampleEffect(journal, "a");
        host::App().effects.emplace_back(effect);
        job.frames = {3};
        job.provider = [this](int frame, std::string&) {
            journal.push_back("provide " + std::to_string(frame));
            return Image(4, 2);
        };
    }
    void TearDown() override { host::ResetApplication(); }

    static void Hear(void* param, NotifyInfo* info) {
        auto* self = static_cast<RenderLoop*>(param);
        const char* names[] = {"PRE_RENDER", "POST_RENDER", "PRE_FRAME", "POST_FRAME"};
        self->journal.emplace_back(names[info->intcode - NOTIFY_PRE_RENDER]);
        if (info->callParam) {
            self->context = *static_cast<RenderGlobalContext*>(info->callParam);
        }
    }

    Journal journal;
    SampleEffect* effect = nullptr;
    host::RenderJob job;
    RenderGlobalContext context;
};

TEST_F(RenderLoop, OneFrameRunsThroughAllStations) {
    job.flags = 2;
    const host::RenderReport report = host::RenderFrames(job);
    EXPECT_THAT(journal, ElementsAre("PRE_RENDER", "a begin 480 flags 2", "PRE_FRAME", "provide 3",
                                     "a supports 4", "a apply 480 4x2", "POST_FRAME", "a end 480",
                                     "POST_RENDER"));
    ASSERT_EQ(report.frames.size(), 1U);
    EXPECT_EQ(report.frames[0].frame, 3);
    EXPECT_EQ(report.frames[0].outcome, host::FrameOutcome::Rendered);
    EXPECT_FALSE(report.aborted);
    EXPECT_EQ(host::App().settings.time, 480);
}

TEST_F(RenderLoop, TheContextTellsTheFrame) {
    host::App().renderer.reset(new host::HostRenderer(VRAY_CLASS_ID));
    host::RenderFrames(job);
    EXPECT_EQ(context.renderer, host::App().renderer.get());
    EXPECT_EQ(context.devWidth, 4);
    EXPECT_EQ(context.devHeight, 2);
    EXPECT_EQ(context.devAspect, 2.0F);
    EXPECT_EQ(context.time, 480);
    EXPECT_FALSE(context.fieldRender);
}

TEST_F(RenderLoop, TheContextTellsHowTheFrameIsSeen) {
    host::CameraView view;
    view.camToWorld.SetRow(3, {1.0F, 2.0F, 3.0F});
    view.fieldOfView = 1.5707964F;
    view.nearRange = 5.0F;
    view.farRange = 50.0F;
    host::App().settings.render.view = view;
    // The frame's own size counts, not that of the settings.
    host::App().settings.render.width = 100;
    host::RenderFrames(job);
    EXPECT_EQ(context.projType, PROJ_PERSPECTIVE);
    EXPECT_EQ(context.camToWorld.GetTrans(), Point3(1.0F, 2.0F, 3.0F));
    EXPECT_NEAR(context.xscale, 2.0F, 1e-6F) << "x / z of 1 is half the width of 4 pixels away";
    EXPECT_EQ(context.nearRange, 5.0F);
    EXPECT_EQ(context.farRange, 50.0F);

    view.projection = PROJ_PARALLEL;
    view.width = 8.0F;
    host::App().settings.render.view = view;
    host::RenderFrames(job);
    EXPECT_EQ(context.projType, PROJ_PARALLEL);
    EXPECT_EQ(context.xscale, 0.5F) << "4 pixels for a width of 8";
}

TEST_F(RenderLoop, WithoutAViewTheContextKnowsNone) {
    context.xscale = 9.0F;
    host::RenderFrames(job);
    EXPECT_EQ(context.projType, PROJ_PERSPECTIVE);
    EXPECT_EQ(context.camToWorld.GetRow(0), Point3(1.0F, 0.0F, 0.0F));
    EXPECT_EQ(context.camToWorld.GetTrans(), Point3());
    EXPECT_EQ(context.xscale, 0.0F);
    EXPECT_EQ(context.nearRange, 0.0F);
    EXPECT_EQ(context.farRange, 0.0F);
}

TEST_F(RenderLoop, AViewWithoutAMeasureHasNoScale) {
    host::CameraView view;
    view.width = 8.0F;
    constexpr float NONE = std::numeric_limits<float>::quiet_NaN();
    // Not known, turned round, more than all that lies ahead, none at all.
    for (const float fieldOfView : {0.0F, -1.0F, 4.0F, NONE}) {
        view.fieldOfView = fieldOfView;
        host::App().settings.render.view = view;
        host::RenderFrames(job);
        EXPECT_EQ(context.xscale, 0.0F) << fieldOfView;
    }
    view.projection = PROJ_PARALLEL;
    view.fieldOfView = 1.0F;
    for (const float width : {0.0F, -1.0F, NONE, std::numeric_limits<float>::denorm_min()}) {
        view.width = width;
        host::App().settings.render.view = view;
        host::RenderFrames(job);
        EXPECT_EQ(context.xscale, 0.0F) << width;
    }
}

TEST_F(RenderLoop, TheProviderMaySetTheViewOfItsFrame) {
    job.frames = {1, 2};
    job.provider = [](int frame, std::string&) {
        host::CameraView view;
        view.nearRange = static_cast<float>(frame);
        host::App().settings.render.view = view;
        return Image(4, 2);
    };
    std::vector<float> seen;
    effect->onApply = [&](RenderGlobalContext* gc, CheckAbortCallback*) {
        seen.push_back(gc->nearRange);
    };
    host::RenderFrames(job);
    EXPECT_THAT(seen, ElementsAre(1.0F, 2.0F));
}

TEST_F(RenderLoop, TheTimeTypeFollowsTheFramesUnlessItIsGiven) {
    host::RenderFrames(job);
    EXPECT_EQ(GetCOREInterface()->GetRendTimeType(), REND_TIMESINGLE);
    job.frames = {3, 4, 5};
    host::RenderFrames(job);
    EXPECT_EQ(GetCOREInterface()->GetRendTimeType(), REND_TIMERANGE);
    job.frames = {3, 5};
    host::RenderFrames(job);
    EXPECT_EQ(GetCOREInterface()->GetRendTimeType(), REND_TIMEPICKUP);
    job.frames = {3};
    job.timeType = REND_TIMERANGE;
    host::RenderFrames(job);
    EXPECT_EQ(GetCOREInterface()->GetRendTimeType(), REND_TIMERANGE);
}

TEST_F(RenderLoop, AFailedFrameIsReportedAndTheOthersGoOn) {
    job.frames = {1, 2, 3, 4};
    job.provider = [](int frame, std::string& error) -> host::Owned<host::ImageBitmap> {
        if (frame == 2) {
            error = "no such file";
            return nullptr;
        }
        if (frame == 3) {
            throw std::runtime_error("broken");
        }
        return Image(4, 2);
    };
    const host::RenderReport report = host::RenderFrames(job);
    ASSERT_EQ(report.frames.size(), 4U);
    EXPECT_EQ(report.frames[0].outcome, host::FrameOutcome::Rendered);
    EXPECT_EQ(report.frames[1].outcome, host::FrameOutcome::Failed);
    EXPECT_EQ(report.frames[1].error, "no such file");
    EXPECT_EQ(report.frames[2].outcome, host::FrameOutcome::Failed);
    EXPECT_EQ(report.frames[2].error, "broken");
    EXPECT_EQ(report.frames[3].outcome, host::FrameOutcome::Rendered);
    EXPECT_THAT(journal, ElementsAre("PRE_RENDER", "a begin 160 flags 0", "PRE_FRAME",
                                     "a supports 4", "a apply 160 4x2", "POST_FRAME", "PRE_FRAME",
                                     "PRE_FRAME", "PRE_FRAME", "a supports 4", "a apply 640 4x2",
                                     "POST_FRAME", "a end 640", "POST_RENDER"));
}

TEST_F(RenderLoop, AProviderThatSaysNothingStillGivesAReason) {
    job.provider = [](int, std::string&) { return host::Owned<host::ImageBitmap>(); };
    EXPECT_EQ(host::RenderFrames(job).frames[0].error, "the frame has no image");
}

TEST_F(RenderLoop, AnEffectThatIsOffIsLeftAlone) {
    effect->SetAFlag(A_ATMOS_DISABLED);
    host::RenderFrames(job);
    EXPECT_THAT(journal, ElementsAre("PRE_RENDER", "PRE_FRAME", "provide 3", "a supports 4",
                                     "POST_FRAME", "POST_RENDER"));
}

TEST_F(RenderLoop, WithEffectsSwitchedOffNoneIsApplied) {
    host::App().settings.render.effects = false;
    host::RenderFrames(job);
    EXPECT_THAT(journal, testing::Not(testing::Contains("a apply 480 4x2")));
    EXPECT_THAT(journal, testing::Contains("a end 480"));
}

TEST_F(RenderLoop, ABitmapThatTheEffectDoesNotSupportIsNotApplied) {
    effect->supports = false;
    host::RenderFrames(job);
    EXPECT_THAT(journal, testing::Not(testing::Contains("a apply 480 4x2")));
}

TEST_F(RenderLoop, WithCoronaTheEffectIsLeftToItsNotifications) {
    host::App().renderer.reset(new host::HostRenderer(CORONA_CLASS_ID));
    host::RenderFrames(job);
    EXPECT_THAT(journal, ElementsAre("PRE_RENDER", "PRE_FRAME", "provide 3", "a supports 4",
                                     "POST_FRAME", "POST_RENDER"));
}

TEST_F(RenderLoop, AnAbortStopsBeforeTheNextFrameAndStillEnds) {
    job.frames = {1, 2, 3};
    effect->onApply = [](RenderGlobalContext*, CheckAbortCallback*) {
        GetCOREInterface()->AbortRender();
    };
    const host::RenderReport report = host::RenderFrames(job);
    EXPECT_TRUE(report.aborted);
    EXPECT_EQ(report.frames[0].outcome, host::FrameOutcome::Rendered);
    EXPECT_EQ(report.frames[1].outcome, host::FrameOutcome::NotReached);
    EXPECT_EQ(report.frames[2].outcome, host::FrameOutcome::NotReached);
    EXPECT_EQ(journal.back(), "POST_RENDER");
    EXPECT_EQ(journal[journal.size() - 2], "a end 160");
}

TEST_F(RenderLoop, AnAbortAtTheBeginningRendersNothing) {
    effect->onBegin = [] { GetCOREInterface()->AbortRender(); };
    const host::RenderReport report = host::RenderFrames(job);
    EXPECT_TRUE(report.aborted);
    EXPECT_EQ(report.frames[0].outcome, host::FrameOutcome::NotReached);
    EXPECT_THAT(journal,
                ElementsAre("PRE_RENDER", "a begin 480 flags 0", "a end 480", "POST_RENDER"));
}

TEST_F(RenderLoop, AnAbortOfTheRenderBeforeDoesNotLast) {
    GetCOREInterface()->AbortRender();
    EXPECT_FALSE(host::RenderFrames(job).aborted);
}

TEST_F(RenderLoop, TheCallbackStopsTheRenderAndIsHandedToTheEffect) {
    Callback callback;
    job.frames = {1, 2};
    job.callback = &callback;
    effect->onApply = [&](RenderGlobalContext*, CheckAbortCallback* given) {
        EXPECT_EQ(given, &callback);
        callback.stop = true;
    };
    const host::RenderReport report = host::RenderFrames(job);
    EXPECT_TRUE(report.aborted);
    EXPECT_EQ(report.frames[1].outcome, host::FrameOutcome::NotReached);
}

TEST_F(RenderLoop, WhatIsLoggedIsReportedWithItsFrame) {
    job.frames = {1, 2};
    effect->onBegin = [] { host::App().log.LogEntry(SYSLOG_WARN, NO_DIALOG, _M(""), _M("begin")); };
    effect->onApply = [](RenderGlobalContext* gc, CheckAbortCallback*) {
        host::App().log.LogEntry(SYSLOG_ERROR, NO_DIALOG, _M(""), _M("time %d"), gc->time);
    };
    const host::RenderReport report = host::RenderFrames(job);
    ASSERT_EQ(report.beginMessages.size(), 1U);
    EXPECT_EQ(report.beginMessages[0].text, MSTR(_M("begin")));
    ASSERT_EQ(report.frames[1].messages.size(), 1U);
    EXPECT_EQ(report.frames[1].messages[0].text, MSTR(_M("time 320")));
    EXPECT_EQ(report.frames[1].messages[0].type, SYSLOG_ERROR);
}

TEST_F(RenderLoop, TheOutputOfEachFrameIsWrittenWhenItIsToBeSaved) {
    RecordingFormatDesc desc;
    host::App().classes.Add(&desc);
    host::App().settings.render.output.SetName(_M("/out/a.rec"));
    job.frames = {3, 4};
    host::RenderFrames(job);
    EXPECT_THAT(desc.record.calls, IsEmpty());
    host::App().settings.render.saveFile = TRUE;
    host::RenderFrames(job);
    EXPECT_THAT(desc.record.calls,
                ElementsAre("open /out/a0003.rec", "write 3 of width 4", "close 1", "gone",
                            "open /out/a0004.rec", "write 4 of width 4", "close 1", "gone"));
    desc.record.calls.clear();
    job.provider = [](int, std::string&) { return nullptr; };
    host::RenderFrames(job);
    EXPECT_THAT(desc.record.calls, IsEmpty()) << "nothing was rendered";
}

TEST_F(RenderLoop, WithoutFramesNothingHappens) {
    job.frames.clear();
    EXPECT_TRUE(host::RenderFrames(job).frames.empty());
    EXPECT_THAT(journal, IsEmpty());
}

TEST_F(RenderLoop, AFrameBeyondTheEndOfTimeIsAtTheEndOfTime) {
    job.frames = {std::numeric_limits<int>::max()};
    host::RenderFrames(job);
    EXPECT_EQ(context.time, TIME_PosInfinity);
}

TEST_F(RenderLoop, TheContextHasTheCurrentRenderElements) {
    host::App().settings.render.current = RS_Draft;
    host::RenderFrames(job);
    EXPECT_EQ(context.GetRenderElementMgr(), &host::App().elements[RS_Draft]);
}

TEST_F(RenderLoop, NodesHaveTheirRenderIdsBeforeTheProviderAndTheEffects) {
    host::Node& first = host::App().scene.AddNode(_M("first"));
    host::Node* brought = nullptr;
    job.provider = [&](int frame, std::string&) {
        EXPECT_EQ(first.GetRenderID(), 0);
        if (frame == 4) {
            brought = &host::App().scene.AddNode(_M("brought"));
        }
        return Image(4, 2);
    };
    effect->onApply = [&](RenderGlobalContext*, CheckAbortCallback*) {
        EXPECT_EQ(first.GetRenderID(), 0);
        if (brought) {
            EXPECT_EQ(brought->GetRenderID(), 1);
        }
    };
    job.frames = {3, 4, 5};
    host::RenderFrames(job);
    EXPECT_TRUE(brought);
}

TEST_F(RenderLoop, TheRequiredChannelsAreThoseOfAllActiveEffects) {
    class Reader : public SampleEffect {
      public:
        Reader(Journal& journal, DWORD channels)
            : SampleEffect(journal, "r"), channels_(channels) {}
        DWORD GBufferChannelsRequired(TimeValue t) override { return t == 160 ? channels_ : 0; }

      private:
        DWORD channels_;
    };
    EXPECT_EQ(host::RequiredGBufferChannels(160), 0U);
    auto* depth = new Reader(journal, BMM_CHAN_Z);
    host::App().effects.emplace_back(depth);
    host::App().effects.emplace_back(new Reader(journal, BMM_CHAN_MTL_ID));
    EXPECT_EQ(host::RequiredGBufferChannels(160), BMM_CHAN_Z | BMM_CHAN_MTL_ID);
    EXPECT_EQ(host::RequiredGBufferChannels(0), 0U);
    depth->SetAFlag(A_ATMOS_DISABLED);
    EXPECT_EQ(host::RequiredGBufferChannels(160), BMM_CHAN_MTL_ID);
    host::App().settings.render.effects = false;
    EXPECT_EQ(host::RequiredGBufferChannels(160), 0U);
}

}  // namespace
