#include "effect/render_elements.h"

#include <iparamb2.h>
#include <maxapi.h>
#include <renderelements.h>

#include <optional>

#include "effect/correction_layers.h"
#include "effect/element_corrections.h"
#include "effect/element_layer.h"
#include "effect/layer_name.h"
#include "effect/layer_set.h"
#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "effect/render_channels.h"
#include "effect/renderer_kinds.h"
#include "effect/sync_render_elements.h"
#include "effect/vray_channels.h"
#include "plugin/parameters.h"

namespace effect {
namespace {

bool Holds(IRenderElementMgr* manager, const IRenderElement* element) {
    const int count = manager ? manager->NumRenderElements() : 0;
    for (int i = 0; i < count; ++i) {
        if (manager->GetRenderElement(i) == element) return true;
    }
    return false;
}

bool IsOfHost(const IRenderElement* element) {
    Interface* host = GetCOREInterface();
    return Holds(host->GetRenderElementMgr(RS_Production), element) ||
           Holds(host->GetRenderElementMgr(RS_Draft), element);
}

// V-Ray's elements have their switch in their own settings.
bool IsOnInVRay(IRenderElement& element) {
    constexpr ParamID on = 9;
    if (!element.GetInterface(VRAY_RENDER_ELEMENT_INTERFACE)) return false;
    IParamBlock2* settings = element.GetParamBlock(0);
    const bool hasSwitch = settings && settings->GetDesc()->IDtoIndex(on) >= 0;
    return !hasSwitch || settings->GetInt(on) != 0;
}

// Null also for one that is left over from a frame of another size.
Bitmap* BitmapOf(const Frame& frame, const IRenderElement& element) {
    PBBitmap* holder = nullptr;
    element.GetPBBitmap(holder);
    Bitmap* bitmap = holder ? holder->bm : nullptr;
    BitmapStorage* storage = bitmap ? bitmap->Storage() : nullptr;
    const bool fits = storage && frame.HasSize(storage->Width(), storage->Height());
    return fits ? bitmap : nullptr;
}

// Finds the pixels of elements in the way of the frame's renderer.
class PixelFinder {
  public:
    explicit PixelFinder(const Frame& theFrame)
        : frame(theFrame), usesVRay(UsesVRayFrameBuffer(frame.gc.renderer)) {
        IVRayPixelBuffer* vfb = frame.sources.vfb;
        if (!usesVRay || !vfb || !frame.HasSize(vfb->GetWidth(), vfb->GetHeight())) return;
        channels = FindVRayChannels(*vfb, frame.gc.GetRenderElementMgr());
    }

    // Empty for an element that is off or has no pixels.
    std::optional<ElementPixels> PixelsOf(const PSDOutputLayer& layer,
                                          IRenderElement& element) const {
        if (!(usesVRay ? IsOnInVRay(element) : element.IsEnabled() != FALSE)) return {};
        ElementPixels pixels{
            .premultiplied = layer.pblock->GetInt("premultiply"_layerParam) != 0,
            .gammaCorrect = CorrectsGamma(frame, layer.pblock->GetInt("gammaCorrect"_layerParam)),
        };
        if (!usesVRay) {
            pixels.bitmap = BitmapOf(frame, element);
            if (!pixels.bitmap) return {};
            return pixels;
        }
        pixels.vfb = frame.sources.vfb;
        pixels.vfbChannel = channels ? channels->IndexOf(&element) : -1;
        pixels.colorCorrect =
            CorrectsColors(frame, layer.pblock->GetInt("colorCorrect"_layerParam) != 0);
        if (pixels.vfbChannel < 0) return {};
        return pixels;
    }

    void AddRest(psdbuilder::PSDBuilder& builder) const {
        if (channels) AddExtraChannels(builder, frame, *channels);
    }

  private:
    const Frame& frame;
    bool usesVRay;
    // Empty without a frame buffer to read from.
    std::optional<VRayChannels> channels;
};

}  // namespace

void AddElementLayers(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    const PixelFinder finder(frame);
    const int list = LayerListOf(frame.gc);
    // What is still pending after the last row comes into no layer.
    PendingLayers pending;
    for (int i = 0; i < frame.effect.LayerCount(list); ++i) {
        const PSDOutputLayer* layer = frame.effect.Layer(list, i);
        IRenderElement* element = layer ? layer->Element() : nullptr;
        if (!element || !IsOfHost(element) || !layer->pblock->GetInt("enabled"_layerParam) ||
            !Holds(frame.gc.GetRenderElementMgr(), element)) {
            continue;
        }
        const std::optional<ElementPixels> pixels = finder.PixelsOf(*layer, *element);
        if (!pixels) continue;
        if (layer->pblock->GetInt("split"_layerParam)) {
            AddSplitElement(builder, frame, *layer, *pixels);
        } else {
            AddWholeElement(builder, frame, *layer, *pixels, pending);
        }
    }
    finder.AddRest(builder);
}

void AddRenderElementsGroup(psdbuilder::PSDBuilder& builder, const Frame& frame) {
    const bool inSet = frame.pblock.GetInt("createRenderElementsLayerSet"_param) != 0;
    if (inSet) {
        const bool masked =
            frame.pblock.GetInt("createRenderElementsLayerSetMaskFromAlpha"_param) != 0;
        BeginGroupSet(
            builder,
            NameOr(frame.pblock.GetStr("renderElementsLayerSetName"_param), _M("Render Elements")),
            masked ? RenderAlpha(frame) : nullptr);
    }
    if (HasCurvesLayer(frame)) AddCurvesLayer(builder, frame);
    AddElementLayers(builder, frame);
    if (inSet) builder.EndLayerSet();
}

}  // namespace effect
