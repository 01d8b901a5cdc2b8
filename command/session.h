// The application set up for one save, with the effect in it; put back to its start when the save
// is over.
#pragma once

#include <iparamb2.h>
#include <sfx.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "command/arguments.h"
#include "command/look.h"
#include "command/save_plan.h"
#include "command/scene_file.h"
#include "command/setting.h"

namespace command {

// Of gammaCorrectConfig and colorCorrectConfig.
constexpr int byAdjustmentLayer = 3;

class Session {
  public:
    // `scene` may be null; its parameters stand below the user's `settings`. `renderer` is the
    // class of the renderer that made the frames; Class_ID() for none that effects know. Throws
    // InputError for the file of --lut.
    Session(const SaveArguments& arguments, const SavePlan& plan, std::vector<Setting> settings,
            const SceneDescription* scene, Class_ID renderer);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    Effect& GetEffect() const { return *effect; }
    // Null without --lut.
    Look* GetLook() const { return look.get(); }
    // The effect makes a layer of the look, if it can, or else lays it over the pixels. Both are
    // false when the document is to be without it.
    bool IsLookInLayer() const;
    bool IsLookInPixels() const;
    IParamBlock2& Block() const { return *block; }

    static ParamID IdOf(std::string_view name);
    int GetInt(std::string_view name) const { return block->GetInt(IdOf(name)); }
    // Whether the user or the scene file set the parameter.
    bool IsGiven(std::string_view name) const;
    // Unless the user or the scene file set the parameter. `text` as after "=" in --set.
    void SetUnlessGiven(std::string_view name, const std::string& text);

    // Where the effect puts the document; empty when the numbered path is too long for the host.
    std::string DocumentPath(int frame, bool numbered) const;

  private:
    void Set(std::string_view name, const std::string& text);

    std::unique_ptr<Look> look;
    Effect* effect = nullptr;
    IParamBlock2* block = nullptr;
    // The scene file's, then the user's.
    std::vector<Setting> given;
};

}  // namespace command
