// The veltrane command.
#include <csignal>
#include <cstdio>

#include "command/run.h"

int main(int argc, char** argv) {
#ifdef SIGXFSZ
    // A write beyond a limit of the file's size then fails like any other, and is told.
    std::signal(SIGXFSZ, SIG_IGN);
#endif
    return command::Run({argv + (argc > 0 ? 1 : 0), argv + argc}, stdout, stderr);
}
