// Render effects.
#pragma once

#include "bitmap.h"
#include "ref.h"
#include "render.h"

// The user switched the effect off.
constexpr DWORD A_ATMOS_DISABLED = 0x00010000;

class SpecialFX : public ReferenceTarget {
  public:
    virtual BOOL Active(TimeValue) { return !TestAFlag(A_ATMOS_DISABLED); }
    // Whether the user switched it off.
    IOResult Save(ISave* isave) override;
    IOResult Load(ILoad* iload) override;
    // Once before the frames of a render, and once after them. The result has no meaning.
    virtual int RenderBegin(TimeValue, ULONG) { return 0; }
    virtual int RenderEnd(TimeValue) { return 0; }
};

// RenderBegin's flag for the render of a material sample.
constexpr ULONG RENDERBEGIN_IN_MEDIT = 1U << 0;

class Effect : public SpecialFX {
  public:
    SClass_ID SuperClassID() override { return RENDER_EFFECT_CLASS_ID; }
    // BMM_CHAN_ bits of the G-Buffer channels that the effect reads.
    virtual DWORD GBufferChannelsRequired(TimeValue) { return 0; }
    // A frame has been rendered. `gc` and `cb` may be null.
    virtual void Apply(TimeValue t, Bitmap* bm, RenderGlobalContext* gc,
                       CheckAbortCallback* cb) = 0;
};

class Effect8 : public Effect {
  public:
    // Whether the effect works on this bitmap, which is the one that the frame goes to.
    virtual bool SupportsBitmap(Bitmap& bitmap) = 0;
};
