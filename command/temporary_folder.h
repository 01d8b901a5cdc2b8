// A folder for files of a moment that no other process meets, and that goes with all that is in it.
#pragma once

#include <string>

namespace command {

class TemporaryFolder {
  public:
    // Below the system's folder for such files, and on POSIX systems open to the user alone.
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    // UTF-8; empty when it could not be made.
    const std::string& Path() const { return path; }
    // Then where and why not: "/tmp: Permission denied".
    const std::string& Fault() const { return fault; }

  private:
    std::string path;
    std::string fault;
};

}  // namespace command
