// Text files that stand beside an image and are named in it.
#pragma once

#include <cstddef>
#include <string>

namespace command {

constexpr std::size_t largestSidecar = std::size_t{64} << 20;

// The content of `name`, a path relative to the folder of the image `imagePath`. What an image
// names must not make the program read elsewhere: a name that leaves the folder (absolute, with
// "..", with a backslash, or by a link) is refused. Throws InputError with the fault alone ("is
// missing"), without any name in front.
std::string ReadSidecar(const std::string& imagePath, const std::string& name);

}  // namespace command
