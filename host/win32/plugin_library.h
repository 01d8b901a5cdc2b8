// A plug-in library, taken in as the application does when it starts.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <plugapi.h>
#include <strclass.h>

namespace host {

// The entry points that a plug-in library exports, and nothing else.
constexpr const char* pluginEntryPoints[] = {"LibDescription", "LibNumberClasses", "LibClassDesc",
                                             "LibVersion"};

// Stays loaded to the end of the process, as objects of its classes may.
class PluginLibrary {
  public:
    // Throws InputError for a file that can't be loaded or lacks an entry point, and for a library
    // that was made for another host.
    explicit PluginLibrary(const std::filesystem::path& file);

    // Empty for a library that tells none.
    const MSTR& Description() const { return description_; }
    ULONG Version() const { return version_; }
    // In the order of the library's numbers; all that it counts.
    const std::vector<ClassDesc*>& Classes() const { return classes_; }
    // What the library itself answers, whatever the number.
    ClassDesc* ClassAt(int number) const { return classDesc_(number); }

  private:
    MSTR description_;
    ULONG version_ = 0;
    std::vector<ClassDesc*> classes_;
    ClassDesc* (*classDesc_)(int) = nullptr;
};

}  // namespace host
