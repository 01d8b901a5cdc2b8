// printf for the host's characters.
#pragma once

#include <cstdarg>

#include <strclass.h>

namespace host {

// Flags, width and precision (also "*") as printf's, lengths hh h l ll j z t and I64, conversions
// d i u o x X c s f F e E g G and %%. "%s" takes a const MCHAR* (null prints "(null)"), its
// precision counts units; "%c" takes one unit. Anything else after a "%" is copied as it stands and
// takes no argument.
MSTR FormatV(const MCHAR* format, std::va_list arguments);
MSTR Format(const MCHAR* format, ...);

}  // namespace host
