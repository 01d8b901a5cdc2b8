// The classes that the library offers to the host.
#pragma once

#include <iparamb2.h>

#include <span>

namespace plugin {

// In the order of LibClassDesc's numbers. They live as long as the library.
std::span<ClassDesc* const> ClassDescriptors();

}  // namespace plugin
