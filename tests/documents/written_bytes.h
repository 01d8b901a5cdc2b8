// What a part writes, as text that a failed comparison shows readably.
#pragma once

#include <string>
#include <string_view>

#include "psdfile/part.h"

namespace psdfile {

// "8BIM" is 38 42 49 4D.
std::string Hex(std::string_view bytes);

// The bytes that `hex` spells, blanks between them or not.
std::string FromHex(std::string_view hex);

std::string WrittenBytes(PSDPart& part, bool psb = false);

std::string WrittenHex(PSDPart& part, bool psb = false);
std::string WrittenHex(PSDPart&& part, bool psb = false);

}  // namespace psdfile
