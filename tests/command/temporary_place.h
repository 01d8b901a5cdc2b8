// Another place for temporary files while it lives.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

class TemporaryPlace {
  public:
    explicit TemporaryPlace(const std::string& path) {
        if (const char* value = std::getenv("TMPDIR")) before = value;
        ::setenv("TMPDIR", path.c_str(), 1);
    }
    TemporaryPlace(const TemporaryPlace&) = delete;
    TemporaryPlace& operator=(const TemporaryPlace&) = delete;
    ~TemporaryPlace() {
        if (before) {
            ::setenv("TMPDIR", before->c_str(), 1);
        } else {
            ::unsetenv("TMPDIR");
        }
    }

  private:
    std::optional<std::string> before;
};
