// What the program needs of the process around it.
#pragma once

#include <string>
#include <vector>

namespace command {

// Without the program's name, as UTF-8. What isn't Unicode in them stays as it is on POSIX systems,
// and becomes U+FFFD on Windows.
std::vector<std::string> ProcessArguments(int argc, char** argv);

// Readies the standard streams while it lives, so that they take UTF-8, and what is written to them
// arrives byte for byte.
class ProcessStreams {
  public:
    ProcessStreams();
    ProcessStreams(const ProcessStreams&) = delete;
    ProcessStreams& operator=(const ProcessStreams&) = delete;

#ifdef _WIN32
    ~ProcessStreams();

  private:
    // What the console had before; 0 without one.
    unsigned codePage = 0;
#endif
};

}  // namespace command
