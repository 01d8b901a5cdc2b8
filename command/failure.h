// What goes wrong for reasons that the user can do something about. Texts name the file or the
// option, the fault, and what to do about it, in one line.
#pragma once

#include <stdexcept>

#include "host/input_error.h"

namespace command {

// The command line can't be understood: exit status 2.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A render file can't be read, or not as asked: exit status 1.
using host::InputError;

}  // namespace command
