// The types of parameters by the names that scene files have for them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <iparamb2_types.h>

namespace host {

// Of a type without TYPE_TAB; a table has the same name. Empty for a type that no parameter has.
std::string_view NameOfParameterType(ParamType2 type);
// Without TYPE_TAB.
std::optional<ParamType2> ParameterTypeNamed(std::string_view name);
// "float, int, ...".
std::string ParameterTypeNames();

}  // namespace host
