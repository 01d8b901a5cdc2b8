// What the host broadcasts.
#pragma once

#include "maxtypes.h"

constexpr int NOTIFY_PRE_RENDER = 20;
constexpr int NOTIFY_POST_RENDER = 21;
// callParam is the frame's RenderGlobalContext*.
constexpr int NOTIFY_PRE_RENDERFRAME = 22;
constexpr int NOTIFY_POST_RENDERFRAME = 23;
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
