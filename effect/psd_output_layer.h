// The settings of one render element: whether and how it goes into the document.
#pragma once

#include <iparamb2.h>

#include "effect/library_services.h"

class IRenderElement;

namespace effect {

constexpr Class_ID psdOutputLayerClassID{0x347c6bc4, 0x153540b4};

class PSDOutputLayer : public ReferenceTarget {
  public:
    // `classDescriptor` makes the parameter block (reference 0). Both must outlive the object.
    PSDOutputLayer(ClassDesc2& classDescriptor, const LibraryServices& libraryServices);

    Class_ID ClassID() override { return psdOutputLayerClassID; }
    SClass_ID SuperClassID() override { return REF_TARGET_CLASS_ID; }
    int NumParamBlocks() override { return 1; }
    IParamBlock2* GetParamBlock(int number) override { return number == 0 ? pblock : nullptr; }
    IParamBlock2* GetParamBlockByID(BlockID id) override;
    int NumSubs() override { return 1; }
    Animatable* SubAnim(int number) override { return GetParamBlock(number); }
    MSTR SubAnimName(int number) override;

    // The copy stands for what the host gives as the copy of the render element: the element
    // itself, where it copies none. It belongs to the caller.
    RefTargetHandle Clone(RemapDir& remap) override;

    int NumRefs() override { return 2; }
    RefTargetHandle GetReference(int number) override;
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        return REF_SUCCEED;
    }

    // Null when none is set or it was deleted.
    IRenderElement* Element() const;
    // "<deleted>" without an element.
    MSTR ElementName() const;

    // Gives the layer a blend mode that a 32-bit document has: Screen becomes Linear Dodge, every
    // other mode that is missing there Normal.
    void PrepareFor32Bits();
    // Gives the layer a blend mode that the first paint applications with layers have: Linear Dodge
    // becomes Screen, every other mode that is missing there Normal.
    void ReplaceNewerModes();

    IParamBlock2* pblock = nullptr;

  protected:
    ~PSDOutputLayer() override { DeleteAllRefsFromMe(); }
    void SetReference(int number, RefTargetHandle target) override;

  private:
    ClassDesc2& descriptor;
    const LibraryServices& services;
    // Reference 1, through the parameter of the same name.
    ReferenceTarget* renderElement = nullptr;
};

}  // namespace effect
