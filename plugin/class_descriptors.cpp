#include "plugin/class_descriptors.h"

#include <array>
#include <memory>

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "plugin/library.h"
#include "plugin/library_services.h"
#include "plugin/null_writer.h"
#include "plugin/parameter_accessor.h"
#include "plugin/parameter_blocks.h"
#include "plugin/string_table.h"

namespace plugin {
namespace {

class PSDOutputClassDesc final : public ClassDesc2 {
  public:
    PSDOutputClassDesc() : block(MakeEffectBlockDesc(*this, &EffectAccessor())) {}

    int IsPublic() override { return 1; }
    void* Create(BOOL) override { return new effect::PSDOutput(*this, Services()); }
    const MCHAR* ClassName() override { return GetString(3); }
    SClass_ID SuperClassID() override { return RENDER_EFFECT_CLASS_ID; }
    Class_ID ClassID() override { return effect::psdOutputClassID; }
    const MCHAR* Category() override { return GetString(36); }
    const MCHAR* InternalName() override { return _M("veltrane"); }
    HINSTANCE HInstance() override { return Module(); }

  private:
    std::unique_ptr<ParamBlockDesc2> block;
};

class PSDOutputLayerClassDesc final : public ClassDesc2 {
  public:
    PSDOutputLayerClassDesc() : block(MakeLayerBlockDesc(*this)) {}

    int IsPublic() override { return 0; }
    void* Create(BOOL) override { return new effect::PSDOutputLayer(*this, Services()); }
    const MCHAR* ClassName() override { return _M("veltraneRELayer"); }
    SClass_ID SuperClassID() override { return REF_TARGET_CLASS_ID; }
    Class_ID ClassID() override { return effect::psdOutputLayerClassID; }
    const MCHAR* Category() override { return _M(""); }
    const MCHAR* InternalName() override { return _M("veltraneRELayer"); }
    HINSTANCE HInstance() override { return Module(); }

  private:
    std::unique_ptr<ParamBlockDesc2> block;
};

class NullWriterClassDesc : public ClassDesc2 {
  public:
    int IsPublic() override { return 1; }
    // As the base class, by which the host takes it.
    void* Create(BOOL) override { return static_cast<BitmapIO*>(new NullWriter(Format())); }
    SClass_ID SuperClassID() override { return BMM_IO_CLASS_ID; }
    const MCHAR* Category() override { return _M(""); }
    HINSTANCE HInstance() override { return Module(); }

  private:
    virtual const NullFormat& Format() = 0;
};

class NullExportClassDesc final : public NullWriterClassDesc {
  public:
    const MCHAR* ClassName() override { return GetString(33); }
    Class_ID ClassID() override { return {0x4e56f5c2, 0x1421c9be}; }
    const MCHAR* InternalName() override { return _M("NullExport"); }

  private:
    const NullFormat& Format() override { return nullExport; }
};

class PSDExportBitmapIOClassDesc final : public NullWriterClassDesc {
  public:
    const MCHAR* ClassName() override { return GetString(59); }
    Class_ID ClassID() override { return {0x7b721906, 0x6d3226df}; }
    const MCHAR* InternalName() override { return _M("PSDExportBitmapIO"); }

  private:
    const NullFormat& Format() override { return psdExportBitmapIO; }
};

PSDOutputClassDesc psdOutputClassDesc;
PSDOutputLayerClassDesc psdOutputLayerClassDesc;
NullExportClassDesc nullExportClassDesc;
PSDExportBitmapIOClassDesc psdExportBitmapIOClassDesc;

constexpr std::array<ClassDesc*, 3> offered{&psdOutputClassDesc, &psdOutputLayerClassDesc,
                                            &nullExportClassDesc};

}  // namespace

std::span<ClassDesc* const> ClassDescriptors() {
    return offered;
}

ClassDesc& PSDExportBitmapIODescriptor() {
    return psdExportBitmapIOClassDesc;
}

}  // namespace plugin
