#include "host/core_interface.h"

#include "host/application.h"
#include "host/render_settings_edit.h"
#include "host/target_lifetime.h"

namespace host {
namespace {

class PreviewState final : public IRenderPreviewState {
  public:
    bool IsPreview() override { return App().settings.render.preview; }
};

class PreviewQuery final : public IRenderPreviewQuery {
  public:
    IRenderPreviewState* GetState() override { return &state_; }

  private:
    PreviewState state_;
};

}  // namespace

void* CoreInterface::GetInterface(DWORD id) {
    static PreviewQuery previewQuery;
    return id == RENDER_PREVIEW_QUERY_INTERFACE ? static_cast<IRenderPreviewQuery*>(&previewQuery)
                                                : nullptr;
}

LogSys* CoreInterface::Log() {
    return &App().log;
}
BOOL CoreInterface::GetQuietMode(BOOL /*checkServerMode*/) {
    return App().settings.quiet;
}
TimeValue CoreInterface::GetTime() {
    return App().settings.time;
}
const MCHAR* CoreInterface::GetCurFileName() {
    return App().settings.sceneFileName.data();
}
HWND CoreInterface::GetMAXHWnd() {
    return App().settings.mainWindow;
}

const MCHAR* CoreInterface::GetDir(int which) {
    return App().paths.GetDir(which);
}

Renderer* CoreInterface::GetCurrentRenderer() {
    return App().renderer.get();
}
int CoreInterface::GetRendTimeType() {
    return App().settings.render.timeType;
}
int CoreInterface::GetRendFileNumberBase() {
    return App().settings.render.fileNumberBase;
}
int CoreInterface::GetRendWidth() {
    return App().settings.render.width;
}
int CoreInterface::GetRendHeight() {
    return App().settings.render.height;
}
BitmapInfo& CoreInterface::GetRendFileBI() {
    return App().settings.render.output;
}
BOOL CoreInterface::GetRendSaveFile() {
    return App().settings.render.saveFile;
}
void CoreInterface::SetRendSaveFile(BOOL on) {
    if (App().settings.render.saveFile == on) return;
    EditRenderSettings([on](RenderSettings& settings) { settings.saveFile = on; });
}
BOOL CoreInterface::GetRendEffects() {
    return App().settings.render.effects;
}

BOOL CoreInterface::GetRendHidden() {
    return App().settings.render.hidden;
}

IRenderElementMgr* CoreInterface::GetRenderElementMgr(RenderSettingID id) {
    auto& managers = App().elements;
    const auto index = static_cast<std::size_t>(id);
    return index < managers.size() ? &managers[index] : nullptr;
}

IRenderElementMgr* CoreInterface::GetCurRenderElementMgr() {
    return GetRenderElementMgr(App().settings.render.current);
}

ILayerManager* CoreInterface::GetLayerManager() {
    return TheLayerManager();
}

void* CoreInterface::CreateInstance(SClass_ID superID, Class_ID classID) {
    void* made = App().classes.CreateInstance(superID, classID);
    if (made && superID == REF_TARGET_CLASS_ID) {
        LiveByReferences(*static_cast<ReferenceTarget*>(made));
    }
    return made;
}

void CoreInterface::SetSaveRequired() {
    App().settings.saveRequired = true;
}

INode* CoreInterface::GetRootNode() {
    return &App().scene.Root();
}

int CoreInterface::NumEffects() {
    return static_cast<int>(App().effects.size());
}

Effect* CoreInterface::GetEffect(int index) {
    return index >= 0 && index < NumEffects() ? App().effects[static_cast<std::size_t>(index)].get()
                                              : nullptr;
}

void CoreInterface::AbortRender() {
    App().settings.render.aborted = true;
}
BOOL CoreInterface::CheckForRenderAbort() {
    return App().settings.render.aborted;
}

int CoreInterface::GetSelNodeCount() {
    return static_cast<int>(App().selection.Count());
}

INode* CoreInterface::GetSelNode(int index) {
    return index >= 0 ? App().selection.At(static_cast<std::size_t>(index)) : nullptr;
}

void CoreInterface::SetPickMode(PickModeCallback* callback) {
    App().pickMode.Set(callback);
}

void CoreInterface::ClearPickMode() {
    App().pickMode.Set(nullptr);
}

INode* CoreInterface::PickNode(HWND hWnd, IPoint2 point, PickNodeCallback* filter) {
    return App().pickMode.Find(hWnd, point, filter);
}

bool CoreInterface::DoMaxSaveAsDialog(HWND parentWnd, const MSTR& title, MSTR& filename,
                                      MSTR& initialDir, FilterList& filterList) {
    const FileDialogResponder& ask = App().fileDialogs;
    if (!ask) return false;
    const std::optional<MSTR> chosen = ask({title, filename, initialDir, filterList, parentWnd});
    if (chosen) filename = *chosen;
    return chosen.has_value();
}

CoreInterface& TheCoreInterface() {
    static CoreInterface core;
    return core;
}

}  // namespace host

Interface* GetCOREInterface() {
    return &host::TheCoreInterface();
}

Interface8* GetCOREInterface8() {
    return &host::TheCoreInterface();
}
