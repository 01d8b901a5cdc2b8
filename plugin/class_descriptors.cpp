#include "plugin/class_descriptors.h"

#include <array>
#include <memory>

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "plugin/library_services.h"
#include "plugin/parameter_accessor.h"
#include "plugin/parameter_blocks.h"

namespace plugin {
namespace {

class PSDOutputClassDesc : public ClassDesc2 {
  public:
    PSDOutputClassDesc() : block(MakeEffectBlockDesc(*this, &EffectAccessor())) {}

    int IsPublic() override { return 1; }
    void* Create(BOOL) override { return new effect::PSDOutput(*this, Services()); }
    const MCHAR* ClassName() override { return _M("veltrane"); }
    SClass_ID SuperClassID() override { return RENDER_EFFECT_CLASS_ID; }
    Class_ID ClassID() override { return effect::psdOutputClassID; }
    const MCHAR* Category() override { return _M("Effect"); }
    const MCHAR* InternalName() override { return _M("veltrane"); }

  private:
    std::unique_ptr<ParamBlockDesc2> block;
};

class PSDOutputLayerClassDesc : public ClassDesc2 {
  public:
    PSDOutputLayerClassDesc() : block(MakeLayerBlockDesc(*this)) {}

    int IsPublic() override { return 0; }
    void* Create(BOOL) override { return new effect::PSDOutputLayer(*this); }
    const MCHAR* ClassName() override { return _M("veltraneRELayer"); }
    SClass_ID SuperClassID() override { return REF_TARGET_CLASS_ID; }
    Class_ID ClassID() override { return effect::psdOutputLayerClassID; }
    const MCHAR* Category() override { return _M(""); }
    const MCHAR* InternalName() override { return _M("veltraneRELayer"); }

  private:
    std::unique_ptr<ParamBlockDesc2> block;
};

}  // namespace

std::span<ClassDesc* const> ClassDescriptors() {
    static PSDOutputClassDesc output;
    static PSDOutputLayerClassDesc layer;
    static const std::array<ClassDesc*, 2> descriptors{&output, &layer};
    return descriptors;
}

}  // namespace plugin
