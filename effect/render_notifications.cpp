// What the effect does around a render and around each frame.
#include <maxapi.h>
#include <windowtree.h>

#include <chrono>

#include "effect/progress_window.h"
#include "effect/psd_output.h"
#include "effect/renderer_kinds.h"

namespace effect {
namespace {

// Milliseconds of a clock that never goes back.
std::uint32_t TickCount() {
    using namespace std::chrono;
    return static_cast<std::uint32_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

// For a save that the host didn't ask for: stops when the user stops the render.
class RenderAbortCallback : public CheckAbortCallback {
  public:
    BOOL Check() override { return GetCOREInterface()->CheckForRenderAbort(); }
    BOOL Progress(int, int) override { return Check(); }
    void SetTitle(const MCHAR*) override {}
};

bool StandsInEffects(const Effect* effect) {
    Interface* host = GetCOREInterface();
    for (int i = 0; i < host->NumEffects(); ++i) {
        if (host->GetEffect(i) == effect) return true;
    }
    return false;
}

}  // namespace

void PSDOutput::BeforeRender() {
    Interface* host = GetCOREInterface();
    Renderer* renderer = host->GetCurrentRenderer();
    // V-Ray makes the host's frame buffer only when the frame goes to a file.
    if (Active(0) && UsesVRayFrameBuffer(renderer) && *host->GetRendFileBI().Name() &&
        !host->GetRendSaveFile() && StandsInEffects(this)) {
        forcedSaveFile = true;
        host->SetRendSaveFile(TRUE);
    }
    if (IsClass(renderer, CORONA_CLASS_ID)) RenderBegin(host->GetTime(), 0);
}

void PSDOutput::AfterRender() {
    Interface* host = GetCOREInterface();
    if (forcedSaveFile && host->GetRendSaveFile() == TRUE) {
        host->SetRendSaveFile(FALSE);
        forcedSaveFile = false;
    }
    if (IsClass(host->GetCurrentRenderer(), CORONA_CLASS_ID)) RenderEnd(host->GetTime());
    outputBitmap = nullptr;
}

void PSDOutput::BeforeFrame(const RenderGlobalContext* gc) {
    renderMilliseconds = TickCount();
    frameActive = !(gc && IsClass(gc->renderer, RENDERER_C_CLASS_ID));
}

void PSDOutput::AfterFrame(RenderGlobalContext* gc) {
    frameActive = true;
    renderMilliseconds = TickCount() - renderMilliseconds;
    if (gc) TakeSnapshot(snapshots, *gc);
    Interface* host = GetCOREInterface();
    if (!gc || !host->GetRendEffects() || !Active(0) || !IsClass(gc->renderer, CORONA_CLASS_ID) ||
        host->CheckForRenderAbort()) {
        return;
    }
    RenderAbortCallback callback;
    if (HWND window = FindRenderProgressWindow()) {
        SetWindowText(GetDlgItem(window, progressTextControl), messageTitle);
    }
    if (outputBitmap) Apply(gc->time, outputBitmap, gc, &callback);
}

}  // namespace effect
