// The user properties of a node: lines of text, "name = value" each.
#pragma once

#include <optional>

#include <strclass.h>

namespace host {

// Names and values are compared without regard to case and without the blanks around them; the
// first line of the name counts. "true", "yes", "on" and whole numbers but 0 are true, and any
// other value is false. Nothing when no line has the name.
std::optional<bool> FindUserPropertyBool(const MSTR& properties, const MSTR& name);

}  // namespace host
