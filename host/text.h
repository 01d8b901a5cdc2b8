// Crosses the border between the host's UTF-16 and the UTF-8 of files, terminals and libraries.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <strclass.h>

namespace host {

// What isn't valid (malformed or overlong sequences, surrogates, above U+10FFFF) becomes U+FFFD,
// one for each sequence that begins right and breaks off, and one for each stray byte.
MSTR FromUtf8(std::string_view text);

// A lone surrogate becomes U+FFFD. Null gives the empty string.
std::string ToUtf8(const MCHAR* text);

// True when every surrogate has its partner.
bool IsValidUtf16(const MCHAR* text);

// The path as the standard library takes it.
std::filesystem::path ToNativePath(const MCHAR* path);
MSTR FromNativePath(const std::filesystem::path& path);

// Equal but for the case of the letters A to Z, as class names and script names are compared.
bool EqualIgnoringAsciiCase(const MCHAR* left, const MCHAR* right);

}  // namespace host
