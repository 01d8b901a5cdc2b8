// A renderer as effects see it: its class, its parameter block and its script properties.
#pragma once

#include <memory>

#include <iparamb2.h>
#include <maxscript/maxscript.h>
#include <render.h>
#include <rendererclasses.h>

#include "host/script_properties.h"
#include "host/vray_frame_buffer.h"

namespace host {

// V-Ray's block among its parameter blocks, and the integers of it that are there.
constexpr int VRAY_BLOCK = 15;
constexpr ParamID VRAY_FRAME_BUFFER_ON = 170;
// Pixels.
constexpr ParamID VRAY_FRAME_BUFFER_WIDTH = 171;
constexpr ParamID VRAY_FRAME_BUFFER_HEIGHT = 172;
constexpr ParamID VRAY_MEMORY_FRAME_BUFFER = 189;
constexpr ParamID VRAY_SIZE_FROM_HOST = 228;
// The frame that V-Ray leaves in the host's bitmap has 32 bits a channel.
constexpr ParamID VRAY_FORCE_32_BITS = 280;

// The property of V-Ray that tells how it samples, and its values.
constexpr const char* VRAY_SAMPLER_PROPERTY = "imageSampler_type";
constexpr int VRAY_SAMPLER_BUCKET = 1;
constexpr int VRAY_SAMPLER_PROGRESSIVE = 3;

// The property that is the block's VRAY_FORCE_32_BITS.
constexpr const char* VRAY_FORCE_32_BITS_PROPERTY = "output_force32bit_3dsmax_vfb";

class HostRenderer final : public Renderer {
  public:
    // A V-Ray has its block, with the frame buffer off, and the properties "output_on" (the block's
    // VRAY_FRAME_BUFFER_ON), VRAY_FORCE_32_BITS_PROPERTY, which can be set, and
    // VRAY_SAMPLER_PROPERTY; every other class has neither.
    explicit HostRenderer(Class_ID id);
    ~HostRenderer() override;

    Class_ID ClassID() override { return id_; }
    SClass_ID SuperClassID() override { return RENDERER_CLASS_ID; }
    int NumParamBlocks() override;
    IParamBlock2* GetParamBlock(int index) override;
    // VRAY_FRAME_BUFFER_INTERFACE while a frame buffer is set.
    using Renderer::GetInterface;
    BaseInterface* GetInterface(Interface_ID id) override;
    int NumRefs() override { return 1; }
    RefTargetHandle GetReference(int which) override;
    RefResult NotifyRefChanged(const Interval& changeInt, RefTargetHandle hTarget, PartID& partID,
                               RefMessage message, BOOL propagate) override;

    // V-Ray's alone has one; null for none.
    void SetFrameBuffer(std::shared_ptr<VRayFrameBuffer> frameBuffer);

    // What scripts see as "renderers.current.NAME".
    ScriptProperties properties;

  private:
    void SetReference(int which, RefTargetHandle target) override;

    Class_ID id_;
    IParamBlock2* block_ = nullptr;
    std::shared_ptr<VRayFrameBuffer> frameBuffer_;
};

}  // namespace host
