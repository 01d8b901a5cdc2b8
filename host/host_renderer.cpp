#include "host/host_renderer.h"

#include <utility>

#include "host/param_block.h"

namespace host {
namespace {

ParamBlockDesc2& VRayBlockDesc() {
    static ParamBlockDesc2 desc = [] {
        ParamBlockDesc2 made(VRAY_BLOCK, _M("frameBuffer"), 0, nullptr, 0, p_end);
        static constexpr struct {
            ParamID id;
            const MCHAR* name;
            ParamType2 type;
            int value;
        } PARAMETERS[] = {
            {VRAY_FRAME_BUFFER_ON, _M("frameBufferOn"), TYPE_BOOL, FALSE},
            {VRAY_FRAME_BUFFER_WIDTH, _M("frameBufferWidth"), TYPE_INT, 640},
            {VRAY_FRAME_BUFFER_HEIGHT, _M("frameBufferHeight"), TYPE_INT, 480},
            {VRAY_MEMORY_FRAME_BUFFER, _M("memoryFrameBuffer"), TYPE_BOOL, TRUE},
            {VRAY_SIZE_FROM_HOST, _M("takeSizeFromHost"), TYPE_BOOL, TRUE},
            {VRAY_FORCE_32_BITS, _M("force32Bits"), TYPE_BOOL, FALSE},
        };
        for (const auto& row : PARAMETERS) {
            made.AddParam(row.id, row.name, row.type, 0, 0, p_default, row.value, p_end);
        }
        return made;
    }();
    return desc;
}

}  // namespace

HostRenderer::HostRenderer(Class_ID id) : id_(id) {
    if (id_ != VRAY_CLASS_ID) {
        return;
    }
    ReplaceReference(0, new ParamBlock(VRayBlockDesc(), this));
    properties.Set("output_on",
                   [this] { return ScriptBool(block_->GetInt(VRAY_FRAME_BUFFER_ON) != 0); });
    properties.Set(
        VRAY_FORCE_32_BITS_PROPERTY,
        [this] { return ScriptBool(block_->GetInt(VRAY_FORCE_32_BITS) != 0); },
        [this](FPValue value) { block_->SetValue(VRAY_FORCE_32_BITS, 0, value.i); });
    properties.Set(VRAY_SAMPLER_PROPERTY, ScriptInt(VRAY_SAMPLER_BUCKET));
}

HostRenderer::~HostRenderer() {
    DeleteAllRefsFromMe();
}

int HostRenderer::NumParamBlocks() {
    return block_ ? VRAY_BLOCK + 1 : 0;
}

IParamBlock2* HostRenderer::GetParamBlock(int index) {
    return index == VRAY_BLOCK ? block_ : nullptr;
}

BaseInterface* HostRenderer::GetInterface(Interface_ID id) {
    return id == VRAY_FRAME_BUFFER_INTERFACE ? frameBuffer_.get() : nullptr;
}

void HostRenderer::SetFrameBuffer(std::shared_ptr<VRayFrameBuffer> frameBuffer) {
    if (id_ == VRAY_CLASS_ID) {
        frameBuffer_ = std::move(frameBuffer);
    }
}

RefTargetHandle HostRenderer::GetReference(int which) {
    return which == 0 ? block_ : nullptr;
}

void HostRenderer::SetReference(int /*which*/, RefTargetHandle target) {
    block_ = dynamic_cast<IParamBlock2*>(target);
}

RefResult HostRenderer::NotifyRefChanged(const Interval& /*changeInt*/, RefTargetHandle /*hTarget*/,
                                         PartID& /*partID*/, RefMessage /*message*/,
                                         BOOL /*propagate*/) {
    return REF_SUCCEED;
}

}  // namespace host
