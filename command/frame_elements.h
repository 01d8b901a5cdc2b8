// The render elements of a run: made in the host for the passes of each frame, with what the
// effect, the scene file and the user say of them.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "command/element_setting.h"
#include "command/passes.h"
#include "command/scene_file.h"
#include "command/session.h"
#include "host/image_bitmap.h"
#include "host/render_element.h"

namespace command {

// An element of a frame, and its image once it is read.
struct FrameElement {
    const PassElement* pass = nullptr;
    host::RenderElement* element = nullptr;
    // Its image's number while it is read.
    std::optional<std::size_t> inReading{};
    host::Owned<host::ImageBitmap> image{};
};

// Whose render elements a frame has.
struct ElementOrigin {
    // V-Ray's frame buffer has a channel for each element.
    bool inVRay = false;
    // An element without an alpha has the picture's there, in the file too.
    bool sharesAlpha = false;
};

// What the effect's own settings of a new element, in `block`, don't know.
void FitToPass(const PassElement& pass, ElementOrigin origin, IParamBlock2& block);

class FrameElements {
  public:
    // The session and the scene, which may be null, outlive this. `userSettings` as behind
    // --element. `inVRay`: V-Ray's frame buffer has a channel for each element. Throws UsageError.
    FrameElements(Session& session, const SceneDescription* scene,
                  const std::vector<std::string>& userSettings, bool inVRay);

    // Elements of earlier frames, and those that the effect is saved with, stay, without pixels if
    // this frame has none. New ones have their settings, saved ones what was saved, and over both
    // stand settings by name. For new ones in V-Ray's frame buffer an element without an alpha has
    // the picture's; when that isn't so in the file (`sharesAlpha`), its settings make no use of
    // it. `passes` outlives the result.
    std::vector<FrameElement> SetUp(const std::vector<PassElement>& passes, bool sharesAlpha);

    // Names of settings that fit no element so far, where that may be: with a star in them, or in a
    // scene, which may know more than one file. Throws InputError for other such names.
    std::vector<std::string> SettingsWithoutElement(const std::string& path) const;

    // The document has the element.
    bool IsUsed(const host::RenderElement& element) const;

    // An element that V-Ray has on takes the channel of another of its class when it has none
    // itself: on are those with an image.
    static void TellVRayWhatIsOn(const std::vector<FrameElement>& frame);
    // No element has pixels any more.
    static void Release();

  private:
    const SceneElement* FindInScene(const std::string& name) const;
    void Settle(const std::vector<FrameElement>& frame, bool sharesAlpha);

    Session& session;
    const SceneDescription* scene;
    bool inVRay;
    // In the order of their say: those of the scene file, then the user's.
    std::vector<ElementSetting> settings;
    // Elements of the scene that the effect was saved with.
    std::set<const IRenderElement*> saved;
    // Elements whose settings were applied.
    std::set<const IRenderElement*> settled;
};

}  // namespace command
