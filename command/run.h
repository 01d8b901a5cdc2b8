// The program, apart from the process around it.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace command {

constexpr int exitSaved = 0;
constexpr int exitNotSaved = 1;
constexpr int exitUsage = 2;

// `arguments` without the program's name; the exit status. Throws nothing.
int Run(const std::vector<std::string>& arguments, std::FILE* out, std::FILE* err);

}  // namespace command
