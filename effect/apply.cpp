// One frame, from the host's call to the closed file.
#include <maxapi.h>

#include <boost/make_shared.hpp>
#include <new>
#include <string_view>

#include "effect/correction_layers.h"
#include "effect/depth_group.h"
#include "effect/empty_filters.h"
#include "effect/frame.h"
#include "effect/id_bounds.h"
#include "effect/layer_stack.h"
#include "effect/merged_image.h"
#include "effect/output_file.h"
#include "effect/psd_output.h"
#include "effect/renderer_kinds.h"
#include "effect/saved_corrections.h"
#include "effect/scene_data.h"
#include "effect/vray_pixels.h"
#include "effect/write_progress.h"
#include "plugin/parameters.h"
#include "psdfile/stream_state.h"
#include "sources/solid_color_channel.h"

namespace effect {
namespace {

// Pixels a side that the smaller format holds.
constexpr int largestPSDSide = 30000;

struct FrameSize {
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    float aspect = 1.0F;
};

FrameSize SizeOf(Bitmap* bm, const RenderGlobalContext& gc) {
    const auto side = [](int pixels) { return static_cast<std::uint16_t>(pixels); };
    if (!bm) return {side(gc.devWidth), side(gc.devHeight), gc.devAspect};
    BitmapStorage* storage = bm->Storage();
    if (!storage) return {0, 0, 0.0F};
    return {side(storage->Width()), side(storage->Height()), storage->Aspect()};
}

bool UserAborts(CheckAbortCallback* cb, const RenderGlobalContext* gc) {
    if (!cb || !cb->Check()) return false;
    // With V-Ray the answer counts only if the host says the same.
    return !(gc && IsClass(gc->renderer, VRAY_CLASS_ID) &&
             !GetCOREInterface()->CheckForRenderAbort());
}

// For its lifetime a class A renderer of the frame is replaced by the class B one that is current.
class RendererSwap {
  public:
    explicit RendererSwap(RenderGlobalContext& context) : gc(context), frameRenderer(gc.renderer) {
        Renderer* current = GetCOREInterface()->GetCurrentRenderer();
        if (IsClass(current, RENDERER_B_CLASS_ID) && IsClass(frameRenderer, RENDERER_A_CLASS_ID)) {
            gc.renderer = current;
        }
    }
    RendererSwap(const RendererSwap&) = delete;
    RendererSwap& operator=(const RendererSwap&) = delete;
    ~RendererSwap() { gc.renderer = frameRenderer; }

  private:
    RenderGlobalContext& gc;
    Renderer* frameRenderer;
};

// Rows of another size than the document's can't be written.
bool IsOfSize(IVRayPixelBuffer& pixels, const FrameSize& size) {
    return pixels.GetWidth() == size.width && pixels.GetHeight() == size.height;
}

bool EndsInPSB(const MSTR& name) {
    constexpr std::basic_string_view<MCHAR> suffix = _M(".psb");
    const std::basic_string_view<MCHAR> text = name.data();
    if (text.size() < suffix.size()) return false;
    const auto end = text.substr(text.size() - suffix.size());
    for (std::size_t i = 0; i < suffix.size(); ++i) {
        const MCHAR letter = end[i] >= _M('A') && end[i] <= _M('Z')
                                 ? static_cast<MCHAR>(end[i] - _M('A') + _M('a'))
                                 : end[i];
        if (letter != suffix[i]) return false;
    }
    return true;
}

// Scripts and scenes may hold any number; what is no depth of a document counts as 16.
int DepthOf(IParamBlock2& pblock) {
    const int bits = pblock.GetInt("bitDepth"_param);
    return bits == 8 || bits == 32 ? bits : 16;
}

// The file's compression code, by depth: raw, RLE, ZIP, or ZIP with prediction.
std::uint16_t CompressionCode(bool compressed, int bitDepth) {
    if (!compressed) return 0;
    if (bitDepth == 8) return 1;
    return bitDepth == 16 ? 2 : 3;
}

void LogFileError(const MCHAR* format, const MSTR& name) {
    GetCOREInterface()->Log()->LogEntry(SYSLOG_ERROR, DISPLAY_DIALOG, messageTitle, format,
                                        name.data());
}

void SetLargeFormat(OutputFile& stream) {
    psdfile::PSBMode(stream) = 1;
}

// At the top of the stack, gamma above the corrections. Pixels that are read from then on come
// without the corrections that a layer carries.
void AddCorrectionLayers(psdbuilder::PSDBuilder& builder, const Frame& frame,
                         SavedCorrections& corrections) {
    const auto isByLayer = [&frame](ParamID config) {
        return frame.pblock.GetInt(config) == correctByAdjustmentLayer;
    };
    if (frame.colors.gammaActive && isByLayer("gammaCorrectConfig"_param)) {
        AddGammaCorrectionLayer(builder);
    }
    if (frame.colors.ccActive && isByLayer("colorCorrectConfig"_param) && corrections.AnyOn() &&
        AddColorCorrectionLayer(builder) == 1) {
        corrections.SwitchAllOff();
    }
}

// Writes the document anew, in the large format, under the same name.
void ResaveLarge(OutputFile& stream, psdbuilder::PSDBuilder& builder, const MSTR& name) {
    stream.Close();
    GetCOREInterface()->Log()->LogEntry(
        SYSLOG_WARN, DISPLAY_DIALOG, messageTitle,
        _M("Could not save as PSD (file size limit of 2 GB was exceeded). "
           "Now resaving as PSB (Large Document Format). "
           "Please change veltrane file format to PSB once render is finished."));
    psdfile::FileTooLarge(stream) = 0;
    if (!stream.Open(name)) {
        stream.setstate(std::ios_base::badbit);
        return;
    }
    SetLargeFormat(stream);
    builder.doc->version = 2;
    builder.Write(stream);
}

}  // namespace

void PSDOutput::Apply(TimeValue t, Bitmap* bm, RenderGlobalContext* gc, CheckAbortCallback* cb) {
    if (UserAborts(cb, gc)) return;
    if (cb) cb->Progress(0, 1);
    if (!frameActive || !saveArmed || !gc || !pblock) return;
    const RendererSwap swap(*gc);
    // Each half of a frame of fields comes on its own; only the whole frame is saved.
    if (IsClass(gc->renderer, RENDERER_A_CLASS_ID) && gc->fieldRender && gc->evenLines) return;
    // Where the host tells of a frame's end only after its effects, this is the first to see it.
    TakeSnapshot(snapshots, *gc);
    MSTR name;
    try {
        const VRayState vray = FindVRayState(gc->renderer);
        SavedCorrections corrections(vray.corrections);
        if (!pblock->GetInt("vrayColorCorrections"_param)) corrections.SwitchAllOff();
        IVRayPixelBuffer* vfb = PreparePixels(vray);
        if (!ResolveOutputFileName(name, true, t)) return;
        SaveFrame(name, {bm, vfb}, corrections, t, *gc, cb);
    } catch (const std::bad_alloc&) {
        LogFileError(_M("Not enough memory to write %s."), name);
    }
}

void PSDOutput::SaveFrame(const MSTR& name, PSDFrameSources sources, SavedCorrections& corrections,
                          TimeValue t, const RenderGlobalContext& gc, CheckAbortCallback* cb) {
    OutputFile stream;
    if (!stream.Open(name)) {
        LogFileError(_M("Could not open/create %s."), name);
        return;
    }
    const FrameSize size = SizeOf(sources.bitmap, gc);
    if (sources.vfb && !IsOfSize(*sources.vfb, size)) sources.vfb = nullptr;
    const bool isPSB =
        EndsInPSB(name) || size.width > largestPSDSide || size.height > largestPSDSide;
    if (isPSB) SetLargeFormat(stream);
    CollectIDBounds(sources.bitmap);

    const int bitDepth = DepthOf(*pblock);
    const int compatibility = pblock->GetInt("compatibility"_param);
    using Solid = sources::SolidColorChannelImageSource;
    blackSource = boost::make_shared<Solid>(std::uint8_t{0}, size.width);
    whiteSource = boost::make_shared<Solid>(std::uint8_t{255}, size.width);
    OwnedBitmap temporaryBitmap;
    const Frame frame{sources,
                      *this,
                      *pblock,
                      gc,
                      DecideColors(*pblock),
                      pblock->GetInt("premultipliedAlpha"_param) != 0,
                      size.width,
                      size.height,
                      blackSource,
                      whiteSource,
                      t,
                      &temporaryBitmap};

    PSDOutputWriteProgressCallback progress(cb);
    psdbuilder::PSDBuilder builder(
        size.width, size.height, static_cast<std::uint8_t>(bitDepth),
        pblock->GetFloat("resolution"_param), size.aspect,
        CompressionCode(pblock->GetInt("compression"_param) != 0, bitDepth), isPSB ? 2 : 1,
        compatibility == 2);
    builder.doc->progress = &progress;
    if (compatibility != 0) {
        BuildMergedImage(builder, frame);
    } else {
        BuildBlankMergedImage(builder, frame);
    }
    AddCorrectionLayers(builder, frame, corrections);
    RunLayerStack(builder, frame);
    if (pblock->GetInt("createZDepthChannel"_param)) AddDepthGroup(builder, frame, false);
    if (IsFilterOn(*pblock, "filterEmptyLayerSets"_param, timeTypeOfHost)) {
        psdbuilder::RemoveEmptyLayerSets(*builder.doc);
    }
    if (pblock->GetInt("embedCameraInfo"_param)) AddCameraBlock(builder, snapshots, frame);
    if (pblock->GetInt("embedHelpersInfo"_param)) AddHelperBlock(builder, frame);

    builder.Write(stream);
    if (!isPSB && psdfile::FileTooLarge(stream)) ResaveLarge(stream, builder, name);
    stream.Close();
    if (stream.bad()) LogFileError(_M("Error writing to %s."), name);
}

}  // namespace effect
