// A file that can't be read, or not as asked.
#pragma once

#include <stdexcept>

namespace host {

// The text names the file, the fault, and what to do about it, in one line.
class InputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace host
