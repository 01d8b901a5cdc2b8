#include "command/quiet_stderr.h"

#include <cstdio>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace command {
namespace {

#ifdef _WIN32
constexpr int errorDescriptor = 2;
int OpenNull() {
    return _open("NUL", _O_WRONLY);
}
int Duplicate(int descriptor) {
    return _dup(descriptor);
}
void Replace(int by, int descriptor) {
    _dup2(by, descriptor);
}
void Close(int descriptor) {
    _close(descriptor);
}
#else
constexpr int errorDescriptor = STDERR_FILENO;
int OpenNull() {
    return open("/dev/null", O_WRONLY | O_CLOEXEC);
}
int Duplicate(int descriptor) {
    return fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
}
void Replace(int by, int descriptor) {
    dup2(by, descriptor);
}
void Close(int descriptor) {
    close(descriptor);
}
#endif

}  // namespace

QuietStderr::QuietStderr() {
    std::fflush(stderr);
    kept = Duplicate(errorDescriptor);
    if (kept < 0) return;
    const int null = OpenNull();
    if (null < 0) return;
    Replace(null, errorDescriptor);
    Close(null);
}

QuietStderr::~QuietStderr() {
    if (kept < 0) return;
    std::fflush(stderr);
    Replace(kept, errorDescriptor);
    Close(kept);
}

}  // namespace command
