// The host's core interface: the render settings, the scene's effects, and what the user is asked.
#pragma once

#include "bitmap.h"
#include "log.h"
#include "render.h"

class Effect;
class ILayerManager;
class INode;
class IRenderElementMgr;

// The sets of render settings that the host keeps.
enum RenderSettingID : int {
    RS_Production = 0,
    RS_Draft = 1,
};

// What Interface::GetRendTimeType says is rendered.
enum : int {
    REND_TIMESINGLE = 0,
    REND_TIMESEGMENT = 1,
    REND_TIMERANGE = 2,
    REND_TIMEPICKUP = 3,
};

// Whether the render in hand is only a preview, which no effect should save.
class IRenderPreviewState {
  public:
    virtual bool IsPreview() = 0;

  protected:
    ~IRenderPreviewState() = default;
};

class IRenderPreviewQuery {
  public:
    virtual IRenderPreviewState* GetState() = 0;

  protected:
    ~IRenderPreviewQuery() = default;
};

// Interface::GetInterface's id of IRenderPreviewQuery.
constexpr DWORD RENDER_PREVIEW_QUERY_INTERFACE = 0xdae01000;

class Interface {
  public:
    // Null for an interface that the host doesn't have.
    virtual void* GetInterface(DWORD id) = 0;

    virtual LogSys* Log() = 0;
    // True when nobody is there to answer a box.
    virtual BOOL GetQuietMode(BOOL checkServerMode = TRUE) = 0;
    virtual TimeValue GetTime() = 0;
    // Name of the scene's file without its folder; empty for a scene that was never saved.
    virtual const MCHAR* GetCurFileName() = 0;
    // The host's main window; null without windows.
    virtual HWND GetMAXHWnd() = 0;

    // One of the host's folders by an APP_ number (IPathConfigMgr.h): absolute; empty for a number
    // that isn't set up. Valid until the folders change.
    virtual const MCHAR* GetDir(int which) = 0;

    // Null when none is assigned.
    virtual Renderer* GetCurrentRenderer() = 0;
    virtual int GetRendTimeType() = 0;
    // Added to the frame number in file names, for a segment or a range.
    virtual int GetRendFileNumberBase() = 0;
    virtual int GetRendWidth() = 0;
    virtual int GetRendHeight() = 0;
    // The file that the frame itself goes to, and whether it is written.
    virtual BitmapInfo& GetRendFileBI() = 0;
    virtual BOOL GetRendSaveFile() = 0;
    virtual void SetRendSaveFile(BOOL on) = 0;
    // Whether render effects run at all.
    virtual BOOL GetRendEffects() = 0;
    // Whether hidden objects are rendered.
    virtual BOOL GetRendHidden() = 0;
    // The render elements of a set of settings, and of the one that is current; null when there are
    // none.
    virtual IRenderElementMgr* GetRenderElementMgr(RenderSettingID id) = 0;
    virtual IRenderElementMgr* GetCurRenderElementMgr() = 0;

    // The scene's layers; null when the host has no scene.
    virtual ILayerManager* GetLayerManager() = 0;

    // A new object of a class that the host knows, to be destroyed with DeleteThis; null for one
    // that it doesn't. A target (REF_TARGET_CLASS_ID) that was referred to is the host's: it goes
    // when the last reference to it is dropped.
    virtual void* CreateInstance(SClass_ID superID, Class_ID classID) = 0;
    // The scene was changed and wants saving.
    virtual void SetSaveRequired() = 0;

    // The node that all others hang from; never null.
    virtual INode* GetRootNode() = 0;

    virtual int NumEffects() = 0;
    virtual Effect* GetEffect(int index) = 0;

    virtual void AbortRender() = 0;
    virtual BOOL CheckForRenderAbort() = 0;

  protected:
    ~Interface() = default;
};

// The host's own; lives as long as the process.
Interface* GetCOREInterface();

// Compares names without regard to case, and digits in them by the numbers' values: "Box2" comes
// before "box10". Below, equal to or above 0.
int MaxAlphaNumCompI(const MCHAR* left, const MCHAR* right);

// `*` in the pattern stands for any run of characters, `?` for one.
bool MatchPattern(const MSTR& text, const MSTR& pattern, bool ignoreCase = true);
