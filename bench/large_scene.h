// A large scene to measure the panel with: render elements of every known class, scene layers in a
// tree, named selection sets.
#pragma once

#include <elementclasses.h>

#include <string>
#include <vector>

#include "effect/element_classes.h"
#include "host/application.h"
#include "host/text.h"

namespace large_scene {

constexpr int elements = 500;
constexpr int layers = 5000;
constexpr int sets = 1000;
// A parent has so many layers in it.
constexpr int siblings = 5;

inline MSTR NumberedName(const char* text, int number) {
    return host::FromUtf8(text + std::to_string(number));
}

// Into the host's scene, which has none of them yet. Siblings don't stand in the order of their
// names.
inline void Fill() {
    host::Application& app = host::App();
    const auto classes = effect::ElementClasses();
    for (int i = 0; i < elements; ++i) {
        const auto place = static_cast<std::size_t>(i * 31) % classes.size();
        app.elements[RS_Production].Add(classes[place].id, NumberedName("Element", i));
    }
    std::vector<host::SceneLayer*> added;
    for (int i = 0; i < layers; ++i) {
        host::SceneLayer* parent =
            i < siblings ? nullptr : added[static_cast<std::size_t>(i / siblings - 1)];
        added.push_back(&app.scene.AddLayer(NumberedName("Layer", i * 7919 % layers), parent));
    }
    for (int i = 0; i < sets; ++i)
        app.scene.AddSelectionSet(NumberedName("Set", i), {});
}

}  // namespace large_scene
