// The border to the libraries that read files: whatever they throw becomes one InputError.
#pragma once

#include <exception>
#include <new>
#include <stdexcept>
#include <string>

#include "command/failure.h"

namespace command {

// Calls `read` and gives its result. An InputError passes.
template <class Read>
decltype(auto) Guarded(const std::string& path, Read&& read) {
    try {
        return read();
    } catch (const InputError&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw InputError(path +
                         ": not enough memory to read it; close other programs or render "
                         "it smaller");
    } catch (const std::length_error&) {
        throw InputError(path +
                         ": not enough memory to read it; close other programs or render "
                         "it smaller");
    } catch (const std::exception& fault) {
        throw InputError(path + ": damaged or cut short (" + fault.what() +
                         "); render or copy it again");
    }
}

}  // namespace command
