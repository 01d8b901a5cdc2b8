// The name of a layer, set or channel in both forms that a document holds.
#pragma once

#include <maxtypes.h>

#include <string>

#include "effect/text.h"

namespace effect {

class LayerName {
  public:
    explicit LayerName(const MCHAR* text) : ansi(AnsiText(text)), wide(WideText(text)) {}
    const char* Ansi() const { return ansi.c_str(); }
    const char16_t* Wide() const { return wide.c_str(); }

  private:
    std::string ansi;
    std::u16string wide;
};

// The name that the user gave, or else the one by default. Null counts as empty.
inline LayerName NameOr(const MCHAR* given, const MCHAR* byDefault) {
    return LayerName(given && *given ? given : byDefault);
}

}  // namespace effect
