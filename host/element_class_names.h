// The classes of render elements, by the names that scene files call them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <plugapi.h>

namespace host {

// "DiffuseDirect", "VRayReflection", "Beauty Element"; nothing for a name that isn't there.
std::optional<Class_ID> ElementClassOf(std::string_view name);
// Empty for a class that has none.
std::string_view ElementClassName(const Class_ID& id);
std::vector<std::string> ElementClassNames();

}  // namespace host
