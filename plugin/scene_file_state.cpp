#include "plugin/scene_file_state.h"

#include "effect/psd_output.h"

namespace plugin {
namespace {

bool openingSceneFile = false;
bool savingSceneFile = false;
effect::PSDOutput* currentInstance = nullptr;

struct FlagChange {
    int code;
    bool* flag;
    bool value;
};

constexpr FlagChange flagChanges[] = {
    {NOTIFY_FILE_PRE_OPEN_PROCESS, &openingSceneFile, true},
    {NOTIFY_FILE_POST_OPEN_PROCESS, &openingSceneFile, false},
    {NOTIFY_FILE_PRE_SAVE_PROCESS, &savingSceneFile, true},
    {NOTIFY_FILE_POST_SAVE_PROCESS, &savingSceneFile, false},
};

}  // namespace

bool IsOpeningSceneFile() {
    return openingSceneFile;
}

bool IsSavingSceneFile() {
    return savingSceneFile;
}

void OnSceneFileNotification(void*, NotifyInfo* info) {
    for (const FlagChange& change : flagChanges) {
        if (info && change.code == info->intcode) *change.flag = change.value;
    }
}

void ListenToSceneFiles(void* listener) {
    for (const FlagChange& change : flagChanges)
        RegisterNotification(OnSceneFileNotification, listener, change.code);
}

void StopListeningToSceneFiles(void* listener) {
    for (const FlagChange& change : flagChanges)
        UnRegisterNotification(OnSceneFileNotification, listener, change.code);
}

effect::PSDOutput* CurrentInstance() {
    return effect::PSDOutput::IsLiving(currentInstance) ? currentInstance : nullptr;
}

void SetCurrentInstance(effect::PSDOutput* effect) {
    currentInstance = effect;
}

}  // namespace plugin
