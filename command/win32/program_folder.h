// Where the running program lies, and what the files are that it is given.
#pragma once

#include <filesystem>
#include <string>

namespace command {

// Of the program's file.
std::filesystem::path ProgramFolder();

// Of the configuration file (host paths, APP_PLUGCFG_DIR): what the user saves as default, and how
// high lists are, is lost without it. One that can't be made is nobody's fault here.
void MakeConfigurationFolder();

// By its name, in letters of either case; a path is UTF-8.
bool IsSceneFile(const std::string& path);

}  // namespace command
