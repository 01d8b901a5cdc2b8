// Render elements: the parts of the picture that a renderer delivers beside it.
#pragma once

#include "pbbitmap.h"
#include "sfx.h"

class IRenderElement : public SpecialFX {
  public:
    SClass_ID SuperClassID() override { return RENDER_ELEMENT_CLASS_ID; }

    virtual BOOL IsEnabled() const = 0;
    // Never null; valid until the name changes.
    virtual const MCHAR* ElementName() const = 0;
    virtual void SetElementName(const MCHAR* name) = 0;
    // Sets `bitmap` to the element's picture of the frame; null when it has none. Not given away.
    virtual void GetPBBitmap(PBBitmap*& bitmap) const = 0;
};

// The render elements of one kind of render.
class IRenderElementMgr {
  public:
    virtual int NumRenderElements() = 0;
    // Null for an index out of range; the list may hold null elements.
    virtual IRenderElement* GetRenderElement(int index) = 0;

  protected:
    ~IRenderElementMgr() = default;
};
