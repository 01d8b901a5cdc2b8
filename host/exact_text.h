// The host's texts in UTF-8 without loss: a lone surrogate stands as the three bytes that it would
// have if it were a character, which no UTF-8 has. For what must come back as it was.
#pragma once

#include <string>
#include <string_view>

#include <strclass.h>

namespace host {

// Null gives the empty text.
std::string ToExactText(const MCHAR* text);
// Other bytes that aren't UTF-8 become U+FFFD, as in FromUtf8.
MSTR FromExactText(std::string_view text);

// Whether the text is to be written as UTF-16 units, since it holds a lone surrogate.
bool HasLoneSurrogate(std::string_view exactText);

}  // namespace host
