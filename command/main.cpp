// The veltrane command.
#include <cstdio>

#include "command/process.h"
#include "command/run.h"

int main(int argc, char** argv) {
    const command::ProcessStreams streams;
    return command::Run(command::ProcessArguments(argc, argv), stdout, stderr);
}
