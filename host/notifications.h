// Who listens to what the host broadcasts.
#pragma once

#include <cstdint>
#include <vector>

#include <notify.h>

namespace host {

class Notifications {
  public:
    bool Register(NOTIFYPROC proc, void* param, int code);
    // Removes the oldest registration that fits.
    bool Unregister(NOTIFYPROC proc, void* param, int code);

    // Calls those who were registered when it began and still are, oldest first; handlers may
    // register and unregister.
    void Broadcast(int code, void* callParam);

  private:
    struct Registration {
        NOTIFYPROC proc;
        void* param;
        int code;
        std::uint64_t serial;
    };
    std::vector<Registration> registrations_;
    std::uint64_t nextSerial_ = 0;
};

// To the listeners of the running application.
void Broadcast(int code, void* callParam = nullptr);

}  // namespace host
