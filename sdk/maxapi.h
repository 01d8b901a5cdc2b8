// The host's core interface: the render settings, the scene's effects, and what the user is asked.
#pragma once

#include "bitmap.h"
#include "ipoint2.h"
#include "log.h"
#include "render.h"
#include "tab.h"

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

class IObjParam;

// What a pick mode may pick.
class PickNodeCallback {
  public:
    virtual ~PickNodeCallback() = default;
    virtual BOOL Filter(INode* node) = 0;
};

// A view of the scene, in which the user points at nodes.
class ViewExp {
  public:
    // What the last hit test found; null for nothing.
    virtual INode* GetClosestHit() = 0;

  protected:
    ~ViewExp() = default;
};

// While the mode lasts, clicks in a view are this object's.
class PickModeCallback {
  public:
    virtual ~PickModeCallback() = default;
    // Whether there is something to pick at `m`, in pixels of the view's window.
    virtual BOOL HitTest(IObjParam* ip, HWND hWnd, ViewExp* vpt, IPoint2 m, int flags) = 0;
    // A click on what HitTest found. TRUE ends the mode.
    virtual BOOL Pick(IObjParam* ip, ViewExp* vpt) = 0;
    virtual void EnterMode(IObjParam*) {}
    virtual void ExitMode(IObjParam*) {}
    // For picking by name; null lets all nodes through.
    virtual PickNodeCallback* GetFilter() { return nullptr; }
};

// What a file dialog offers: pairs of a text ("Images (*.png)") and its pattern ("*.png").
class FilterList {
  public:
    void Append(const MCHAR* text) {
        const MSTR copy(text);
        texts_.Append(1, &copy);
    }
    int Count() const { return texts_.Count() / 2; }
    const MSTR& Text(int filter) const { return texts_[2 * filter]; }
    const MSTR& Pattern(int filter) const { return texts_[2 * filter + 1]; }

  private:
    Tab<MSTR> texts_;
};

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

    // Selected nodes, in the order in which they came to be.
    virtual int GetSelNodeCount() = 0;
    // Null for an index out of range.
    virtual INode* GetSelNode(int index) = 0;

    // Leaves the mode that is on for another. The callback isn't owned, and must live to the end
    // of its mode.
    virtual void SetPickMode(PickModeCallback* callback) = 0;
    virtual void ClearPickMode() = 0;
    // The front node at `point`, in pixels of the view's window, that the filter lets through; null
    // for none. GetClosestHit of the view gives it too.
    virtual INode* PickNode(HWND hWnd, IPoint2 point, PickNodeCallback* filter = nullptr) = 0;

  protected:
    ~Interface() = default;
};

class Interface8 : public Interface {
  public:
    // Asks the user for a file to write. `filename` is the full path of the file that the dialog
    // starts with, and then of the one chosen; `initialDir` where it starts for a name without a
    // folder. False, with `filename` as it was, when the user cancels.
    virtual bool DoMaxSaveAsDialog(HWND parentWnd, const MSTR& title, MSTR& filename,
                                   MSTR& initialDir, FilterList& filterList) = 0;

  protected:
    ~Interface8() = default;
};

class IObjParam : public Interface8 {
  protected:
    ~IObjParam() = default;
};

// The host's own; lives as long as the process.
Interface* GetCOREInterface();
Interface8* GetCOREInterface8();

// Compares names without regard to case, and digits in them by the numbers' values: "Box2" comes
// before "box10". Below, equal to or above 0.
int MaxAlphaNumCompI(const MCHAR* left, const MCHAR* right);

// `*` in the pattern stands for any run of characters, `?` for one.
bool MatchPattern(const MSTR& text, const MSTR& pattern, bool ignoreCase = true);
