// Render elements and their managers, with pixels that come from a render file.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <iparamb2.h>
#include <multimatte.h>
#include <renderelements.h>
#include <strclass.h>
#include <vrayelements.h>

#include "host/owned.h"
#include "host/target_reference.h"

namespace host {

// Integers of the parameter block (number 0) of V-Ray's elements.
constexpr ParamID VRAY_ELEMENT_ENABLED = 9;
// What the denoiser makes; it has pixels of its own from 2 on.
constexpr ParamID VRAY_DENOISER_MODE = 42;

// True for the classes of vrayelements.h.
bool IsVRayElement(const Class_ID& id);

class RenderElement final : public IRenderElement {
  public:
    // On, without a bitmap. A V-Ray element answers VRAY_RENDER_ELEMENT_INTERFACE and has a
    // parameter block with VRAY_ELEMENT_ENABLED, which is 1; the denoiser's has
    // VRAY_DENOISER_MODE, which is 2, besides. Other classes have no block.
    RenderElement(Class_ID id, const MSTR& name);

    Class_ID ClassID() override { return id_; }
    int NumParamBlocks() override { return block_ ? 1 : 0; }
    IParamBlock2* GetParamBlock(int index) override { return index == 0 ? block_ : nullptr; }
    using IRenderElement::GetInterface;
    void* GetInterface(ULONG id) override;
    int NumRefs() override { return 1; }
    RefTargetHandle GetReference(int which) override;
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

    BOOL IsEnabled() const override { return enabled_; }
    const MCHAR* ElementName() const override { return name_.data(); }
    // V-Ray has a channel for the element although its class isn't one of V-Ray's: from then on it
    // answers VRAY_RENDER_ELEMENT_INTERFACE too.
    void SetInVRayFrameBuffer() { inVRayFrameBuffer_ = true; }
    // Both are told to the dependents.
    void SetElementName(const MCHAR* name) override;
    void SetEnabled(bool on);

    void GetPBBitmap(PBBitmap*& bitmap) const override;
    // The picture of the frame; null for none. What GetPBBitmap gave before is gone.
    void SetBitmap(Owned<Bitmap> bitmap);

    // Sets an integer of the parameter block, which is made, or made anew, when it hasn't got it.
    void SetParameter(ParamID id, int value);
    // The block goes with its last parameter.
    void RemoveParameter(ParamID id);

    // From then on the element answers MULTI_MATTE_INTERFACE; components that weren't set are
    // empty. `component` 0 to 2. A node that is deleted leaves the description.
    void SetMultiMatte(int component, const MultiMatteComponent& description);

  private:
    class MultiMatte;

    ~RenderElement() override;
    void SetReference(int which, RefTargetHandle target) override;
    void MakeBlock(const std::map<ParamID, int>& parameters);
    std::map<ParamID, int> Parameters() const;

    Class_ID id_;
    MSTR name_;
    bool enabled_ = true;
    bool inVRayFrameBuffer_ = false;
    Owned<Bitmap> bitmap_;
    // Null when there is no bitmap.
    std::unique_ptr<PBBitmap> picture_;
    // Outlives the block.
    std::unique_ptr<ParamBlockDesc2> blockDesc_;
    IParamBlock2* block_ = nullptr;
    std::unique_ptr<MultiMatte> multiMatte_;
};

// The elements of one set of render settings, in the order in which they were added.
class RenderElementManager final : public IRenderElementMgr {
  public:
    int NumRenderElements() override { return static_cast<int>(elements_.size()); }
    RenderElement* GetRenderElement(int index) override;

    // Names may repeat.
    RenderElement& Add(Class_ID id, const MSTR& name);
    // The first of that very name; null when there is none.
    RenderElement* Find(const MSTR& name) const;
    // Destroys the element, which tells its dependents. False when it isn't in the list.
    bool Remove(const RenderElement* element);
    void Clear();

  private:
    std::vector<Owned<RenderElement>> elements_;
};

}  // namespace host
