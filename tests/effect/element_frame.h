// A frame with render elements, as the host hands it to the effect.
#pragma once

#include <rendererclasses.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "effect/psd_output_layer.h"
#include "effect/sync_render_elements.h"
#include "host/render_element.h"
#include "host/vray_frame_buffer.h"
#include "tests/effect/document_frame.h"
#include "tests/psdbuilder/tree_text.h"

// A class that nothing is known of: its layers start visible, with transparency and Normal.
constexpr Class_ID unknownElement{0x12345678, 0x9abcdef0};

class ElementFrameTest : public DocumentFrameTest {
  protected:
    ElementFrameTest() {
        for (int i = 0; i < LibNumberClasses(); ++i)
            Host().classes.Add(LibClassDesc(i));
        // Layers stay in the order in which their elements were added.
        Set("autoSort"_param, FALSE);
        context.elementMgr = &Elements();
        Host().log.SetDebugSink(
            [this](const MSTR& text) { printed.push_back(host::ToUtf8(text)); });
    }

    static host::RenderElementManager& Elements(RenderSettingID setting = RS_Production) {
        return Host().elements.at(static_cast<std::size_t>(setting));
    }
    // Its layer stands behind those of the elements before it.
    host::RenderElement& AddElement(Class_ID id, const std::string& name,
                                    host::Owned<host::ImageBitmap> bitmap = {}) {
        host::RenderElement& element = Elements().Add(id, host::FromUtf8(name));
        if (bitmap) element.SetBitmap(std::move(bitmap));
        AddLayer(element, 0);
        return element;
    }
    effect::PSDOutputLayer& AddLayer(host::RenderElement& element, int list) {
        auto* layer = static_cast<effect::PSDOutputLayer*>(
            GetCOREInterface()->CreateInstance(REF_TARGET_CLASS_ID, effect::psdOutputLayerClassID));
        layer->pblock->SetValue("renderElement"_layerParam, 0, &element);
        ReferenceTarget* entry = layer;
        effect->pblock->Append(effect::PSDOutput::LayerList(list), 1, &entry);
        return *layer;
    }
    effect::PSDOutputLayer& LayerOf(const IRenderElement& element, int list = 0) {
        for (int i = 0; i < effect->LayerCount(list); ++i) {
            effect::PSDOutputLayer* layer = effect->Layer(list, i);
            if (layer && layer->Element() == &element) return *layer;
        }
        throw std::logic_error("the element has no layer");
    }
    void SetOf(const IRenderElement& element, ParamID id, int value) {
        LayerOf(element).pblock->SetValue(id, 0, value);
    }
    int GetOf(const IRenderElement& element, ParamID id) {
        return LayerOf(element).pblock->GetInt(id);
    }

    // One colour, in 16-bit values; 65535 is 1.0.
    static host::Owned<host::ImageBitmap> Filled(int red, int green, int blue, int alpha = 65535,
                                                 bool hasAlpha = true, int columns = width) {
        std::vector<std::uint16_t> components;
        for (int i = 0; i < columns * height; ++i) {
            for (int component : {red, green, blue, alpha})
                components.push_back(static_cast<std::uint16_t>(component));
        }
        return host::ImageBitmap::FromUnsigned16({columns, height, hasAlpha},
                                                 std::move(components));
    }
    static host::Owned<host::ImageBitmap> Black() { return Filled(0, 0, 0); }

    // V-Ray with its own frame buffer: the picture, its alpha, and what a test adds.
    host::VRayFrameBuffer& UseVRay() {
        host::HostRenderer& renderer = UseRenderer(VRAY_CLASS_ID);
        renderer.GetParamBlock(host::VRAY_BLOCK)->SetValue(host::VRAY_FRAME_BUFFER_ON, 0, 1);
        renderer.SetFrameBuffer(vfb);
        vfb->BeginFrame(width, height);
        AddVRayChannel(VRAY_CHANNEL_RGB, "RGB color", Image(width, height));
        AddVRayChannel(VRAY_CHANNEL_ALPHA, "Alpha", Filled(60000, 60000, 60000));
        return *vfb;
    }
    void AddVRayChannel(int alias, const std::string& name, host::Owned<host::ImageBitmap> bitmap,
                        VRayChannelType type = RDCT_3FLOAT) {
        EXPECT_TRUE(vfb->AddChannel(
            {alias, type, name, std::shared_ptr<host::ImageBitmap>(std::move(bitmap))}));
    }
    effect::Frame VRayFrame() { return FrameOf(effect::PSDFrameSources{image.get(), vfb.get()}); }

    std::string Tree() { return psdbuilder::TreeText(Document()); }
    // The names of the spare channels.
    std::vector<std::string> Channels() {
        std::vector<std::string> names;
        for (const psdbuilder::PSDBuilderChannel& channel : Document().channels)
            names.push_back(channel.name);
        return names;
    }
    const psdbuilder::PSDBuilderRGBLayer& Named(const std::string& name) {
        for (const auto& child : Document().children) {
            if (child->name == name)
                return dynamic_cast<const psdbuilder::PSDBuilderRGBLayer&>(*child);
        }
        throw std::logic_error("no layer " + name);
    }

    std::vector<std::string> printed;
    std::shared_ptr<host::VRayFrameBuffer> vfb = std::make_shared<host::VRayFrameBuffer>();
};
