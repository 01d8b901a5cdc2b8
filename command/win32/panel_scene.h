// The scene that the panel program works on: the host's, with one effect whose settings are shown.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <sfx.h>

#include "command/element_setting.h"
#include "command/passes.h"
#include "host/render_element.h"
#include "host/scene_description.h"
#include "host/win32/plugin_library.h"

namespace command {

struct SceneDescription;

class PanelScene {
  public:
    // Loads the effect's library and starts with an empty scene. Throws InputError. One at a time;
    // the application's scene goes with it.
    explicit PanelScene(const std::filesystem::path& library);
    PanelScene(const PanelScene&) = delete;
    PanelScene& operator=(const PanelScene&) = delete;
    ~PanelScene() = default;

    // The library's effect in the scene that saves the document: the first that is on, else the
    // first. There always is one.
    Effect& GetEffect() const;

    // What was shown of an effect before is of one that is gone. Paths are UTF-8. Open throws
    // InputError, with the scene as it was, for a file that can't be had or has a fault. Neither
    // keeps how the scene before was rendered.
    void New();
    void Open(const std::string& path);
    // Throws InputError, with the old file as it was.
    void Save(const std::string& path);
    // Empty for a scene that has no file yet.
    const std::string& File() const { return file; }
    // Whether there is something that a file doesn't have. A scene that can't be written counts as
    // changed.
    bool IsChanged() const;
    // The scene as it is now is no change of the user's.
    void TakeAsUnchanged();
    // For another program to read; the scene stays with its file. Throws InputError.
    static void WriteCopy(const std::string& path);

    // The scene's render output is this image from now on, with the size and the renderer that the
    // file tells; a document is made from it. Its render elements that the scene doesn't know come
    // behind those that it has. Throws InputError, with the scene as it was.
    void UseRenderFile(const std::string& path);
    // The render output, which may not be there; empty for none.
    static std::string RenderOutput();
    // Where its document goes; empty when it has no name.
    std::string DocumentPath() const;
    // The effect's own checks before a render, which may ask the user. False when the answer is to
    // render nothing.
    bool MayRender() const;

  private:
    // All that is of the library's classes goes while the library is there.
    struct SceneOfApplication {
        SceneOfApplication() = default;
        SceneOfApplication(const SceneOfApplication&) = delete;
        SceneOfApplication& operator=(const SceneOfApplication&) = delete;
        ~SceneOfApplication();
    };

    // Whether it had to be made.
    bool MakeSureOfEffect() const;
    void Complete(const SceneDescription& scene) const;
    void ApplySettingsByName(const SceneDescription& scene) const;
    std::pair<host::RenderElement*, bool> ElementOf(const PassElement& pass);

    host::PluginLibrary library;
    SceneOfApplication ofApplication;
    std::string file;
    // The scene's text as the file has it.
    std::string saved;
    // Of a file that names settings, for render elements that come later.
    std::vector<ElementSetting> elementSettings;
    // Render elements of such a file that no render file has had yet.
    std::vector<host::SceneElement> withoutPass;
};

}  // namespace command
