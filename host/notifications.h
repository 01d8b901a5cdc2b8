// Who listens to what the host broadcasts.
#pragma once

#include <cstdint>
#include <vector>

#include <notify.h>

namespace host {

class Notifications {
  public:
    struct Registration {
        NOTIFYPROC proc;
        void* param;
        int code;
        std::uint64_t serial;
    };

    bool Register(NOTIFYPROC proc, void* param, int code);
    // Removes the oldest registration that fits.
    bool Unregister(NOTIFYPROC proc, void* param, int code);

    // Calls those who were registered when it began and still are, oldest first; handlers may
    // register and unregister.
    void Broadcast(int code, void* callParam);

    // While one of these lives nothing is broadcast.
    class Silence {
      public:
        explicit Silence(Notifications& notifications) : count_(notifications.silences_) {
            ++count_;
        }
        ~Silence() { --count_; }
        Silence(const Silence&) = delete;
        Silence& operator=(const Silence&) = delete;

      private:
        int& count_;
    };

    // Oldest first.
    const std::vector<Registration>& Registrations() const { return registrations_; }

  private:
    std::vector<Registration> registrations_;
    std::uint64_t nextSerial_ = 0;
    int silences_ = 0;
};

// To the listeners of the running application.
void Broadcast(int code, void* callParam = nullptr);

}  // namespace host
