// What the host broadcasts.
#pragma once

#include "maxtypes.h"

constexpr int NOTIFY_SYSTEM_POST_RESET = 6;
constexpr int NOTIFY_SYSTEM_POST_NEW = 8;
// What callParam of the codes about files points to depends on the host's version: nobody looks at
// it.
constexpr int NOTIFY_FILE_POST_OPEN = 10;
// A merge has these two in place of those of opening; the second comes after a success only.
constexpr int NOTIFY_FILE_PRE_MERGE = 11;
constexpr int NOTIFY_FILE_POST_MERGE = 12;
constexpr int NOTIFY_FILE_POST_SAVE = 14;
constexpr int NOTIFY_SELECTIONSET_CHANGED = 18;
constexpr int NOTIFY_PRE_RENDER = 20;
constexpr int NOTIFY_POST_RENDER = 21;
// callParam is the frame's RenderGlobalContext*.
constexpr int NOTIFY_PRE_RENDERFRAME = 22;
constexpr int NOTIFY_POST_RENDERFRAME = 23;
// Settings of the render changed.
constexpr int NOTIFY_RENDPARAM_CHANGED = 35;
constexpr int NOTIFY_SYSTEM_SHUTDOWN = 73;
constexpr int NOTIFY_SYSTEM_STARTUP = 80;
constexpr int NOTIFY_FILE_POST_OPEN_PROCESS = 139;
constexpr int NOTIFY_FILE_PRE_OPEN_PROCESS = 173;
constexpr int NOTIFY_FILE_PRE_SAVE_PROCESS = 174;
constexpr int NOTIFY_FILE_POST_SAVE_PROCESS = 175;
constexpr int NOTIFY_GAMMA_CHANGED = 143;
// callParam is the layer, an ILayer*. A deleted one is still whole, and no longer in the scene.
constexpr int NOTIFY_LAYER_CREATED = 148;
constexpr int NOTIFY_LAYER_DELETED = 149;
constexpr int NOTIFY_LAYER_PARENT_CHANGED = 246;
// callParam is the renderer or render element, a ReferenceTarget*.
constexpr int NOTIFY_RENDERER_CHANGED = 152;
// callParam is the set's name, a const MCHAR*.
constexpr int NOTIFY_NAMED_SEL_SET_CREATED = 184;
constexpr int NOTIFY_NAMED_SEL_SET_DELETED = 185;
// callParam is a NameChange*. The set has the new name already.
constexpr int NOTIFY_NAMED_SEL_SET_RENAMED = 188;
// Around an edit of a set, which the host makes by deleting it and creating it again.
constexpr int NOTIFY_NAMED_SEL_SET_PRE_MODIFY = 202;
constexpr int NOTIFY_NAMED_SEL_SET_POST_MODIFY = 203;

struct NameChange {
    const MCHAR* oldname;
    const MCHAR* newname;
};

struct NotifyInfo {
    int intcode = 0;
    // What it points to is told with each code; null for codes that bring nothing.
    void* callParam = nullptr;
};

using NOTIFYPROC = void (*)(void* param, NotifyInfo* info);

// The same procedure, parameter and code may be registered more than once, and is then called as
// often. Returns 0 on failure.
int RegisterNotification(NOTIFYPROC proc, void* param, int code);
// Removes one registration; returns 0 when there is none. Safe inside a notification.
int UnRegisterNotification(NOTIFYPROC proc, void* param, int code);
