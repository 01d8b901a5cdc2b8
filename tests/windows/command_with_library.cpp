// The command, with the effect of a plug-in library that is loaded as the application does it:
//
//     command_with_library LIBRARY ARGUMENT...
#include <cstdio>
#include <string>
#include <vector>

#include "command/effect_library.h"
#include "command/native_path.h"
#include "command/process.h"
#include "command/run.h"
#include "host/input_error.h"
#include "host/win32/plugin_library.h"

int main(int argc, char** argv) {
    const command::ProcessStreams streams;
    std::vector<std::string> arguments = command::ProcessArguments(argc, argv);
    if (arguments.empty()) {
        std::fputs("usage: command_with_library LIBRARY ARGUMENT...\n", stderr);
        return command::exitUsage;
    }
    try {
        static const host::PluginLibrary library(command::Native(arguments.front()));
        command::effectLibrary = {
            .numberClasses = [] { return static_cast<int>(library.Classes().size()); },
            .classDesc = [](int number) { return library.ClassAt(number); }};
    } catch (const host::InputError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return command::exitUsage;
    }
    arguments.erase(arguments.begin());
    return command::Run(arguments, stdout, stderr);
}
