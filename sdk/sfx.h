// Render effects.
#pragma once

#include "bitmap.h"
#include "ref.h"
#include "render.h"

class IRendParams;

// The rollups of an effect that are open.
class SFXParamDlg {
  public:
    virtual Class_ID ClassID() = 0;
    virtual ReferenceTarget* GetThing() = 0;
    // Another effect of the same class takes the place of the one that is shown.
    virtual void SetThing(ReferenceTarget* effect) = 0;
    // Closes the rollups.
    virtual void DeleteThis() = 0;

  protected:
    virtual ~SFXParamDlg() = default;
};

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
    // Shows the settings to the user; null when there is nothing to show. The caller owns the
    // result, and ends with DeleteThis.
    virtual SFXParamDlg* CreateParamDialog(IRendParams*) { return nullptr; }
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
