// What the host broadcasts.
#pragma once

#include "maxtypes.h"

constexpr int NOTIFY_PRE_RENDER = 20;
constexpr int NOTIFY_POST_RENDER = 21;
// callParam is the frame's RenderGlobalContext*.
constexpr int NOTIFY_PRE_RENDERFRAME = 22;
constexpr int NOTIFY_POST_RENDERFRAME = 23;

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
