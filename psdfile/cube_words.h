// What stands in a line of a .cube file: words and numbers with blanks between them, whatever the
// locale is.
#pragma once

#include <string_view>

namespace psdfile {

// What std::isspace takes in the "C" locale.
inline bool IsCubeBlank(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string_view WithoutLeadingBlanks(std::string_view text);

// Up to the next blank, and empty at the end of the text. What is taken is cut off the text, with
// the blanks before it.
std::string_view TakeWord(std::string_view& text);

// A word that is all one number, with either sign or none, the decimals behind a point. Names of
// infinities and the like are none, nor is what the type can't hold. On false the text stays.
bool TakeNumber(std::string_view& text, double& number);
bool TakeNumber(std::string_view& text, int& number);

}  // namespace psdfile
