// All that classes keep on one object, which the objects themselves only show chunk by chunk.
#pragma once

#include <memory>
#include <vector>

#include <ref.h>

class AppDataList {
  public:
    static const std::vector<std::unique_ptr<AppDataChunk>>& Of(const Animatable& object) {
        return object.appData_;
    }
    // Replaces what `to` has.
    static void Copy(const Animatable& from, Animatable& to);
    // As AddAppDataChunk, for ids that the object has no chunk of.
    static void Append(Animatable& object, const AppDataChunk& chunk);
};
