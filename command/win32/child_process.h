// Another program at work, and what it says so far, without a thread that waits for it.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace command {

class ChildProcess {
  public:
    // The program and its arguments, UTF-8. Without a window of its own. It ends with this process,
    // however that ends. Throws InputError when it can't be started.
    explicit ChildProcess(const std::vector<std::string>& words);
    // Ends the program if it is still at work, and those that it started.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Reads what was said since. False when the program has ended and all was read.
    bool Read();
    // All that was said so far.
    const std::string& Output() const { return output.text; }
    const std::string& Errors() const { return errors.text; }
    // Of the program; it goes with this.
    HANDLE Process() const { return process.get(); }
    // Once Read answered false.
    DWORD ExitCode() const { return exitCode; }

  private:
    struct CloseHandleOf {
        void operator()(HANDLE handle) const { CloseHandle(handle); }
    };
    using Handle = std::unique_ptr<void, CloseHandleOf>;
    struct Stream {
        Handle reading;
        std::string text;
        bool ended = false;

        // The end that the program writes to, which it inherits.
        Handle Open();
        void Read();
    };

    // Holds the program, and ends it when it is closed; null where the system refuses one.
    Handle job;
    Handle process;
    Stream output;
    Stream errors;
    DWORD exitCode = 0;
};

// The words as one line that a program takes apart into them again.
std::wstring CommandLineOf(const std::vector<std::string>& words);

}  // namespace command
