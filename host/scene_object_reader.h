// The part of scene files that holds objects as the application saved them.
#pragma once

#include <string>
#include <vector>

#include "host/json_value.h"
#include "host/saved_objects.h"

namespace host {

// All throw InputError.

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
