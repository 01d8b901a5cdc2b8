// The renderer, and what it tells an effect of a frame.
#pragma once

#include "ref.h"

class IRenderElementMgr;

class Renderer : public ReferenceTarget {};

// The frame being rendered. Lives as long as the frame.
class RenderGlobalContext {
  public:
    Renderer* renderer = nullptr;
    // Pixels.
    int devWidth = 0;
    int devHeight = 0;
    // Width of a pixel over its height.
    float devAspect = 1.0F;
    // A frame of fields is rendered as two halves.
    BOOL fieldRender = FALSE;
    BOOL evenLines = FALSE;
    TimeValue time = 0;
    // The render elements of this render; null when it has none.
    IRenderElementMgr* GetRenderElementMgr() const { return elementMgr; }
    IRenderElementMgr* elementMgr = nullptr;
};

// By this an effect tells how far it is, and learns whether the user wants it to stop.
class CheckAbortCallback {
  public:
    // True to stop.
    virtual BOOL Check() = 0;
    // `done` of `total`, in the effect's own units. True to stop.
    virtual BOOL Progress(int done, int total) = 0;
    virtual void SetTitle(const MCHAR* title) = 0;

  protected:
    virtual ~CheckAbortCallback() = default;
};
