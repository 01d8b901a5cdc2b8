// Where the running program lies, and what the files are that it is given.
#pragma once

#include <filesystem>
#include <string>

namespace command {

// Of the program's file.
std::filesystem::path ProgramFolder();

// By its name, in letters of either case; a path is UTF-8.
bool IsSceneFile(const std::string& path);

}  // namespace command
