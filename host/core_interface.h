// The core interface over the running application's settings. It has no state of its own, so a
// pointer to it stays good when the application starts afresh.
#pragma once

#include <maxapi.h>

namespace host {

class CoreInterface final : public IObjParam {
  public:
    void* GetInterface(DWORD id) override;
    LogSys* Log() override;
    BOOL GetQuietMode(BOOL checkServerMode) override;
    TimeValue GetTime() override;
    const MCHAR* GetCurFileName() override;
    HWND GetMAXHWnd() override;
    const MCHAR* GetDir(int which) override;
    Renderer* GetCurrentRenderer() override;
    int GetRendTimeType() override;
    int GetRendFileNumberBase() override;
    int GetRendWidth() override;
    int GetRendHeight() override;
    BitmapInfo& GetRendFileBI() override;
    BOOL GetRendSaveFile() override;
    void SetRendSaveFile(BOOL on) override;
    BOOL GetRendEffects() override;
    BOOL GetRendHidden() override;
    // Null for an id that isn't there.
    IRenderElementMgr* GetRenderElementMgr(RenderSettingID id) override;
    IRenderElementMgr* GetCurRenderElementMgr() override;
    ILayerManager* GetLayerManager() override;
    // Of a target (REF_TARGET_CLASS_ID) the pointer is a ReferenceTarget's.
    void* CreateInstance(SClass_ID superID, Class_ID classID) override;
    void SetSaveRequired() override;
    INode* GetRootNode() override;
    int NumEffects() override;
    // Null for an index out of range.
    Effect* GetEffect(int index) override;
    void AbortRender() override;
    BOOL CheckForRenderAbort() override;
    int GetSelNodeCount() override;
    INode* GetSelNode(int index) override;
    void SetPickMode(PickModeCallback* callback) override;
    void ClearPickMode() override;
    INode* PickNode(HWND hWnd, IPoint2 point, PickNodeCallback* filter) override;
    bool DoMaxSaveAsDialog(HWND parentWnd, const MSTR& title, MSTR& filename, MSTR& initialDir,
                           FilterList& filterList) override;
};

CoreInterface& TheCoreInterface();

}  // namespace host
