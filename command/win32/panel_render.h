// A render of the panel program: the command at work on a copy of the scene.
#pragma once

#include <memory>
#include <string>

#include "command/temporary_folder.h"
#include "command/win32/child_process.h"

namespace command {

// Paths are UTF-8.
struct PanelRenderFiles {
    // The command.
    std::string program;
    // The render file.
    std::string input;
    std::string document;
    // What messages call the scene.
    std::string sceneName;
};

// The document is written beside its place and moved there when it is whole, so that a render that
// is stopped or fails leaves the old one.
class PanelRender {
  public:
    // Of the application's scene. Throws InputError when it can't be started.
    explicit PanelRender(PanelRenderFiles renderFiles);
    PanelRender(const PanelRender&) = delete;
    PanelRender& operator=(const PanelRender&) = delete;
    // Stops it if it is still at work.
    ~PanelRender();

    const PanelRenderFiles& Files() const { return files; }

    // Takes what the command has said since. False when it has ended.
    bool Read() { return command->Read(); }
    // The last that the command told, "42%"; empty before the first.
    std::string Progress() const;

    struct Outcome {
        bool saved = false;
        // One line about the document when it was saved.
        std::string said;
        // Faults, or warnings when it was saved; the first of many.
        std::string told;
    };
    // Once Read answered false.
    Outcome End();

  private:
    // With the names that the user knows.
    std::string InUsersNames(std::string text) const;

    PanelRenderFiles files;
    TemporaryFolder folder;
    std::string sceneCopy;
    // Where the document is written; empty when that is its own place.
    std::string unfinished;
    std::unique_ptr<ChildProcess> command;
};

// The first lines of a text, and how many more it has.
std::string FirstLines(const std::string& text, std::size_t most);

}  // namespace command
