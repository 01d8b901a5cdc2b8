// The folder that the system's own call for temporary files answers with.
#pragma once

#include <optional>
#include <string>

namespace command {

// On Windows the effect asks the system where temporary files go, in place of the host's settings;
// while this lives the answer is `folder`. Empty changes nothing. Elsewhere the settings are asked,
// and this does nothing. Single-threaded.
class SystemTemporaryFolder {
  public:
#ifdef _WIN32
    explicit SystemTemporaryFolder(const std::string& folder);
    ~SystemTemporaryFolder();
#else
    explicit SystemTemporaryFolder(const std::string&) {}
#endif
    SystemTemporaryFolder(const SystemTemporaryFolder&) = delete;
    SystemTemporaryFolder& operator=(const SystemTemporaryFolder&) = delete;

#ifdef _WIN32
  private:
    bool changed = false;
    std::optional<std::wstring> before;
#endif
};

}  // namespace command
