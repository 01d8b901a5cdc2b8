// The scene that the panel program works on: the host's, with one effect whose settings are shown.
#pragma once

#include <filesystem>
#include <string>

#include <sfx.h>

#include "host/win32/plugin_library.h"

namespace command {

struct SceneDescription;

class PanelScene {
  public:
    // Loads the effect's library and starts with an empty scene. Throws InputError. One a process.
    explicit PanelScene(const std::filesystem::path& library);

    // The first effect of the library in the scene; there always is one.
    Effect& GetEffect() const;

    // What was shown of an effect before is of one that is gone. Paths are UTF-8. Open throws
    // InputError, with the scene as it was, for a file that can't be had or has a fault.
    void New();
    void Open(const std::string& path);
    // Throws InputError, with the old file as it was.
    void Save(const std::string& path);
    // Empty for a scene that has no file yet.
    const std::string& File() const { return file; }
    // Whether there is something that a file doesn't have.
    bool IsChanged() const;
    // For another program to read; the scene stays with its file. Throws InputError.
    static void WriteCopy(const std::string& path);

    // The scene's render output is this image from now on, which a document is made from. Its
    // render elements that the scene doesn't know come behind those that it has. Throws InputError,
    // with the scene as it was.
    void UseRenderFile(const std::string& path);
    // The render output; empty when there is no such file.
    std::string RenderFile() const;

  private:
    // Whether it had to be made.
    bool MakeSureOfEffect();
    static void Reopen();
    void ApplySettingsByName(const SceneDescription& scene);
    void NoteSaved();

    host::PluginLibrary library;
    std::string file;
    // The scene's text as the file has it.
    std::string saved;
};

}  // namespace command
