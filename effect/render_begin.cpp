// The checks before a render: whether its frames can be saved, and what the user is told if not.
#include <IPathConfigMgr.h>
#include <maxapi.h>
#include <maxmsgbox.h>
#include <maxscript/maxscript.h>

#include <new>

#include "effect/confirm_overwrite.h"
#include "effect/progress_window.h"
#include "effect/psd_output.h"
#include "effect/renderer_kinds.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

bool Quiet() {
    return GetCOREInterface()->GetQuietMode() != FALSE;
}

void LogError(const MCHAR* text) {
    GetCOREInterface()->Log()->LogEntry(SYSLOG_ERROR, NO_DIALOG, messageTitle, _M("%s"), text);
}

void Tell(const MCHAR* text) {
    Interface* host = GetCOREInterface();
    if (!Quiet()) MaxMsgBox(host->GetMAXHWnd(), text, messageTitle, MB_OK | MB_ICONEXCLAMATION);
}

// "No" stops the render; "Yes" lets it go on, without a document.
void AskWhetherToGoOn(const MCHAR* text) {
    Interface* host = GetCOREInterface();
    if (Quiet()) return;
    const int answer =
        MaxMsgBox(host->GetMAXHWnd(), text, messageTitle, MB_YESNO | MB_ICONEXCLAMATION);
    if (answer == IDNO) host->AbortRender();
}

bool IsPreview() {
    auto* query = static_cast<IRenderPreviewQuery*>(
        GetCOREInterface()->GetInterface(RENDER_PREVIEW_QUERY_INTERFACE));
    IRenderPreviewState* state = query ? query->GetState() : nullptr;
    return state && state->IsPreview();
}

bool GivesInteger(const MCHAR* script, int wanted) {
    FPValue value;
    return ExecuteMAXScriptScript(script, TRUE, &value) && value.type == TYPE_INT &&
           value.i == wanted;
}

// V-Ray's switch of its frame buffer; false also where the expression can't be evaluated.
bool VRayOutputIsOn() {
    FPValue value;
    return ExecuteMAXScriptScript(_M("renderers.current.output_on"), TRUE, &value) &&
           value.type == TYPE_BOOL && value.b != 0;
}

struct Refusal {
    const MCHAR* question;
    const MCHAR* logged;
};

constexpr Refusal sizesDiffer = {
    _M("Please use the same resolution for the V-Ray and 3ds Max frame buffer.\n\n"
       "Do you want to continue rendering without saving a PSD file?"),
    _M("V-Ray frame buffer resolution differs from 3ds max frame buffer! "
       "PSD file will not be saved!")};
constexpr Refusal noMemoryFrameBuffer = {
    _M("Please enable the V-Ray memory framebuffer.\n\n"
       "Do you want to continue rendering without saving a PSD file?"),
    _M("V-Ray memory framebuffer not enabled! PSD file will not be saved!")};
constexpr Refusal noHostFrameBuffer = {
    _M("Vray will not create the 3ds Max frame buffer that veltrane requires.\n"
       "To change this please assign a Render Output filename in the Render Setup dialog or "
       "disable the VRAY frame buffer.\n\n"
       "Do you want to continue rendering without saving a PSD file?"),
    _M("Vray will not create the 3ds Max frame buffer! PSD file will not be saved!")};

// Null when V-Ray's frame buffer and the host's go together.
const Refusal* RefusalOf(IParamBlock2& vray) {
    Interface* host = GetCOREInterface();
    if (host->GetRendSaveFile() != TRUE) return &noHostFrameBuffer;
    if (!vray.GetInt(vrayMemoryFrameBuffer)) return &noMemoryFrameBuffer;
    const bool sameSize = host->GetRendWidth() == vray.GetInt(vrayFrameBufferWidth) &&
                          host->GetRendHeight() == vray.GetInt(vrayFrameBufferHeight);
    return vray.GetInt(vrayTakeSizeFromHost) || sameSize ? nullptr : &sizesDiffer;
}

}  // namespace

int PSDOutput::RenderBegin(TimeValue t, ULONG flags) {
    if (flags & RENDERBEGIN_IN_MEDIT) return 0;
    RegisterNotification(OnEffectNotification, this, NOTIFY_PRE_RENDERFRAME);
    RegisterNotification(OnEffectNotification, this, NOTIFY_POST_RENDERFRAME);
    frameActive = false;
    saveArmed = false;
    snapshots = {};
    try {
        saveArmed = pblock && MayBeSaved(t);
    } catch (const std::bad_alloc&) {
        LogError(_M("Not enough memory! PSD file will not be saved!"));
    }
    return 0;
}

int PSDOutput::RenderEnd(TimeValue) {
    UnRegisterNotification(OnEffectNotification, this, NOTIFY_PRE_RENDERFRAME);
    UnRegisterNotification(OnEffectNotification, this, NOTIFY_POST_RENDERFRAME);
    frameActive = false;
    return 0;
}

bool PSDOutput::MayBeSaved(TimeValue t) {
    Renderer* renderer = GetCOREInterface()->GetCurrentRenderer();
    if (IsPreview() || !Active(t) || GivesInteger(_M("maxops.rendUseIterative"), 1)) return false;
    if (IsClass(renderer, CORONA_CLASS_ID) && !Quiet() && !FindRenderProgressWindow()) return false;

    const WarningSwitches switches = services.readWarningSwitches();
    if (!CheckVRayFrameBuffer(switches.disableVrayFrameBufferWarnings)) return false;
    if (!CheckFilenameIsAssigned()) return false;
    WarnOfMissingGBuffer(switches.disableVrayProgressiveSamplerWarning, t);
    return CheckRenderOutputFilename() && CheckOutputFile(t);
}

bool PSDOutput::CheckVRayFrameBuffer(bool silent) {
    IParamBlock2* vray = VRayFrameBufferSettings(GetCOREInterface()->GetCurrentRenderer());
    if (!vray || !VRayOutputIsOn()) return true;
    const Refusal* refusal = RefusalOf(*vray);
    if (!refusal) return true;
    if (!silent) AskWhetherToGoOn(refusal->question);
    LogError(refusal->logged);
    return false;
}

bool PSDOutput::CheckFilenameIsAssigned() {
    if (pblock->GetInt("matchRenderOutputFilename"_param)) return true;
    if (*pblock->GetStr("filename"_param)) return true;
    if (GetCOREInterface()->GetRendTimeType() != REND_TIMESINGLE) {
        Tell(
            _M("You are rendering a sequence with no file assigned.\n"
               "Frames may be lost."));
    }
    LogError(_M("No PSD filename assigned! PSD file will not be saved!"));
    return false;
}

void PSDOutput::WarnOfMissingGBuffer(bool samplerWarningSilent, TimeValue t) {
    constexpr int progressiveSampler = 3;
    Renderer* renderer = GetCOREInterface()->GetCurrentRenderer();
    if (GBufferChannelsRequired(t) == 0) return;
    if (IsClass(renderer, VRAY_CLASS_ID) &&
        GivesInteger(_M("renderers.current.imageSampler_type"), progressiveSampler)) {
        if (!samplerWarningSilent) {
            Tell(
                _M("The V-Ray Progressive image sampler doesn't support the 3ds max G-Buffer. "
                   "Masking layers/channels will be empty."
                   "Please use the Bucket image sampler instead or rely on render elements for "
                   "mask creation.\n"));
        }
        LogError(
            _M("V-Ray Progressive image sampler does not support G-Buffer. "
               "Some PSD layers/channels will be empty. Use Bucket sampler instead."));
    }
    if (IsClass(renderer, CORONA_CLASS_ID)) {
        GetCOREInterface()->Log()->LogEntry(
            SYSLOG_WARN, DISPLAY_DIALOG, messageTitle,
            _M("PSD: Corona doesn't support the 3ds max G-Buffer. "
               "All masking layers/channels will be empty. Use render elements instead."));
    }
}

bool PSDOutput::CheckRenderOutputFilename() {
    if (!pblock->GetInt("matchRenderOutputFilename"_param)) return true;
    const MaxSDK::Util::Path output(GetCOREInterface()->GetRendFileBI().Name());
    IPathConfigMgr* paths = IPathConfigMgr::GetPathConfigMgr();
    MaxSDK::Util::Path sceneFolder(paths ? paths->GetDir(APP_SCENE_DIR) : nullptr);
    sceneFolder.RemoveLeaf();
    if (!output.IsEmpty() && !(output == sceneFolder)) return true;
    AskWhetherToGoOn(
        _M("Please assign a filename in the Render Setup dialog.\n\n"
           "Do you want to continue rendering without saving a PSD file?"));
    LogError(_M("No valid PSD filename! PSD file will not be saved!"));
    return false;
}

bool PSDOutput::CheckOutputFile(TimeValue t) {
    MSTR name;
    if (!ResolveOutputFileName(name, true, t)) {
        if (!Quiet()) {
            const MSTR text = MSTR(_M("\"")) + name + _M("\" is not a valid filename.");
            Tell(text);
            GetCOREInterface()->AbortRender();
        }
        LogError(_M("No valid PSD filename! PSD file will not be saved!"));
        return false;
    }
    if (BMMIsFile(name) && !Quiet() && !ConfirmOverwrite(services, name, confirmOverwrite)) {
        GetCOREInterface()->AbortRender();
        return false;
    }
    return true;
}

}  // namespace effect
