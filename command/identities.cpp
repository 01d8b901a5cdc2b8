#include "command/identities.h"

#include <maxapi.h>

#include <algorithm>

#include "command/cryptomatte_id.h"
#include "command/rank.h"
#include "host/text.h"

namespace command {
namespace {

std::string WithoutBrackets(std::string name) {
    std::replace(name.begin(), name.end(), '[', '(');
    std::replace(name.begin(), name.end(), ']', ')');
    std::erase(name, '\0');
    return name;
}

// A name that is a path from the document's root, as a path from the set that it stands in.
std::string Relative(const std::string& name) {
    const bool absolute = name.size() > 1 && name[0] == '/' && name[1] != '/';
    return absolute ? name.substr(1) : name;
}

}  // namespace

std::size_t Identities::ObjectsBeyondLimit(std::span<const ManifestEntry> entries) const {
    const auto fresh = static_cast<std::size_t>(std::count_if(
        entries.begin(), entries.end(), [&](const auto& each) { return !FindNode(each.name); }));
    const auto taken = static_cast<std::size_t>(scene.NumNodes());
    return taken + fresh > mostObjects ? taken + fresh - mostObjects : 0;
}

std::size_t Identities::MaterialsBeyondLimit(std::span<const ManifestEntry> entries) const {
    const auto fresh = static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(),
                      [&](const auto& each) { return !materialNumbers.contains(each.name); }));
    const std::size_t wanted = materialNames.size() + fresh;
    return wanted > mostMaterials ? wanted - mostMaterials : 0;
}

std::size_t Identities::SetObjects(std::span<const ManifestEntry> entries) {
    objects = {};
    return AddObjects(entries);
}

host::Node* Identities::FindNode(const std::string& name) const {
    host::Node* node = scene.FindNode(host::FromUtf8(name));
    return node ? node : scene.FindNode(host::FromUtf8(Relative(name)));
}

std::size_t Identities::AddObjects(std::span<const ManifestEntry> entries) {
    std::size_t leftOut = 0;
    std::vector<host::Node*> ofFrame;
    for (const ManifestEntry& entry : entries) {
        host::Node* node = FindNode(entry.name);
        if (!node && scene.NumNodes() >= mostObjects) {
            ++leftOut;
            ofFrame.push_back(nullptr);
            continue;
        }
        ofFrame.push_back(node ? node : &scene.AddNode(host::FromUtf8(Relative(entry.name))));
    }
    scene.AssignRenderIDs();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        host::Node* node = ofFrame[i];
        const std::uint16_t number = node ? node->GetRenderID() : unknownObject;
        // A node without a number is no object of the frame's.
        objects.Add(entries[i].id, number == noObject ? unknownObject : number);
        if (!node || number == noObject) continue;
        objectNumbers[number] = node->ObjectID();
        if (listed.size() <= number) listed.resize(number + std::size_t{1});
        if (!listed[number]) nodes.push_back(node);
        listed[number] = true;
    }
    return leftOut;
}

std::size_t Identities::SetMaterials(std::span<const ManifestEntry> entries) {
    materials = {};
    return AddMaterials(entries);
}

std::size_t Identities::AddMaterials(std::span<const ManifestEntry> entries) {
    std::size_t leftOut = 0;
    for (const ManifestEntry& entry : entries) {
        auto known = materialNumbers.find(entry.name);
        if (known == materialNumbers.end() && materialNames.size() < mostMaterials) {
            materialNames.push_back(entry.name);
            known = materialNumbers
                        .emplace(entry.name, static_cast<std::uint16_t>(materialNames.size()))
                        .first;
        }
        const bool numbered = known != materialNumbers.end();
        leftOut += numbered ? 0 : 1;
        materials.Add(entry.id, numbered ? known->second : noMaterial);
    }
    return leftOut;
}

std::uint16_t Identities::ObjectOf(std::uint32_t id) {
    if (const auto number = objects.Find(id)) return *number;
    if (unnamed >= mostUnnamed) return unknownObject;
    ++unnamed;
    const ManifestEntry entry{HexText(id), id};
    AddObjects({&entry, 1});
    return objects.Find(id).value_or(unknownObject);
}

std::uint16_t Identities::MaterialOf(std::uint32_t id) {
    if (const auto number = materials.Find(id)) return *number;
    if (unnamed >= mostUnnamed) return noMaterial;
    ++unnamed;
    const ManifestEntry entry{HexText(id), id};
    AddMaterials({&entry, 1});
    return materials.Find(id).value_or(noMaterial);
}

std::vector<host::Node*> Identities::Objects() const {
    std::vector<host::Node*> sorted = nodes;
    std::stable_sort(sorted.begin(), sorted.end(), [](host::Node* left, host::Node* right) {
        return MaxAlphaNumCompI(left->GetName(), right->GetName()) < 0;
    });
    return sorted;
}

std::string Identities::MaterialList() const {
    std::string list;
    for (std::size_t i = 0; i < materialNames.size(); ++i) {
        list += (i == 0 ? "" : ", ") + std::to_string(i + 1) + " [" +
                WithoutBrackets(Relative(materialNames[i])) + "]";
    }
    return list;
}

}  // namespace command
