// This thread's queue of messages.
#pragma once

#include <windows.h>

#include <functional>

// All messages that wait in the queue, and those that these cause.
inline void PumpMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// Until the condition holds; false when it doesn't within a minute.
inline bool PumpUntil(const std::function<bool()>& holds) {
    for (int tries = 0; tries < 12000; ++tries) {
        PumpMessages();
        if (holds()) return true;
        Sleep(5);
    }
    return false;
}
