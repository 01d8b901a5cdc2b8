// Puts what a scene file tells into the application, as opening the file does.
#pragma once

#include <vector>

#include <sfx.h>

#include "host/class_directory.h"
#include "host/scene_description.h"

namespace host {

class RenderElement;

// Throws InputError, which tells the first fault of the description's objects with its place, when
// they can't be made of these classes.
void CheckScene(const SceneDescription& description, const ClassDirectory& classes);

// Those without a handle may be left to be made when a frame has them.
enum class ElementsToBuild { All, WithHandles };

struct BuiltScene {
    // In the description's order.
    std::vector<Node*> nodes;
    std::vector<SceneLayer*> layers;
    // Null for one that was left out.
    std::vector<RenderElement*> elements;
    std::vector<Effect*> effects;
};

// Adds to the running application: nodes, layers, selection sets and render elements come in the
// description's order behind what is there, effects too, and the render's settings are changed as
// far as the description has them. An element without a class is a pass of an unknown kind. The
// description must have passed CheckScene with the application's classes. What objects ask for in
// their own Load isn't checked there: throws InputError when one fails, and all that was added is
// gone again.
BuiltScene BuildScene(const SceneDescription& description,
                      ElementsToBuild elements = ElementsToBuild::All);

// What the description says of an element besides its class and name. `nodes` are those of
// BuildScene.
void DescribeElement(const SceneElement& description, const std::vector<Node*>& nodes,
                     RenderElement& element);

}  // namespace host
