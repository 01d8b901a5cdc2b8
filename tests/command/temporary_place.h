// Another place for temporary files while it lives.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

class TemporaryPlace {
  public:
#ifdef _WIN32
    static constexpr const char* variable = "TMP";
#else
    static constexpr const char* variable = "TMPDIR";
#endif

    explicit TemporaryPlace(const std::string& path) {
        if (const char* value = std::getenv(variable)) before = value;
        Set(path.c_str());
    }
    TemporaryPlace(const TemporaryPlace&) = delete;
    TemporaryPlace& operator=(const TemporaryPlace&) = delete;
    ~TemporaryPlace() {
        Set(before ? before->c_str() : nullptr);
    }

  private:
    // Null takes it away.
    static void Set(const char* value) {
#ifdef _WIN32
        SetEnvironmentVariableA(variable, value);
#else
        value ? ::setenv(variable, value, 1) : ::unsetenv(variable);
#endif
    }

    std::optional<std::string> before;
};
