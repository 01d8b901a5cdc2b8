// What the user does with whole scenes: new, open, save, merge. The application's scene, render
// elements and effects change, its undo steps are forgotten (not by saving), and listeners are
// told. Classes, paths, log, boxes and what is registered with the application stay.
#pragma once

#include <functional>
#include <string>

#include "host/scene_description.h"

namespace host {

// All goes but the settings of the application: NOTIFY_SYSTEM_POST_NEW or ..._RESET comes after it.
// The render's settings and its renderer stay; reset puts them back to their start too, and the
// frame rate. Time is 0 then, and the scene has no file.
void NewScene();
void ResetScene();

// Paths are UTF-8. Opening and merging throw InputError, with the scene as it was, for a file that
// can't be had or has a fault. Around opening NOTIFY_FILE_PRE_OPEN_PROCESS and, after a failure
// too, NOTIFY_FILE_POST_OPEN_PROCESS, with the path; NOTIFY_FILE_POST_OPEN before the latter when a
// file was opened and its post-load callbacks have run. Of what opening puts into the scene nothing
// else is broadcast but NOTIFY_RENDPARAM_CHANGED. Opening takes the file's name as the scene's;
// settings of the render that the file doesn't have, and its renderer, are as after ResetScene.
void OpenScene(const std::string& path);
// The same with a file that was read already, whose path the description has. `complete` may add to
// the scene when all else is in; what it throws passes, with the scene as it was.
void OpenScene(const SceneDescription& scene, const std::function<void()>& complete = {});
// Adds what is in the file to the scene, but for the render's settings. Nodes and layers whose
// names are taken come under new names ("Box" as "Box001"); so do selection sets. Nodes whose
// render IDs are taken get others of their own (Scene::AssignRenderIDs). Listeners hear of layers
// and sets as of any that the user makes, between NOTIFY_FILE_PRE_MERGE and NOTIFY_FILE_POST_MERGE.
void MergeScene(const std::string& path);

// Writes a file beside `path` and moves it into place (host/whole_file.h), so that `path` is the
// old file or the new one and never half. Throws InputError, with the old file as it was, when it
// can't be written. Around it NOTIFY_FILE_PRE_SAVE_PROCESS and, after a failure too,
// NOTIFY_FILE_POST_SAVE_PROCESS; NOTIFY_FILE_POST_SAVE before the latter after a success, which
// also ends Settings::saveRequired and gives the scene the file's name.
void SaveScene(const std::string& path);

}  // namespace host
