// What stands in the host for the objects and materials of a render file: nodes of the scene and
// numbers of materials. The same name has the same node and number in every frame of a run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "command/cryptomatte_manifest.h"
#include "command/id_index.h"
#include "command/rank.h"
#include "host/scene.h"

namespace command {

class Identities {
  public:
    // So many ids of a run that no manifest names get an object or a material of their own.
    static constexpr std::size_t mostUnnamed = 1000;

    // The scene outlives this.
    explicit Identities(host::Scene& hostScene) : scene(hostScene), objectNumbers(mostObjects) {}

    // A frame's objects, most important first. Nodes that aren't there by name are made, without a
    // leading slash, which would take their mattes out of their layer set; of more
    // than the G-Buffer can number the last are left out, and have no node. Returns how many.
    std::size_t SetObjects(std::span<const ManifestEntry> objects);
    // The same for materials, which get the numbers from 1 to 255.
    std::size_t SetMaterials(std::span<const ManifestEntry> materials);

    // So many would be left out.
    std::size_t ObjectsBeyondLimit(std::span<const ManifestEntry> objects) const;
    std::size_t MaterialsBeyondLimit(std::span<const ManifestEntry> materials) const;

    // An id's node by its render id. An id that the frame's objects don't name gets a node that is
    // called by its 8 hexadecimal digits; unknownObject where there is no room.
    std::uint16_t ObjectOf(std::uint32_t id);
    // The same for an id's number; noMaterial where there is no room.
    std::uint16_t MaterialOf(std::uint32_t id);
    // Ids that were called by their digits.
    std::size_t Unnamed() const { return unnamed; }

    // The user's numbers of objects, by render id; as long as this object.
    std::span<const UWORD> ObjectNumbers() const { return objectNumbers; }
    // The nodes that SetObjects made or found, by name as people count.
    std::vector<host::Node*> Objects() const;
    // As an ID list: "1 [Glass], 2 [Wood]". Square brackets in a name become round ones.
    std::string MaterialList() const;

  private:
    struct Numbers {
        IdIndex index;
        std::vector<std::uint16_t> of;

        std::optional<std::uint16_t> Find(std::uint32_t id) const {
            const std::uint32_t place = index.Find(id);
            return place == IdIndex::none ? std::nullopt : std::optional(of[place]);
        }
        void Add(std::uint32_t id, std::uint16_t number) {
            index.Add(id);
            of.resize(index.Size());
            of.back() = number;
        }
    };

    std::size_t AddObjects(std::span<const ManifestEntry> entries);
    std::size_t AddMaterials(std::span<const ManifestEntry> entries);
    host::Node* FindNode(const std::string& name) const;

    host::Scene& scene;
    std::size_t unnamed = 0;
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
