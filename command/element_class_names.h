// The classes of render elements, by the names that scene files call them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <plugapi.h>

namespace command {

// "DiffuseDirect", "VRayReflection", "Beauty Element"; nothing for a name that isn't there.
std::optional<Class_ID> ElementClassOf(std::string_view name);
std::vector<std::string> ElementClassNames();

}  // namespace command
