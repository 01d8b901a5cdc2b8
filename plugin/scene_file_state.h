// Whether the host has a scene file in its hands, and whose settings the user sees: what the panel
// looks at before it asks the user anything.
#pragma once

#include <notify.h>

namespace effect {
class PSDOutput;
}

namespace plugin {

bool IsOpeningSceneFile();
bool IsSavingSceneFile();

// Follows the host while someone listens. The states stay as they are when nobody does any more,
// and when the scene is reset. `listener` is what the registrations carry; it isn't looked at.
void OnSceneFileNotification(void* listener, NotifyInfo* info);
void ListenToSceneFiles(void* listener);
void StopListeningToSceneFiles(void* listener);

// The effect whose panel was opened last; null before, and when it is gone.
effect::PSDOutput* CurrentInstance();
void SetCurrentInstance(effect::PSDOutput* effect);

}  // namespace plugin
