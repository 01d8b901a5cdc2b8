// Renders frames as the application does, with the pixels coming from a provider in place of a
// renderer.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <render.h>

#include "host/image_bitmap.h"
#include "host/log.h"

namespace host {

// Makes the bitmap of a frame. Null, with what was wrong in `error`, when it can't be had; a
// std::exception that leaves it counts as the same.
using FrameProvider = std::function<Owned<ImageBitmap>(int frame, std::string& error)>;

struct RenderJob {
    // In the order in which they are rendered.
    std::vector<int> frames;
    FrameProvider provider;
    // RenderBegin's.
    ULONG flags = 0;
    // A REND_TIME value. Without one: single for one frame, a range for frames that follow each
    // other, and picked frames otherwise.
    std::optional<int> timeType;
    // Handed to Apply, and asked between frames whether to stop. May be null.
    CheckAbortCallback* callback = nullptr;
};

enum class FrameOutcome {
    // The effects had the frame; whether they made something of it is told by `messages`.
    Rendered,
    // The provider had no bitmap; no effect saw the frame.
    Failed,
    // The render was stopped before.
    NotReached,
};

struct FrameReport {
    int frame = 0;
    FrameOutcome outcome = FrameOutcome::NotReached;
    // The provider's, with Failed.
    std::string error;
    // What was logged during the frame.
    std::vector<LogRecord> messages;
};

struct RenderReport {
    // One for each frame of the job, in its order.
    std::vector<FrameReport> frames;
    // What was logged before the first frame.
    std::vector<LogRecord> beginMessages;
    // The render stopped before its last frame.
    bool aborted = false;
};

// BMM_CHAN_ bits of the channels that the active effects read of a frame's G-Buffer; none while
// render effects are off.
DWORD RequiredGBufferChannels(TimeValue t);

// Nodes of the scene have their render ids before a frame is asked for and before effects see it.
// The provider may set RenderSettings::view: effects are told the one that is there after it.
// Sets the application's time type, and its time to each frame's, and leaves them so. What happens:
// NOTIFY_PRE_RENDER; RenderBegin of the active effects; for each frame NOTIFY_PRE_RENDERFRAME, the
// provider, SupportsBitmap, Apply of the active effects if render effects are on and the effect
// supports the bitmap, NOTIFY_POST_RENDERFRAME, and WriteRenderOutput (bitmap_output.h) if the
// output is to be saved; RenderEnd of those that began; NOTIFY_POST_RENDER. A failed frame gets no
// NOTIFY_POST_RENDERFRAME: nothing was rendered. RenderBegin, Apply and RenderEnd aren't called
// with Corona, whose effects do that themselves on the notifications.
RenderReport RenderFrames(const RenderJob& job);

}  // namespace host
