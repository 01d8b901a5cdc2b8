// Reads scene files (docs/scene-file.md).
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/json_value.h"
#include "host/scene_description.h"

namespace host {

// Larger files are refused, and not written.
constexpr std::size_t mostSceneBytes = std::size_t{64} << 20;
// Of the format. Version 1 is read as well.
constexpr int newestSceneVersion = 2;

// The places of the nodes that a list names, each once. Throws InputError.
using FindNodes = std::function<std::vector<std::size_t>(const JsonValue& list)>;
// Reads the section "effect", which holds settings by the names that the effect has for them; comes
// after all other sections.
using ReadEffectSettings = std::function<void(const JsonValue& effect, const FindNodes& findNodes)>;

// All throw InputError, which tells the file, the place in it and the fault in one line. Without a
// reader for it, a section "effect" is a fault: it would be lost when the scene is saved. What
// `objects` hold is only read here; CheckScene (host/build_scene.h) looks whether it makes objects.
SceneDescription ReadSceneFile(const std::string& path,
                               const ReadEffectSettings& readEffectSettings = {});
SceneDescription ParseScene(const std::string& path, std::string_view text,
                            const ReadEffectSettings& readEffectSettings = {});

// "there is no ...": what to add to a complaint about a name that isn't there, "; the nearest are
// a, b", or nothing when there are no names.
std::string NearestTo(std::string_view wanted, std::vector<std::string> names);

}  // namespace host
