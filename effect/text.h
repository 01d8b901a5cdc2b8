// Text across the border between the host's UTF-16 and the document's two kinds of names.
#pragma once

#include <maxtypes.h>
#include <strclass.h>

#include <string>

namespace effect {

// In the system's ANSI code page on Windows, in Windows-1252 elsewhere; "?" for what it lacks. Null
// gives the empty string.
std::string AnsiText(const MCHAR* text);

std::u16string WideText(const MCHAR* text);

// In decimal digits.
MSTR NumberText(int number);

}  // namespace effect
