#include <csignal>

#include "command/process.h"

namespace command {

std::vector<std::string> ProcessArguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

ProcessStreams::ProcessStreams() {
    // A write beyond a limit of the file's size then fails like any other, and is told.
    std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace command
