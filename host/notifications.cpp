#include "host/notifications.h"

#include <algorithm>

#include "host/application.h"

namespace host {

bool Notifications::Register(NOTIFYPROC proc, void* param, int code) {
    if (!proc) {
        return false;
    }
    registrations_.push_back({proc, param, code, nextSerial_++});
    return true;
}

bool Notifications::Unregister(NOTIFYPROC proc, void* param, int code) {
    const auto found = std::find_if(
        registrations_.begin(), registrations_.end(), [&](const Registration& registration) {
            return registration.proc == proc && registration.param == param &&
                   registration.code == code;
        });
    if (found == registrations_.end()) {
        return false;
    }
    registrations_.erase(found);
    return true;
}

void Notifications::Broadcast(int code, void* callParam) {
    if (silences_ > 0) return;
    const std::vector<Registration> atStart = registrations_;
    for (const Registration& listener : atStart) {
        const auto isSame = [&](const Registration& other) {
            return other.serial == listener.serial;
        };
        if (listener.code == code &&
            std::any_of(registrations_.begin(), registrations_.end(), isSame)) {
            NotifyInfo info;
            info.intcode = code;
            info.callParam = callParam;
            listener.proc(listener.param, &info);
        }
    }
}

void Broadcast(int code, void* callParam) {
    App().notifications.Broadcast(code, callParam);
}

}  // namespace host

int RegisterNotification(NOTIFYPROC proc, void* param, int code) {
    return host::App().notifications.Register(proc, param, code);
}

int UnRegisterNotification(NOTIFYPROC proc, void* param, int code) {
    return host::App().notifications.Unregister(proc, param, code);
}
