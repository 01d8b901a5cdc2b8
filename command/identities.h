// What stands in the host for the objects and materials of a render file: nodes of the scene and
// numbers of materials. The same name has the same node and number in every frame of a run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "command/cryptomatte_manifest.h"
#include "command/id_index.h"
#include "host/scene.h"

namespace command {

class Identities {
  public:
    // The scene outlives this.
    explicit Identities(host::Scene& hostScene) : scene(hostScene) {}

    // A frame's objects, most important first. Nodes that aren't there by name are made; of more
    // than the G-Buffer can number the last are left out, and have no node. Returns how many.
    std::size_t SetObjects(std::span<const ManifestEntry> objects);
    // The same for materials, which get the numbers from 1 to 255.
    std::size_t SetMaterials(std::span<const ManifestEntry> materials);

    // So many would be left out.
    std::size_t ObjectsBeyondLimit(std::span<const ManifestEntry> objects) const;
    std::size_t MaterialsBeyondLimit(std::span<const ManifestEntry> materials) const;

    // An id's node by its render id; unknownObject for an id without.
    std::uint16_t ObjectOf(std::uint32_t id) const;
    // An id's number; noMaterial for an id without.
    std::uint16_t MaterialOf(std::uint32_t id) const;

    // The user's numbers of objects, by render id.
    std::span<const UWORD> ObjectNumbers() const { return objectNumbers; }
    // The nodes that SetObjects made or found, by name as people count.
    std::vector<host::Node*> Objects() const;
    // As an ID list: "1 [Glass], 2 [Wood]". Square brackets in a name become round ones.
    std::string MaterialList() const;

  private:
    struct Numbers {
        IdIndex index;
        std::vector<std::uint16_t> of;

        std::uint16_t Find(std::uint32_t id, std::uint16_t otherwise) const {
            const std::uint32_t place = index.Find(id);
            return place == IdIndex::none ? otherwise : of[place];
        }
        void Add(std::uint32_t id, std::uint16_t number) {
            index.Add(id);
            of.resize(index.Size());
            of.back() = number;
        }
    };

    host::Scene& scene;
    std::vector<host::Node*> nodes;
    // By render id: whether the node is in `nodes`.
    std::vector<bool> listed;
    Numbers objects;
    Numbers materials;
    std::vector<UWORD> objectNumbers;
    std::map<std::string, std::uint16_t, std::less<>> materialNumbers;
    // Number 1 first.
    std::vector<std::string> materialNames;
};

}  // namespace command
