// What the system calls the device that swallows everything.
#pragma once

#ifdef _WIN32
constexpr const char* nullDevice = "NUL";
#else
constexpr const char* nullDevice = "/dev/null";
#endif
