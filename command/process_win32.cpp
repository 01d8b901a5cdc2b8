#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <memory>

#include "command/process.h"
#include "host/text.h"

namespace command {

// Those of main are in the system's code page, which lacks most letters.
std::vector<std::string> ProcessArguments(int, char**) {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; words && i < count; ++i)
        arguments.push_back(host::ToUtf8(words.get()[i]));
    return arguments;
}

ProcessStreams::ProcessStreams() {
    for (std::FILE* stream : {stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    // 0 without a console.
    codePage = GetConsoleOutputCP();
    if (codePage != 0) SetConsoleOutputCP(CP_UTF8);
}

// The console belongs to the shell too.
ProcessStreams::~ProcessStreams() {
    std::fflush(stdout);
    std::fflush(stderr);
    if (codePage != 0) SetConsoleOutputCP(codePage);
}

}  // namespace command
