// The renderer, and what it tells an effect of a frame.
#pragma once

#include "matrix3.h"
#include "ref.h"

class IRenderElementMgr;

// Values of RenderGlobalContext::projType.
constexpr int PROJ_PERSPECTIVE = 0;
constexpr int PROJ_PARALLEL = 1;

class Renderer : public ReferenceTarget {};

// The frame being rendered. Lives as long as the frame.
class RenderGlobalContext {
  public:
    Renderer* renderer = nullptr;
    // How the frame is seen: a PROJ_ value, and the camera in the world. It looks along its
    // negative z, with y up.
    int projType = PROJ_PERSPECTIVE;
    Matrix3 camToWorld;
    // From the camera's space to pixels: of a perspective, pixels for x / z of 1, and of a parallel
    // projection, pixels for an x of 1. The sign depends on the renderer. 0 when it isn't known.
    float xscale = 0.0F;
    // Along the camera's axis, where the surroundings (fog) begin and end. 0 when not known.
    float nearRange = 0.0F;
    float farRange = 0.0F;
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
