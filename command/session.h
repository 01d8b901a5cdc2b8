// The application set up for one save, with the effect in it; put back to its start when the save
// is over.
#pragma once

#include <iparamb2.h>
#include <sfx.h>

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "command/arguments.h"
#include "command/look.h"
#include "command/save_plan.h"
#include "command/scene_file.h"
#include "command/setting.h"
#include "host/node.h"
#include "host/undo.h"

namespace command {

// Of gammaCorrectConfig and colorCorrectConfig.
constexpr int byAdjustmentLayer = 3;

class Session {
  public:
    // `scene` may be null. The effect is the one that is saved in it, or else a new one; settings
    // by name of the scene stand above what is saved, and the user's `settings` above these.
    // `renderer` is the class of the renderer that made the frames; Class_ID() for none that
    // effects know. Throws InputError for the file of --lut, and for a scene whose objects can't be
    // made or whose effects leave open which one saves the document.
    Session(const SaveArguments& arguments, const SavePlan& plan,
            const std::vector<Setting>& settings, const SceneDescription* scene, Class_ID renderer);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() = default;

    Effect& GetEffect() const { return *effect; }
    // Null without --lut.
    Look* GetLook() const { return look.get(); }
    // The effect makes a layer of the look, if it can, or else lays it over the pixels. Both are
    // false when the document is to be without it.
    bool IsLookInLayer() const;
    bool IsLookInPixels() const;
    IParamBlock2& Block() const { return *block; }
    // Of the scene, in the order of SceneDescription::nodes.
    const std::vector<host::Node*>& SceneNodes() const { return nodes; }

    static ParamID IdOf(std::string_view name);
    // Of a document that is named after the render output. `effect` is the effect's own block.
    static const char* SuffixOf(IParamBlock2& effect);
    int GetInt(std::string_view name) const { return block->GetInt(IdOf(name)); }
    // Whether the user or the scene file set the parameter. One that is saved with its default
    // counts as not set.
    bool IsGiven(std::string_view name) const;
    // Unless it is given. `text` as after "=" in --set.
    void SetUnlessGiven(std::string_view name, const std::string& text);

    // Where the effect puts the document; empty when the numbered path is too long for the host.
    std::string DocumentPath(int frame, bool numbered) const;

  private:
    // The application at its start, before and after.
    struct Cleared {
        Cleared();
        ~Cleared();
        Cleared(const Cleared&) = delete;
        Cleared& operator=(const Cleared&) = delete;
    };

    void Set(std::string_view name, const std::string& text);
    void SetOutput(const std::string& path);
    void NoteWhatIsSaved();

    std::unique_ptr<Look> look;
    // Goes before what the application looks at.
    Cleared cleared;
    // Nobody is there to take anything back.
    host::UndoStack::Pause undoPause;
    Effect* effect = nullptr;
    IParamBlock2* block = nullptr;
    std::vector<host::Node*> nodes;
    std::set<ParamID> given;
};

}  // namespace command
