// Where a path really leads.
#pragma once

#include <filesystem>
#include <system_error>

namespace command {

// Absolute, with every link followed. Sets `fault`, and is empty, for what isn't there or can't be
// looked at.
std::filesystem::path WithoutLinks(const std::filesystem::path& path, std::error_code& fault);

}  // namespace command
