// The part of scene files that holds objects as the application saved them.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "host/json_value.h"
#include "host/saved_objects.h"

namespace host {

// An object takes a little text and makes a lot, and every effect looks at every selection set;
// real scenes have some thousands. Files with more are refused, and not written.
constexpr std::size_t mostObjects = 50'000;
constexpr std::size_t mostEffects = 250;
constexpr std::size_t mostSelectionSets = 50'000;

// All throw InputError.

// A whole number in the range of its type.
template <class Number>
Number ReadNumber(const JsonValue& value) {
    using Limits = std::numeric_limits<Number>;
    return static_cast<Number>(value.Whole(Limits::min(), Limits::max()));
}
// Above 0, in 32 bits.
Handle ReadHandle(const JsonValue& value);
// A list of two numbers.
Class_ID ReadClassID(const JsonValue& value);
// A text of any letters but NUL as ToExactText gives it; one that no JSON text can be is an object
// with its UTF-16 units.
std::string ReadExactText(const JsonValue& value);
std::vector<SavedAppData> ReadAppData(const JsonValue& list);
std::vector<SavedObject> ReadObjects(const JsonValue& list);

}  // namespace host
