#include "host/render_loop.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <exception>
#include <iterator>

#include <notify.h>
#include <rendererclasses.h>

#include "host/application.h"
#include "host/bitmap_output.h"

namespace host {
namespace {

int TimeTypeOf(const std::vector<int>& frames) {
    if (frames.size() == 1) {
        return REND_TIMESINGLE;
    }
    const bool gap = std::adjacent_find(frames.begin(), frames.end(), [](int left, int right) {
                         return right - left != 1;
                     }) != frames.end();
    return gap ? REND_TIMEPICKUP : REND_TIMERANGE;
}

bool StopAsked(CheckAbortCallback* callback) {
    return App().settings.render.aborted || (callback && callback->Check());
}

// The entries of the log from `first` on.
std::vector<LogRecord> MessagesSince(std::size_t first) {
    const auto& entries = App().log.Entries();
    return {entries.begin() + static_cast<std::ptrdiff_t>(std::min(first, entries.size())),
            entries.end()};
}

Owned<ImageBitmap> Provide(const RenderJob& job, int frame, std::string& error) {
    try {
        Owned<ImageBitmap> bitmap = job.provider(frame, error);
        if (!bitmap && error.empty()) {
            error = "the frame has no image";
        }
        return bitmap;
    } catch (const std::exception& exception) {
        error = exception.what();
        return nullptr;
    }
}

// Pixels of the frame for a length of 1 (see RenderGlobalContext::xscale); 0 for a view of no
// sense.
float ScaleOf(const CameraView& view, int devWidth) {
    const double shown = view.projection == PROJ_PARALLEL
                             ? static_cast<double>(view.width)
                             : 2.0 * std::tan(static_cast<double>(view.fieldOfView) / 2.0);
    const auto scale = static_cast<float>(devWidth / shown);
    return shown > 0.0 && std::isfinite(scale) ? scale : 0.0F;
}

void TellView(const CameraView& view, RenderGlobalContext& context) {
    context.projType = view.projection;
    context.camToWorld = view.camToWorld;
    context.xscale = ScaleOf(view, context.devWidth);
    context.nearRange = view.nearRange;
    context.farRange = view.farRange;
}

// One effect during a frame.
struct Consumer {
    Effect* effect;
    bool supports;
};

class RenderRun {
  public:
    explicit RenderRun(const RenderJob& job) : job_(job) {}

    RenderReport Run() {
        for (const int frame : job_.frames) {
            report_.frames.push_back({frame, FrameOutcome::NotReached, {}, {}});
        }
        if (job_.frames.empty()) {
            return std::move(report_);
        }
        Settings& settings = App().settings;
        settings.render.aborted = false;
        settings.render.timeType = job_.timeType.value_or(TimeTypeOf(job_.frames));
        const TimeValue start = TimeOf(job_.frames.front());
        settings.time = start;

        const std::size_t logStart = App().log.Entries().size();
        Broadcast(NOTIFY_PRE_RENDER);
        selfDriven_ = App().renderer && App().renderer->ClassID() == CORONA_CLASS_ID;
        for (const auto& effect : App().effects) {
            if (!selfDriven_ && effect->Active(start)) {
                begun_.push_back(effect.get());
                effect->RenderBegin(start, job_.flags);
            }
        }
        report_.beginMessages = MessagesSince(logStart);

        for (FrameReport& frame : report_.frames) {
            if (StopAsked(job_.callback)) {
                report_.aborted = true;
                break;
            }
            RenderFrame(frame);
        }
        for (Effect* effect : begun_) {
            effect->RenderEnd(settings.time);
        }
        Broadcast(NOTIFY_POST_RENDER);
        return std::move(report_);
    }

  private:
    // Stops at the ends of time.
    static TimeValue TimeOf(int frame) {
        return static_cast<TimeValue>(std::clamp<std::int64_t>(
            std::int64_t{frame} * GetTicksPerFrame(), TIME_NegInfinity, TIME_PosInfinity));
    }

    void RenderFrame(FrameReport& report) {
        const RenderSettings& settings = App().settings.render;
        const std::size_t logStart = App().log.Entries().size();
        App().settings.time = TimeOf(report.frame);

        RenderGlobalContext context;
        context.renderer = App().renderer.get();
        context.devWidth = settings.width;
        context.devHeight = settings.height;
        context.time = App().settings.time;
        context.elementMgr = GetCOREInterface()->GetCurRenderElementMgr();
        App().scene.AssignRenderIDs();
        Broadcast(NOTIFY_PRE_RENDERFRAME, &context);

        const Owned<ImageBitmap> bitmap = Provide(job_, report.frame, report.error);
        // The provider may have brought new nodes.
        App().scene.AssignRenderIDs();
        if (bitmap) {
            context.devWidth = bitmap->Storage()->Width();
            context.devHeight = bitmap->Storage()->Height();
            context.devAspect = bitmap->Storage()->Aspect();
            if (settings.view) {
                TellView(*settings.view, context);
            }
            GiveToEffects(*bitmap, context);
            if (settings.saveFile) {
                WriteRenderOutput(*bitmap, report.frame);
            }
        }
        report.outcome = bitmap ? FrameOutcome::Rendered : FrameOutcome::Failed;
        report.messages = MessagesSince(logStart);
    }

    void GiveToEffects(ImageBitmap& bitmap, RenderGlobalContext& context) {
        std::vector<Consumer> consumers;
        for (const auto& effect : App().effects) {
            auto* asker = dynamic_cast<Effect8*>(effect.get());
            consumers.push_back({effect.get(), !asker || asker->SupportsBitmap(bitmap)});
        }
        const bool applies = !selfDriven_ && App().settings.render.effects;
        for (const Consumer& consumer : consumers) {
            if (applies && consumer.supports && consumer.effect->Active(context.time)) {
                consumer.effect->Apply(context.time, &bitmap, &context, job_.callback);
            }
        }
        Broadcast(NOTIFY_POST_RENDERFRAME, &context);
    }

    const RenderJob& job_;
    RenderReport report_;
    std::vector<Effect*> begun_;
    // The effects begin, apply and end on the notifications.
    bool selfDriven_ = false;
};

}  // namespace

DWORD RequiredGBufferChannels(TimeValue t) {
    DWORD channels = 0;
    for (const auto& effect : App().effects) {
        if (App().settings.render.effects && effect->Active(t)) {
            channels |= effect->GBufferChannelsRequired(t);
        }
    }
    return channels;
}

RenderReport RenderFrames(const RenderJob& job) {
    return RenderRun(job).Run();
}

}  // namespace host
