// What the user may have meant by a name that isn't there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

// Number of letters to insert, delete or replace, without regard to the case of A to Z.
std::size_t EditDistance(std::string_view left, std::string_view right);

// At most `count` of `names`, nearest first and at least one (of any); names that share less than
// about half of `wanted` are left out. One that contains `wanted` counts as near.
std::vector<std::string> NearestNames(std::string_view wanted, std::vector<std::string> names,
                                      std::size_t count = 3);

// "a, b, c".
std::string Joined(const std::vector<std::string>& names);

}  // namespace host
