// What the user does with whole scenes: new, open, save, merge. The application's scene, render
// elements and effects change, its undo steps are forgotten, and listeners are told.
#pragma once

#include <string>

namespace host {

// All goes but the settings of the application: NOTIFY_SYSTEM_POST_NEW or ..._RESET comes after it.
// Reset puts the render's settings back to their start too.
void NewScene();
void ResetScene();

// Paths are UTF-8. Opening and merging throw InputError, with the scene as it was, for a file that
// can't be had or has a fault. Around them NOTIFY_FILE_PRE_OPEN_PROCESS and
// NOTIFY_FILE_POST_OPEN_PROCESS, and NOTIFY_FILE_POST_OPEN after an opened file's post-load
// callbacks. Opening takes the file's name as the scene's.
void OpenScene(const std::string& path);
// Adds what is in the file to the scene. Nodes and layers whose names are taken come under
// new names ("Box" as "Box001"); so do selection sets.
void MergeScene(const std::string& path);

// Writes a file beside `path` and moves it into place, so that `path` is the old file or the new
// one and never half. Throws InputError, with the old file as it was, when it can't be written.
// Around it NOTIFY_FILE_PRE_SAVE_PROCESS and NOTIFY_FILE_POST_SAVE_PROCESS, and
// NOTIFY_FILE_POST_SAVE after a success, which also ends Settings::saveRequired.
void SaveScene(const std::string& path);

}  // namespace host
