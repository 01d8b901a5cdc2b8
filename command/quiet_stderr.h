// Keeps what image libraries print for themselves off the user's terminal.
#pragma once

namespace command {

// For its lifetime what is written to the standard error stream is lost. Single-threaded.
class QuietStderr {
  public:
    QuietStderr();
    QuietStderr(const QuietStderr&) = delete;
    QuietStderr& operator=(const QuietStderr&) = delete;
    ~QuietStderr();

  private:
    // A copy of the stream's descriptor; -1 when there was none.
    int kept = -1;
};

}  // namespace command
