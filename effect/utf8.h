// Text of an outside party, which speaks UTF-8, in the host's form.
#pragma once

#include <maxtypes.h>

#include <string>

namespace effect {

// Each byte that belongs to no character becomes U+FFFD. Null gives the empty string.
std::basic_string<MCHAR> FromUtf8(const char* text);

}  // namespace effect
