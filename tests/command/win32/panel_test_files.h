// Where the programs of the build lie, and renders and scenes for the panel program's tests.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

#include "command/native_path.h"
#include "command/win32/program_folder.h"
#include "tests/command/pass_samples.h"

// The running test's own file.
inline std::string ThisProgram() {
    wchar_t name[4096] = {};
    GetModuleFileNameW(nullptr, name, 4096);
    return command::Utf8(std::filesystem::path(name));
}

inline std::string BuiltProgram(const char* name) {
    return command::Utf8(command::ProgramFolder() / name);
}

// A picture with two render elements.
inline std::string RenderWithElements() {
    return pass_samples::Sample()
        .Picture(0.25)
        .Color("DiffDir", 0.5, 0.25, 0.125)
        .Color("Env", 0.125, 0.5, 0.75)
        .Bytes();
}

// One of V-Ray, whose raw light and colour are in the finished light too.
inline std::string RenderOfVRay() {
    pass_samples::Sample sample(6, 3);
    sample.Picture(0.25);
    double value = 0.125;
    for (const char* name : {"VRayLighting", "VRayGlobalIllumination", "VRayRawLighting",
                             "VRayRawGlobalIllumination", "VRayDiffuseFilter", "VRayReflection"}) {
        sample.Color(name, value, 0.5, 0.25);
        value += 0.125;
    }
    return sample.Bytes();
}
