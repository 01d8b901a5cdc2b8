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

class RenderElementManager;

// While theHold holds, a change of its name, or whether it is on, can be undone.
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
    RefTargetHandle Clone(RemapDir&) override { return this; }
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
    // All of the block. SetParameters makes it anew.
    std::map<ParamID, int> Parameters() const;
    void SetParameters(const std::map<ParamID, int>& parameters);
    // What the block of a new element of the class has.
    static std::map<ParamID, int> ParametersOfNew(Class_ID id);

    // From then on the element answers MULTI_MATTE_INTERFACE; components that weren't set are
    // empty. `component` 0 to 2. A node that is deleted leaves the description, and is in it again
    // when it comes back with an undo.
    void SetMultiMatte(int component, const MultiMatteComponent& description);

  private:
    friend class ElementPresence;
    friend class RenderElementManager;
    class MultiMatte;

    ~RenderElement() override;
    void SetReference(int which, RefTargetHandle target) override;
    void Rename(const MSTR& name);
    void Changed();

    // Null while it is in no list.
    RenderElementManager* manager_ = nullptr;
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

// The elements of one set of render settings, in the order in which they were added. Of those of
// the running application (Application::elements) it is broadcast that they come, go and change
// (NOTIFY_RENDPARAM_CHANGED), by an undo too, and while theHold holds their coming and going can be
// undone. One that came or went also sends REFMSG_CHANGE, after those who referred to one that went
// have dropped it, so that global references hear of it.
class RenderElementManager final : public IRenderElementMgr {
  public:
    int NumRenderElements() override { return static_cast<int>(elements_.size()); }
    RenderElement* GetRenderElement(int index) override;

    // Names may repeat.
    RenderElement& Add(Class_ID id, const MSTR& name);
    // The first of that very name; null when there is none.
    RenderElement* Find(const MSTR& name) const;
    // The element goes, which its dependents are told; it is destroyed unless an undo step keeps
    // it. False when it isn't in the list.
    bool Remove(const RenderElement* element);
    // Destroys all; can't be undone.
    void Clear();

    // All of the list, apart from it. Nobody is told of this, nor of PutBack.
    std::vector<Owned<RenderElement>> TakeAll();
    // The list must be empty.
    void PutBack(std::vector<Owned<RenderElement>> elements);

  private:
    friend class ElementPresence;
    friend class RenderElement;
    using Elements = std::vector<Owned<RenderElement>>;

    Elements::iterator PlaceOf(const RenderElement* element);
    // Whether they are the running application's.
    bool IsOpen() const;
    void TellChanged(RenderElement& element) const;

    Elements elements_;
};

}  // namespace host
